#pragma once

#include "platform/ui/CellDelegate.h"

// Displays network names as NetworkName::displayText() returns them; editing works on the stored text.
class NetworkNameDelegate final : public CellDelegate {
    Q_OBJECT

public:
    // The placeholder for an empty name, in italics to tell it from a name that reads the same; may be empty.
    NetworkNameDelegate(const QString& placeholder, QObject* parent);

    [[nodiscard]] QString textOf(const QVariant& value) const override;
    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QString m_placeholder;
};
