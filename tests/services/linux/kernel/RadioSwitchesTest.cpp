#include "services/linux/kernel/RadioSwitches.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/rfkill.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A pipe in the place of the device: what the test writes is read as events.
class RadioSwitchesTest : public testing::Test {
protected:
    RadioSwitchesTest()
    {
        EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
        device = FileDescriptor(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    }

    void report(std::uint32_t index, std::uint8_t operation, bool isSoft, bool isHard)
    {
        rfkill_event event {};
        event.idx = index;
        event.type = RFKILL_TYPE_WLAN;
        event.op = operation;
        event.soft = isSoft ? 1 : 0;
        event.hard = isHard ? 1 : 0;
        EXPECT_EQ(::write(device.get(), &event, RFKILL_EVENT_SIZE_V1), RFKILL_EVENT_SIZE_V1);
    }

    QTemporaryDir folder { QStringLiteral("/tmp/radio-XXXXXX") };
    std::string path { folder.filePath(QStringLiteral("rfkill")).toStdString() };
    FileDescriptor device;
    std::vector<std::uint32_t> changes;
    RadioSwitches switches { [this](std::uint32_t index) { changes.push_back(index); } };
};

} // namespace

TEST_F(RadioSwitchesTest, PositionsAreKnownFromTheStartAndFollowed)
{
    report(3, RFKILL_OP_ADD, false, true);
    ASSERT_FALSE(switches.open(path));
    ASSERT_TRUE(switches.position(3));
    EXPECT_FALSE(switches.position(3)->isSoftBlocked);
    EXPECT_TRUE(switches.position(3)->isHardBlocked);
    EXPECT_FALSE(switches.position(4));
    changes.clear();
    report(3, RFKILL_OP_CHANGE, true, false);
    report(3, RFKILL_OP_CHANGE, true, false);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, (std::vector<std::uint32_t> { 3, 3 }));
    EXPECT_TRUE(switches.position(3)->isSoftBlocked);
    EXPECT_FALSE(switches.position(3)->isHardBlocked);
    report(3, RFKILL_OP_DEL, false, false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(switches.position(3));
}

TEST_F(RadioSwitchesTest, OneSwitchIsSet)
{
    ASSERT_FALSE(switches.open(path));
    EXPECT_FALSE(switches.setSoftBlock(5, true));
    rfkill_event event {};
    ASSERT_EQ(::read(device.get(), &event, sizeof(event)), RFKILL_EVENT_SIZE_V1);
    EXPECT_EQ(event.idx, 5U);
    EXPECT_EQ(event.op, RFKILL_OP_CHANGE);
    EXPECT_EQ(event.soft, 1);
}

TEST_F(RadioSwitchesTest, MissingDeviceIsAnError)
{
    EXPECT_TRUE(switches.open("/nowhere/rfkill"));
    EXPECT_TRUE(switches.setSoftBlock(5, true));
    EXPECT_FALSE(RadioSwitches::indexOf("no-such-card"));
}
