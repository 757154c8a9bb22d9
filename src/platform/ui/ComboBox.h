#pragma once

#include <QComboBox>

#include <vector>

// A combo box that holds still: nothing is selected until something selects it, and inserting items never moves
// the selected index; the index keeps its number, whatever item then stands there. The text of an editable one is
// independent of its list. Items may also be declared in a form; the same holds for them.
class ComboBox : public QComboBox {
    Q_OBJECT

public:
    explicit ComboBox(QWidget* parent = nullptr);

    // Nothing is selected afterwards. The text of an editable box stays.
    void removeAllItems();
    // An index beyond the last item appends, a negative one inserts in front.
    void insertItemWithObjectValue(const QString& text, int index);
    void addItemWithObjectValue(const QString& text);

    // An index that no item has leaves nothing selected. The text of an editable box becomes the item's, and
    // stays where nothing is selected.
    void selectItemAtIndex(int index);
    [[nodiscard]] int indexOfSelectedItem() const; // -1 when nothing is selected
    [[nodiscard]] QString objectValueOfSelectedItem() const; // empty when nothing is selected
    [[nodiscard]] int numberOfItems() const;
    [[nodiscard]] QString itemObjectValueAtIndex(int index) const; // empty for an index that no item has

    // All items at once, in their order; nothing is selected after they were replaced.
    void setItemObjectValues(const std::vector<QString>& texts);
    [[nodiscard]] std::vector<QString> itemObjectValues() const;

Q_SIGNALS:
    // The user chose an item other than the selected one; never sent for a selection made by the program.
    void selectionChosen(int index);

private:
    void rememberSelection();
    void restoreSelection();

    int m_indexBeforeChange { -1 };
    QString m_textBeforeChange;
    bool m_changedSinceSelection { false };
};
