#include "tests/profiles/ui/ProfileEditorFixture.h"

#include <QListView>

namespace {

constexpr int lastOffered = 14;

class ChannelBoxTest : public ProfileEditorFixture {
protected:
    ComboBox& channel { combo(u"Channel"_qs) };

    static Profile onChannel(const QString& number, const QString& networkType = u"0"_qs)
    {
        return with(sampleProfile(), { { ProfileKey::networkType, networkType }, { ProfileKey::channel, number } });
    }

    QString afterKeys(const std::vector<Qt::Key>& keys)
    {
        for (const Qt::Key key : keys)
            QTest::keyClick(&channel, key);
        return channel.objectValueOfSelectedItem();
    }
};

TEST_F(ChannelBoxTest, ItemsAreAllChannelNumbersInOrder)
{
    Items numbers;
    for (int number = 1; number <= 161; ++number)
        numbers.push_back(QString::number(number));
    EXPECT_EQ(items(channel), numbers);
}

TEST_F(ChannelBoxTest, SelectionsAndOpeningsDoNotChangeTheItems)
{
    const Items before = items(channel);
    ASSERT_FALSE(before.empty());
    editor.AddInit();
    for (const int networkType : { 0, 1, 0 }) {
        choose(combo(u"NetworkType"_qs), networkType);
        EXPECT_EQ(items(channel), before) << networkType;
    }
    press(QDialogButtonBox::Cancel);
    store.saveRecords({ onChannel(u"36"_qs), onChannel(u"161"_qs, u"1"_qs), onChannel(u"162"_qs) });
    const Items shown { u"36"_qs, u"161"_qs, QString() };
    for (std::int32_t row = 0; row < 3; ++row) {
        editor.EditInit(row);
        EXPECT_EQ(items(channel), before) << row;
        EXPECT_EQ(channel.objectValueOfSelectedItem(), shown[static_cast<std::size_t>(row)]);
        press(QDialogButtonBox::Cancel);
    }
    ProfileProposal network;
    network.EcrypStatus = Ndis802_11EncryptionDisabled;
    network.Channel = 149;
    EXPECT_TRUE(editor.AddProfile(network));
    EXPECT_EQ(items(channel), before);
    EXPECT_EQ(channel.objectValueOfSelectedItem(), u"149"_qs);
    pressOk();
    EXPECT_EQ(saved().back().text(ProfileKey::channel), u"149"_qs);
}

TEST_F(ChannelBoxTest, KeyboardReachesOnlyTheSelectableChannels)
{
    editor.AddInit();
    choose(combo(u"NetworkType"_qs), 0);
    EXPECT_EQ(afterKeys({ Qt::Key_End }), u"14"_qs);
    EXPECT_EQ(afterKeys({ Qt::Key_Down }), u"14"_qs);
    EXPECT_EQ(afterKeys({ Qt::Key_Home }), u"1"_qs);
    Items visited { channel.objectValueOfSelectedItem() };
    for (int step = 1; step < 20; ++step) {
        const QString next = afterKeys({ Qt::Key_Down });
        if (next != visited.back())
            visited.push_back(next);
    }
    const Items all = items(channel);
    EXPECT_EQ(visited, Items(all.begin(), all.begin() + lastOffered));
    EXPECT_EQ(afterKeys({ Qt::Key_2 }), u"2"_qs) << "and not a 20 that follows";
}

TEST_F(ChannelBoxTest, KeyboardReturnsFromAHiddenChannelToTheSelectableOnes)
{
    store.saveRecords({ onChannel(u"36"_qs) });
    editor.EditInit(0);
    EXPECT_EQ(afterKeys({ Qt::Key_Down }), u"36"_qs) << "nothing is offered behind it";
    EXPECT_EQ(afterKeys({ Qt::Key_Up }), u"14"_qs);
    EXPECT_EQ(afterKeys({ Qt::Key_Down }), u"14"_qs);
}

TEST_F(ChannelBoxTest, OpenListShowsOnlyTheSelectableChannels)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    store.saveRecords({ onChannel(u"6"_qs), onChannel(u"36"_qs) });
    for (std::int32_t row = 0; row < 2; ++row) {
        editor.EditInit(row);
        channel.showPopup();
        const auto& list = *qobject_cast<QListView*>(channel.view());
        ASSERT_TRUE(list.isVisible()) << row;
        Items visible;
        for (int item = 0; item < channel.numberOfItems(); ++item) {
            if (!list.visualRect(list.model()->index(item, 0)).isEmpty())
                visible.push_back(channel.itemObjectValueAtIndex(item));
        }
        ASSERT_EQ(visible.size(), std::size_t { lastOffered }) << row;
        EXPECT_EQ(visible.front(), u"1"_qs);
        EXPECT_EQ(visible.back(), u"14"_qs);
        channel.hidePopup();
        press(QDialogButtonBox::Cancel);
    }
}

TEST_F(ChannelBoxTest, OpeningTheListKeepsAHiddenChannelUntilASelection)
{
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&editor));
    store.saveRecords({ onChannel(u"36"_qs) });
    editor.EditInit(0);
    for (const Qt::Key key : { Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter }) {
        channel.showPopup();
        QTest::keyClick(channel.view(), key);
        EXPECT_EQ(channel.objectValueOfSelectedItem(), u"36"_qs) << key;
        EXPECT_TRUE(QTest::qWaitFor([this] { return !channel.view()->isVisible(); })) << key;
    }
    channel.showPopup();
    QTest::keyClick(channel.view(), Qt::Key_Up);
    QTest::keyClick(channel.view(), Qt::Key_Return);
    EXPECT_EQ(channel.objectValueOfSelectedItem(), u"14"_qs) << "the nearest, as in the closed list";
    store.saveRecords({ onChannel(u"36"_qs) });
    editor.EditInit(0);
    channel.showPopup();
    QTest::keyClick(channel.view(), Qt::Key_Down);
    QTest::keyClick(channel.view(), Qt::Key_Return);
    EXPECT_EQ(channel.objectValueOfSelectedItem(), u"1"_qs);
}

} // namespace
