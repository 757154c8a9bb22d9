#include "services/simulator/control/ControlCommands.h"
#include "services/simulator/control/SimctlRequest.h"

#include <QFile>
#include <gtest/gtest.h>

// The help, docs/simulator.md and the man page list the same commands and faults as the simulator's tables.

namespace {

QString contents(const char* name)
{
    QFile file(QStringLiteral(SOURCE_FOLDER "/") + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return QString::fromUtf8(file.readAll());
}

QString text(std::string_view view)
{
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

template <typename Row> QString wordsOf(const Row& row)
{
    return QStringLiteral("%1 %2").arg(text(row.name), text(row.arguments)).trimmed();
}

template <typename Row> QString markdownTable(const QString& head, std::span<const Row> rows)
{
    QString table = QStringLiteral("| %1 | effect |\n|---|---|\n").arg(head);
    for (const Row& row : rows)
        table += QStringLiteral("| `%1` | %2 |\n")
                     .arg(wordsOf(row).replace(QLatin1Char('|'), QLatin1String("\\|")), text(row.summary));
    return table + QLatin1Char('\n');
}

// An item of an mdoc list as the help shows it, without spaces.
QString plainItem(const QString& line)
{
    QString plain;
    QString macro;
    for (const QString& word : line.split(QLatin1Char(' ')).mid(1)) {
        if (word == QLatin1String("Cm") || word == QLatin1String("Ar") || word == QLatin1String("Fl"))
            macro = word;
        else if (word == QLatin1String("Oo") || word == QLatin1String("Oc"))
            plain += word == QLatin1String("Oo") ? QLatin1Char('[') : QLatin1Char(']');
        else if (macro == QLatin1String("Fl"))
            plain += QLatin1Char('-') + word;
        else
            plain += macro == QLatin1String("Ar") ? word.toUpper() : word;
    }
    return plain.replace(QLatin1String("..."), QStringLiteral("…"));
}

// The items of the list that follows a line of the man page.
QStringList itemsAfter(const QString& page, const QString& line)
{
    const qsizetype start = page.indexOf(line + QLatin1Char('\n'));
    EXPECT_GE(start, 0) << line.toStdString();
    QStringList items;
    for (const QString& each : page.mid(start).section(QStringLiteral("\n.El"), 0, 0).split(QLatin1Char('\n'))) {
        if (each.startsWith(QLatin1String(".It ")))
            items.append(plainItem(each));
    }
    return items;
}

template <typename Row> QStringList itemsOf(std::span<const Row> rows)
{
    QStringList items;
    for (const Row& row : rows)
        items.append(wordsOf(row).remove(QLatin1Char(' ')));
    return items;
}

} // namespace

TEST(CommandTables, AreInTheHelp)
{
    const QString help = simctlHelp();
    for (const ControlCommand& command : controlCommands()) {
        EXPECT_TRUE(help.contains(QStringLiteral("\n  ") + wordsOf(command) + QLatin1Char(' '))) << command.name;
        EXPECT_TRUE(help.contains(QStringLiteral("  ") + text(command.summary) + QLatin1Char('\n'))) << command.name;
    }
    for (const FaultKindRow& fault : faultKinds())
        EXPECT_TRUE(help.contains(QStringLiteral("\n  ") + wordsOf(fault) + QLatin1Char(' '))) << fault.name;
}

TEST(CommandTables, AreInTheSimulatorDocument)
{
    const QString document = contents("docs/simulator.md");
    for (const QString& table : { markdownTable(QStringLiteral("command"), controlCommands()),
             markdownTable(QStringLiteral("kind"), faultKinds()) })
        EXPECT_TRUE(document.contains(table)) << "docs/simulator.md lacks\n" << table.toStdString();
}

TEST(CommandTables, AreInTheManPage)
{
    const QString page = contents("packaging/man/pellvane-simctl.1");
    EXPECT_EQ(itemsAfter(page, QStringLiteral("The commands are:")), itemsOf(controlCommands()));
    EXPECT_EQ(itemsAfter(page, QStringLiteral(".Sh FAULTS")), itemsOf(faultKinds()));
}
