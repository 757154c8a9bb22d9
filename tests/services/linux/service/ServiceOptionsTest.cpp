#include "services/linux/ServiceOptions.h"

#include <gtest/gtest.h>

namespace {

ServiceCommandLine read(const QStringList& arguments)
{
    return readServiceArguments(QStringList { QStringLiteral("pellvaned") } + arguments);
}

} // namespace

TEST(ServiceOptions, DefaultToEveryInterfaceInTheRegistryOfTheMachine)
{
    const auto line = read({});
    ASSERT_TRUE(line.options);
    EXPECT_TRUE(line.options->interfaceName.isEmpty());
    EXPECT_EQ(line.options->root, QStringLiteral("/run/io-registry"));
    EXPECT_FALSE(line.options->isForeground);
}

TEST(ServiceOptions, AreRead)
{
    const auto line = read({ QStringLiteral("--interface"), QStringLiteral("wlan0"), QStringLiteral("--root"),
        QStringLiteral("/tmp/r"), QStringLiteral("--foreground") });
    ASSERT_TRUE(line.options);
    EXPECT_EQ(line.options->interfaceName, QStringLiteral("wlan0"));
    EXPECT_EQ(line.options->root, QStringLiteral("/tmp/r"));
    EXPECT_TRUE(line.options->isForeground);
}

TEST(ServiceOptions, RejectImpossibleNames)
{
    for (const char* const name : { "", "..", "a/b", "a b", "sixteen-letters-" }) {
        const auto line = read({ QStringLiteral("--interface"), QString::fromLatin1(name) });
        EXPECT_FALSE(line.options) << name;
        EXPECT_TRUE(line.isError) << name;
    }
    EXPECT_TRUE(read({ QStringLiteral("wlan0") }).isError);
    EXPECT_TRUE(read({ QStringLiteral("--nonsense") }).isError);
}

TEST(ServiceOptions, HelpAndVersionAreNoErrors)
{
    EXPECT_TRUE(read({ QStringLiteral("--help") }).text.contains(QStringLiteral("--interface")));
    const auto version = read({ QStringLiteral("--version") });
    EXPECT_TRUE(version.text.startsWith(QStringLiteral("pellvaned ")));
    EXPECT_FALSE(version.isError);
}
