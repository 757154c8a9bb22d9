#include "survey/ui/SurveyColumns.h"

#include <QCoreApplication>

std::vector<TableColumn> surveyColumns()
{
    using Kind = TableColumn::Kind;
    const auto tr = [](const char* text) { return QCoreApplication::translate("SurveyColumns", text); };
    return {
        { joinedColumn.toString(), {}, Kind::Image, tr("The network that the card is connected to") },
        { u"ssid"_qs, tr("SSID"), Kind::Text, tr("Network name") },
        { u"bssid"_qs, tr("BSSID"), Kind::Text, tr("Address of the access point") },
        { .identifier = u"signal"_qs,
            .title = tr("Signal"),
            .kind = Kind::Number,
            .description = tr("Signal quality, 0 to 100"),
            .descendingFirst = true }, // the strongest network is usually the one to join
        { u"channel"_qs, tr("Channel"), Kind::Number, tr("Radio channel") },
        { u"authentication"_qs, tr("Authentication"), Kind::Text, tr("How the network admits a station") },
        { u"encryption"_qs, tr("Encryption"), Kind::Text, tr("How the network protects its data") },
        { u"network"_qs, tr("Network Type"), Kind::Text, tr("Access point or ad hoc network") },
    };
}
