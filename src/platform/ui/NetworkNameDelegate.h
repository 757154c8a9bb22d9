#pragma once

#include "platform/ui/CellDelegate.h"

// Shows network names as shownText has them; editing works on the name itself.
class NetworkNameDelegate final : public CellDelegate {
    Q_OBJECT

public:
    // The word stands for a name that is empty, and stands out from a name that reads the same; it may be empty.
    NetworkNameDelegate(const QString& wordForNone, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QString m_wordForNone;
};
