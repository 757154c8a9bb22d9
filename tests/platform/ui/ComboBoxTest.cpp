#include "platform/ui/ComboBox.h"

#include <QAbstractItemView>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

TEST(ComboBox, HasNoInitialSelection)
{
    ComboBox box;
    box.addItemWithObjectValue(u"Open"_qs);
    box.addItemWithObjectValue(u"Shared"_qs);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
    EXPECT_EQ(box.objectValueOfSelectedItem(), QString());
    EXPECT_EQ(box.numberOfItems(), 2);
}

TEST(ComboBox, KeepsSelectedIndexWhenItemsAreInsertedBefore)
{
    ComboBox box;
    box.addItemWithObjectValue(u"NONE"_qs);
    box.addItemWithObjectValue(u"WEP"_qs);
    box.selectItemAtIndex(1);
    box.insertItemWithObjectValue(u"NONE"_qs, 0);
    box.insertItemWithObjectValue(u"AES"_qs, 1);
    EXPECT_EQ(box.indexOfSelectedItem(), 1);
    EXPECT_EQ(box.objectValueOfSelectedItem(), u"AES"_qs);
}

TEST(ComboBox, ClampsInsertionIndex)
{
    ComboBox box;
    box.insertItemWithObjectValue(u"b"_qs, 9);
    box.insertItemWithObjectValue(u"a"_qs, -1);
    box.insertItemWithObjectValue(u"c"_qs, 2);
    EXPECT_EQ(box.itemObjectValueAtIndex(0), u"a"_qs);
    EXPECT_EQ(box.itemObjectValueAtIndex(1), u"b"_qs);
    EXPECT_EQ(box.itemObjectValueAtIndex(2), u"c"_qs);
    EXPECT_EQ(box.itemObjectValueAtIndex(3), QString());
}

TEST(ComboBox, ReplacingItemsClearsSelection)
{
    ComboBox box;
    box.addItemWithObjectValue(u"gone"_qs);
    box.selectItemAtIndex(0);
    const std::vector<QString> texts { u"b"_qs, u"a"_qs, u"b"_qs };
    box.setItemObjectValues(texts);
    EXPECT_EQ(box.itemObjectValues(), texts);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
}

TEST(ComboBox, InvalidIndexClearsSelection)
{
    ComboBox box;
    box.addItemWithObjectValue(u"a"_qs);
    box.selectItemAtIndex(0);
    box.selectItemAtIndex(1);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
    box.selectItemAtIndex(0);
    box.selectItemAtIndex(-7);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
}

TEST(ComboBox, RemovingItemsClearsSelection)
{
    ComboBox box;
    box.addItemWithObjectValue(u"a"_qs);
    box.selectItemAtIndex(0);
    box.removeAllItems();
    EXPECT_EQ(box.numberOfItems(), 0);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
    box.addItemWithObjectValue(u"b"_qs);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
}

TEST(ComboBox, EditableTextIsIndependentOfItems)
{
    ComboBox box;
    box.setEditable(true);
    box.setEditText(u"typed"_qs);
    box.addItemWithObjectValue(u"a"_qs);
    EXPECT_EQ(box.currentText(), u"typed"_qs);
    box.removeAllItems();
    EXPECT_EQ(box.currentText(), u"typed"_qs);
    box.addItemWithObjectValue(u"a"_qs);
    box.selectItemAtIndex(0);
    EXPECT_EQ(box.currentText(), u"a"_qs);
    box.selectItemAtIndex(5);
    EXPECT_EQ(box.currentText(), u"a"_qs);
    EXPECT_EQ(box.indexOfSelectedItem(), -1);
}

TEST(ComboBox, SignalsOnlyChoicesByUser)
{
    ComboBox box;
    QSignalSpy chosen(&box, &ComboBox::selectionChosen);
    box.addItemWithObjectValue(u"a"_qs);
    box.addItemWithObjectValue(u"b"_qs);
    box.selectItemAtIndex(0);
    box.insertItemWithObjectValue(u"c"_qs, 0);
    EXPECT_EQ(chosen.count(), 0);

    box.show();
    QTest::keyClick(&box, Qt::Key_Down);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.at(0).at(0).toInt(), 1);
    EXPECT_EQ(box.indexOfSelectedItem(), 1);
}

TEST(ComboBox, DoesNotSignalChoiceOfSelectedItem)
{
    ComboBox box;
    box.addItemWithObjectValue(u"a"_qs);
    box.addItemWithObjectValue(u"b"_qs);
    box.selectItemAtIndex(0);
    box.show();
    QSignalSpy chosen(&box, &ComboBox::selectionChosen);
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_EQ(chosen.count(), 0);
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_EQ(chosen.count(), 1);
}

} // namespace
