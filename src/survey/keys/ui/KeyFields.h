#pragma once

#include "survey/keys/KeyHints.h"
#include "survey/keys/KeyRules.h"

#include <QString>
#include <QWidget>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

class ComboBox;
class QLabel;
class QRadioButton;
class SecretLineEdit;

namespace Ui {
class KeyFields;
}

// The key fields of a network: a WPA pre-shared key, and four WEP keys with their formats and the choice of the transmit
// key. A hint next to each key says what is missing. The keys are hidden until the user asks to show them.
class KeyFields final : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(KeyFields)

public:
    explicit KeyFields(QWidget* parent = nullptr);
    ~KeyFields() override;

    // The values for checking and conversion, with the given selections.
    [[nodiscard]] KeyControls keyControls(int authenTypeIndex, int encryTypeIndex) const;
    // The texts of the fields, for storing.
    [[nodiscard]] std::array<WepKeyRow, wepKeyCount> wepKeyRows() const;
    [[nodiscard]] QString WPAPSK() const;
    // Hides the WEP keys while only a pre-shared key is used. Otherwise they are always visible.
    void setUnusedWepKeysHidden(bool hidden);
    // Enables the fields that these selections use (keyFieldsEnabled).
    void enableFor(int authenTypeIndex, int encryTypeIndex);

    void setWepKey(std::size_t key, int formatIndex, const QString& text); // key 0 to 3
    // std::nullopt does not change the selection.
    void selectTransmitKey(std::optional<std::size_t> key); // 0 to 3
    void setWPAPSK(const QString& text);

    // The hints are for a profile until another use is set.
    void setKeyUse(KeyUse use);
    void selectHexadecimal(); // for every key
    void clearTexts(); // also overwrites them in memory, as far as SecretLineEdit can
    void hideKeys();
    // Focuses the field that the user has to fill in. Returns false if all fields are disabled.
    [[nodiscard]] bool focusFirstKey();
    // Focuses the field whose value keyRefusal() refuses.
    void focusRefusedKey(const KeyControls& controls);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Row {
        QRadioButton* radio;
        ComboBox* format;
        SecretLineEdit* text;
        QLabel* hint;
    };

    void reserveSpace();
    void connectControls();
    void setKeysShown(bool shown);
    void updateHints();
    void updateWepKeysVisible();

    std::unique_ptr<Ui::KeyFields> m_ui;
    std::array<Row, wepKeyCount> m_rows {};
    KeyUse m_keyUse { KeyUse::Profile };
    bool m_unusedWepKeysHidden { false };
};
