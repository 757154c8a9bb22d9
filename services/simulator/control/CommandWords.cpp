#include "services/simulator/control/CommandWords.h"

#include <algorithm>

std::optional<CommandWords> splitWords(
    const QStringList& words, std::span<const std::string_view> knownOptions, QString& error)
{
    CommandWords split;
    for (qsizetype i = 0; i < words.size(); ++i) {
        // A single hyphen does not start an option: -70 is a signal.
        if (!words[i].startsWith(QLatin1String("--"))) {
            split.arguments.append(words[i]);
            continue;
        }
        const QString name = words[i].section(QLatin1Char('='), 0, 0);
        const bool hasValue = words[i].contains(QLatin1Char('='));
        if (std::find(knownOptions.begin(), knownOptions.end(), name.toStdString()) == knownOptions.end())
            error = QStringLiteral("unknown option %1").arg(name);
        else if (split.options.contains(name))
            error = QStringLiteral("option %1 is given twice").arg(name);
        else if (!hasValue && i + 1 >= words.size())
            error = QStringLiteral("option %1 needs a value").arg(name);
        if (!error.isEmpty())
            return std::nullopt;
        split.options.insert(name, hasValue ? words[i].section(QLatin1Char('='), 1) : words[++i]);
    }
    return split;
}
