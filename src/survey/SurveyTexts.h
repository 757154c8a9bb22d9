#pragma once

#include <QByteArray>
#include <QString>

// Texts that the site survey page shows besides the rows themselves.

struct SurveyState {
    bool deviceExists { false };
    bool radioOn { false };
    bool surveyed { false }; // the first search since the card came is over
};

// Why the list of networks is empty.
[[nodiscard]] QString emptyListText(const SurveyState& state);

// What stands for the name of a network that does not send it.
[[nodiscard]] QString wordForHiddenNetwork();

// A network's name for the eye: as shownText has it, and a name that is not sent at all as that word. text is a name as
// rows hold it.
[[nodiscard]] QString shownNetworkName(const QString& text);

// What to tell about a network's name beyond its text: its bytes in hexadecimal where the text does not give them
// away (bytes that are no UTF-8, control characters, spaces at either end), a word for a name that is not sent at
// all, nothing for a plain name. text is a name as rows hold it.
[[nodiscard]] QString networkNameToolTip(const QString& text);
