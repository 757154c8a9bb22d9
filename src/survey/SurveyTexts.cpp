#include "survey/SurveyTexts.h"

#include <QCoreApplication>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("SurveyTexts", text);
}

// The card does not report whether software has switched its radio off.
QString nothingInRangeText(const SurveyState& state)
{
    if (state.cardSwitchOn == true)
        return state.radioSwitched
            ? tr("No networks in range. Press Rescan to search again.")
            : tr("No networks in range, or an earlier window has left the radio off (see Advanced Settings). Press "
                 "Rescan to search again.");
    return state.radioSwitched
        ? tr("No networks in range, or the card's own radio switch is off. Press Rescan to search again.")
        : tr("No networks in range, or the radio is off: at the card's own switch, or left off by an earlier window "
             "(see Advanced Settings). Press Rescan to search again.");
}

} // namespace

QString emptyListText(const SurveyState& state)
{
    if (state.card == CardPresence::Silent)
        return tr("The wireless card does not answer. Remove it and insert it again.");
    if (!state.deviceExists && state.card == CardPresence::Unknown)
        return tr("Looking for a wireless card…");
    if (!state.deviceExists)
        return tr("No wireless card found. Insert the card; its networks appear here by themselves.");
    if (!state.radioOn)
        return tr("The radio of the wireless card is switched off. To switch it on, press Radio On on the Advanced "
                  "Settings page.");
    if (!state.surveyed)
        return tr("Searching for networks…");
    if (state.cardSwitchOn == false)
        return tr("The wireless card's own radio switch is off. Switch it on, then press Rescan.");
    return nothingInRangeText(state);
}
