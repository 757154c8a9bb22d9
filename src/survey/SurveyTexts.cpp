#include "survey/SurveyTexts.h"

#include "platform/NetworkName.h"

#include <QByteArray>
#include <QCoreApplication>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("SurveyTexts", text);
}

} // namespace

QString emptyListText(const SurveyState& state)
{
    if (!state.deviceExists)
        return tr("No wireless card found. Insert the card; its networks appear here by themselves.");
    if (!state.radioOn)
        return tr("The radio of the wireless card is switched off.");
    if (!state.surveyed)
        return tr("Searching for networks…");
    // The card's own switch is not asked for: without it, there is nothing in range either.
    return tr("No networks in range, or the card's own radio switch is off. Press Rescan to search again.");
}

QString wordForHiddenNetwork()
{
    return tr("(hidden)");
}

QString shownNetworkName(const QString& text)
{
    return text.isEmpty() ? wordForHiddenNetwork() : shownText(text);
}

QString networkNameToolTip(const QString& text)
{
    if (text.isEmpty())
        return tr("This network does not send its name.");
    const auto bytes = bytesFromText(text);
    const QByteArray raw(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    const bool plain = raw == text.toUtf8() && text.trimmed() == text;
    return plain ? QString() : tr("Name in hexadecimal: %1").arg(QString::fromLatin1(raw.toHex(' ')));
}
