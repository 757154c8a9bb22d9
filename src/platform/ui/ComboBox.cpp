#include "platform/ui/ComboBox.h"

#include <QAbstractItemModel>
#include <QSignalBlocker>

#include <algorithm>
#include <utility>

ComboBox::ComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setInsertPolicy(NoInsert);
    // The base class connects to the same signals first and changes the selection; this restores it.
    connect(model(), &QAbstractItemModel::rowsAboutToBeInserted, this, &ComboBox::rememberSelection);
    connect(model(), &QAbstractItemModel::rowsInserted, this, &ComboBox::restoreSelection);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { m_changedSinceSelection = true; });
    connect(this, &QComboBox::activated, this, [this](int index) {
        const bool changed = std::exchange(m_changedSinceSelection, false);
        if (changed)
            Q_EMIT selectionChosen(index);
    });
}

void ComboBox::rememberSelection()
{
    m_indexBeforeChange = currentIndex();
    m_textBeforeChange = currentText();
}

void ComboBox::restoreSelection()
{
    const QSignalBlocker quiet(this);
    setCurrentIndex(m_indexBeforeChange);
    if (isEditable())
        setEditText(m_textBeforeChange);
    m_changedSinceSelection = false;
    update();
}

void ComboBox::removeAllItems()
{
    const QString text = currentText();
    clear();
    if (isEditable())
        setEditText(text);
    m_changedSinceSelection = false;
}

void ComboBox::insertItemWithObjectValue(const QString& text, int index)
{
    insertItem(std::max(index, 0), text);
}

void ComboBox::addItemWithObjectValue(const QString& text)
{
    addItem(text);
}

void ComboBox::selectItemAtIndex(int index)
{
    const QString text = currentText();
    const bool present = index >= 0 && index < count();
    setCurrentIndex(present ? index : -1);
    if (isEditable())
        setEditText(present ? itemText(index) : text);
    m_changedSinceSelection = false;
}

int ComboBox::indexOfSelectedItem() const
{
    return currentIndex();
}

QString ComboBox::objectValueOfSelectedItem() const
{
    return itemText(currentIndex());
}

int ComboBox::numberOfItems() const
{
    return count();
}

QString ComboBox::itemObjectValueAtIndex(int index) const
{
    return itemText(index);
}

void ComboBox::setItemObjectValues(const std::vector<QString>& texts)
{
    removeAllItems();
    for (const QString& text : texts)
        addItemWithObjectValue(text);
}

std::vector<QString> ComboBox::itemObjectValues() const
{
    std::vector<QString> texts;
    for (int index = 0; index < numberOfItems(); ++index)
        texts.push_back(itemObjectValueAtIndex(index));
    return texts;
}
