#pragma once

#include "survey/keys/KeyRules.h"

#include <QString>
#include <QWidget>

#include <array>
#include <cstddef>
#include <memory>
#include <optional>

class ComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace Ui {
class KeyFields;
}

// The keys of a network as they are typed: a WPA pre-shared key, and four WEP keys with their formats and the choice
// of the one to send with. Beside each key stands what it still lacks. Keys are not readable until that is asked for.
class KeyFields final : public QWidget {
    Q_OBJECT

public:
    explicit KeyFields(QWidget* parent = nullptr);
    ~KeyFields() override;
    Q_DISABLE_COPY_MOVE(KeyFields)

    // The values as they are checked and converted, with the choices they belong to.
    [[nodiscard]] KeyControls keyControls(int authenTypeIndex, int encryTypeIndex) const;
    // The texts as they stand in the fields, to be kept.
    [[nodiscard]] std::array<WepKeyRow, 4> wepKeyRows() const;
    [[nodiscard]] QString presharedKeyText() const;
    // Enables what those choices use (keyFieldsEnabled).
    void enableFor(int authenTypeIndex, int encryTypeIndex);

    void setWepKey(std::size_t key, int formatIndex, const QString& text); // key 0 to 3
    // Nothing leaves the choice as it is.
    void selectTransmitKey(std::optional<std::size_t> key); // 0 to 3
    void setPresharedKey(const QString& text);

    void selectHexadecimal(); // as the format of every key
    void clearTexts();
    void hideKeys();
    // The keyboard goes to the field that has to be filled in. False when none can be typed in.
    [[nodiscard]] bool focusFirstKey();

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Row {
        QRadioButton* radio;
        ComboBox* format;
        QLineEdit* text;
        QLabel* hint;
    };

    void reserveSpace();
    void connectControls();
    void setKeysShown(bool shown);
    void showWhatIsMissing();

    std::unique_ptr<Ui::KeyFields> m_form;
    std::array<Row, 4> m_rows {};
};
