#include "tests/profiles/ui/ProfilePageFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>

namespace {

class ProfileRowMenuTest : public ProfilePageFixture {
protected:
    ProfileRowMenuTest()
    {
        haveProfiles({ sampleProfile(u"one"_qs), sampleProfile(u"two"_qs) });
        EXPECT_TRUE(QTest::qWaitForWindowActive(&page));
        table->setFocus();
        QGuiApplication::clipboard()->setText(u"before"_qs);
    }

    [[nodiscard]] static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    // The menu that the right mouse button opens; null if it opens none.
    QMenu* menuOf(int row)
    {
        QTest::mouseClick(table->viewport(), Qt::RightButton, {}, middleOf(row));
        QContextMenuEvent event(QContextMenuEvent::Mouse, middleOf(row), table->viewport()->mapToGlobal(middleOf(row)));
        QCoreApplication::sendEvent(table->viewport(), &event);
        return openMenu();
    }

    [[nodiscard]] static QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

    static void choose(QMenu& menu, const QString& text)
    {
        for (QAction* const action : menu.actions()) {
            if (QString(action->text()).remove(u'&') == text)
                action->trigger();
        }
        menu.close();
    }
};

TEST_F(ProfileRowMenuTest, ControlCCopiesTheDisplayedTextsOfTheRow)
{
    table->selectRowNumber(1);
    QTest::keySequence(table, QKeySequence::Copy);
    EXPECT_EQ(clipboard(), u"two\thome\tAuto\tOpen\tUnKnown\tInfrastructure"_qs);
    for (const QString& key : { u"abcde"_qs, u"0123456789"_qs, u"password"_qs })
        EXPECT_FALSE(clipboard().contains(key));
}

TEST_F(ProfileRowMenuTest, CopiesTheColumnsInTheirDisplayedOrder)
{
    table->horizontalHeader()->setSectionsMovable(true);
    table->horizontalHeader()->moveSection(1, 2);
    table->selectRowNumber(0);
    QTest::keySequence(table, QKeySequence::Copy);
    EXPECT_TRUE(clipboard().startsWith(u"home\tone\t"_qs)) << qPrintable(clipboard());
}

TEST_F(ProfileRowMenuTest, CopiesNothingWithoutASelection)
{
    QTest::keySequence(table, QKeySequence::Copy);
    EXPECT_EQ(clipboard(), u"before"_qs);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middleOf(0), table->viewport()->mapToGlobal(middleOf(0)));
    QCoreApplication::sendEvent(table->viewport(), &event);
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(ProfileRowMenuTest, HasTheActionsOfTheButtonsForTheClickedRow)
{
    QMenu* const menu = menuOf(1);
    ASSERT_NE(menu, nullptr);
    std::vector<QString> texts;
    for (const QAction* const action : menu->actions())
        texts.push_back(QString(action->text()).remove(u'&'));
    EXPECT_EQ(texts, (std::vector { u"Activate"_qs, u"Edit…"_qs, u"Delete"_qs, QString(), u"Copy"_qs }));
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(table->selectedRow(), 1);
    choose(*menu, u"Copy"_qs);
    EXPECT_TRUE(clipboard().startsWith(u"two\t"_qs)) << qPrintable(clipboard());
}

TEST_F(ProfileRowMenuTest, ActivatesEditsAndDeletesTheRow)
{
    choose(*menuOf(1), u"Activate"_qs);
    EXPECT_EQ(markedRows(), std::vector { 1 });
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<QLineEdit*>(u"ProfileName"_qs)->text(), u"two"_qs);
        pressButton(sheet, QDialogButtonBox::Cancel);
    });
    choose(*menuOf(1), u"Edit…"_qs);
    EXPECT_EQ(sheets.shown.size(), 1u);
    choose(*menuOf(0), u"Delete"_qs);
    EXPECT_EQ(names(inFile()), std::vector { u"two"_qs });
}

TEST_F(ProfileRowMenuTest, MenuKeyOpensItAtTheSelectedRow)
{
    table->selectRowNumber(1);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middleOf(1), table->viewport()->mapToGlobal(middleOf(1)));
    QCoreApplication::sendEvent(table->viewport(), &event);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_TRUE(openMenu()->isVisible());
    openMenu()->close();
}

TEST_F(ProfileRowMenuTest, CopyingInACellCopiesTheTypedText)
{
    table->selectRowNumber(0);
    table->edit(table->model()->index(0, 1));
    auto* const field = table->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(field, nullptr);
    field->setText(u"typed"_qs);
    field->selectAll();
    QTest::keySequence(field, QKeySequence::Copy);
    EXPECT_EQ(clipboard(), u"typed"_qs);
}

} // namespace
