#pragma once

#include <QComboBox>

#include <vector>

// A combo box without automatic selection: nothing is selected initially, and inserting items does not change the
// selected index, even though another item then has that index. The text of an editable box is independent of its
// items. Items declared in a form behave like inserted ones.
class ComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit ComboBox(QWidget* parent = nullptr);

    // Also clears the selection. Does not change the text of an editable box.
    void removeAllItems();
    // Clamps the index to the valid range.
    void insertItemWithObjectValue(const QString& text, int index);
    void addItemWithObjectValue(const QString& text);

    // An invalid index clears the selection. The text of an editable box becomes that of the item; it does not change
    // when the selection is cleared.
    void selectItemAtIndex(int index);
    [[nodiscard]] int indexOfSelectedItem() const; // -1 if nothing is selected
    [[nodiscard]] QString objectValueOfSelectedItem() const; // empty if nothing is selected
    [[nodiscard]] int numberOfItems() const;
    [[nodiscard]] QString itemObjectValueAtIndex(int index) const; // empty for an invalid index

    // Replaces all items and clears the selection.
    void setItemObjectValues(const std::vector<QString>& texts);
    [[nodiscard]] std::vector<QString> itemObjectValues() const;

Q_SIGNALS:
    // The user chose another item. Not emitted for selections by the program.
    void selectionChosen(int index);

private:
    void rememberSelection();
    void restoreSelection();

    int m_indexBeforeChange { -1 };
    QString m_textBeforeChange;
    bool m_changedSinceSelection { false };
};
