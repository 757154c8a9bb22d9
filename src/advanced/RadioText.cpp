#include "advanced/RadioText.h"

#include <QCoreApplication>

namespace {

struct RadioTexts {
    Q_DECLARE_TR_FUNCTIONS(RadioTexts)
};

QString cardText(const RadioKnowledge& radio)
{
    if (radio.card == CardPresence::Silent)
        return RadioTexts::tr("The wireless card does not answer.");
    if (!radio.cardExists)
        return radio.card == CardPresence::Unknown ? RadioTexts::tr("Looking for a wireless card…")
                                                   : RadioTexts::tr("No wireless card found.");
    if (!radio.cardSwitchOn)
        return RadioTexts::tr("The card did not report its radio switch.");
    return *radio.cardSwitchOn
        ? RadioTexts::tr("The card's radio switch was on when it was last read.")
        : RadioTexts::tr("The card's radio switch was off when it was last read. If the link status still "
                         "says OFF, turn it on at the card.");
}

QString choiceText(const RadioKnowledge& radio)
{
    if (!radio.chosenOn)
        return RadioTexts::tr(
            "The radio has not been switched in this window. An earlier one may have left it off; to be sure, "
            "switch it off and on.");
    if (radio.chosenForThisCard)
        return *radio.chosenOn ? RadioTexts::tr("Switched on in this window.")
                               : RadioTexts::tr("Switched off in this window.");
    return *radio.chosenOn ? RadioTexts::tr("Switched on in this window before the card was inserted.")
                           : RadioTexts::tr("Switched off in this window before the card was inserted.");
}

} // namespace

QString radioText(const RadioKnowledge& radio)
{
    return cardText(radio) + u'\n' + choiceText(radio);
}
