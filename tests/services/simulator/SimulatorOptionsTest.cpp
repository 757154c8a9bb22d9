#include "services/simulator/SimulatorOptions.h"

#include <gtest/gtest.h>

#include <array>

namespace {

SimulatorCommandLine read(const QString& words)
{
    QStringList arguments { QStringLiteral("pellvane-sim") };
    if (!words.isEmpty())
        arguments += words.split(QLatin1Char(' '));
    return readSimulatorArguments(arguments);
}

} // namespace

TEST(SimulatorOptions, HaveDefaults)
{
    const auto line = read({});
    ASSERT_TRUE(line.options);
    EXPECT_EQ(line.options->instance, QStringLiteral("simulated"));
    EXPECT_TRUE(line.options->root.endsWith(QStringLiteral("/io-registry")));
    EXPECT_TRUE(line.options->controlPath.endsWith(QStringLiteral("/pellvane-sim/simulated.control")));
    EXPECT_TRUE(line.options->scenarioFile.isEmpty());
    EXPECT_TRUE(line.options->recordFile.isEmpty());
    EXPECT_FALSE(line.options->isQuiet);
    EXPECT_FALSE(line.options->startsEjected);
}

// The default paths would begin in the root of the file system.
TEST(SimulatorOptions, NeedARuntimeDirectoryOrBothPaths)
{
    // Without XDG_RUNTIME_DIR, Qt uses a directory in the temporary one.
    const std::array names { "XDG_RUNTIME_DIR", "TMPDIR" };
    const std::array values { qgetenv(names[0]), qgetenv(names[1]) };
    for (const char* name : names)
        qputenv(name, "/dev/null");
    EXPECT_FALSE(read({}).options);
    EXPECT_FALSE(read(QStringLiteral("--root /r")).options);
    EXPECT_FALSE(read(QStringLiteral("--control /c")).options);
    EXPECT_TRUE(read(QStringLiteral("--root /r --control /c")).options);
    for (std::size_t i = 0; i < names.size(); ++i)
        values[i].isNull() ? qunsetenv(names[i]) : qputenv(names[i], values[i]);
}

TEST(SimulatorOptions, AreParsedFromTheCommandLine)
{
    const auto line = read(QStringLiteral(
        "--scenario s.toml --instance two --root /r --control /c --record /f --seed 9 --quiet --ejected"));
    ASSERT_TRUE(line.options);
    EXPECT_EQ(line.options->scenarioFile, QStringLiteral("s.toml"));
    EXPECT_EQ(line.options->instance, QStringLiteral("two"));
    EXPECT_EQ(line.options->root, QStringLiteral("/r"));
    EXPECT_EQ(line.options->controlPath, QStringLiteral("/c"));
    EXPECT_EQ(line.options->recordFile, QStringLiteral("/f"));
    EXPECT_EQ(line.options->seed, 9U);
    EXPECT_TRUE(line.options->isQuiet);
    EXPECT_TRUE(line.options->startsEjected);
}

TEST(SimulatorOptions, RejectInvalidArguments)
{
    for (const char* words : { "--nonsense", "stray", "--seed x", "--instance ..", "--instance a/b", "--instance=" }) {
        const auto line = read(QString::fromLatin1(words));
        EXPECT_FALSE(line.options) << words;
        EXPECT_TRUE(line.isError) << words;
        EXPECT_TRUE(line.text.startsWith(QStringLiteral("pellvane-sim: "))) << words;
    }
}

TEST(SimulatorOptions, PrintHelpAndVersion)
{
    EXPECT_FALSE(read(QStringLiteral("--help")).isError);
    EXPECT_TRUE(read(QStringLiteral("--help")).text.contains(QStringLiteral("--scenario")));
    EXPECT_TRUE(read(QStringLiteral("--version")).text.startsWith(QStringLiteral("pellvane-sim ")));
}
