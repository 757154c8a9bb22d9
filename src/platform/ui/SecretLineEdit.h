#pragma once

#include <QLineEdit>

// A line edit for keys and passphrases. While it is masked, clients of the accessibility bus receive an asterisk for
// each character, never the text; while it is not, it behaves like any QLineEdit. New fields are masked.
//
// Qt's accessible interface of a masked line edit reveals only the length, but its change events contain the text.
// These events can be replaced only in the process-wide update handler of QAccessible. The first field installs one,
// which passes the events of all other widgets on unchanged. Code that installs another handler later must call the
// previous one.
//
// The text itself is not hidden from this process or from the input method.
class SecretLineEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit SecretLineEdit(QWidget* parent = nullptr);

    // Mask the field before setting a secret: an unmasked field announces its text.
    void setMasked(bool masked);
    [[nodiscard]] bool isMasked() const; // true for every echo mode except Normal

    // Overwrites the text in memory, then empties the field and its undo history. Emits textChanged() like setText().
    //
    // Overwrites only the field's current buffer, and only if no QString of a caller shares it: that caller still needs
    // the text. Out of reach are the buffers that Qt freed when the text grew or was replaced, the memory of the undo
    // history, the text layout of an unmasked field, input events, the clipboard and the input method.
    void clearSecret();
};
