#pragma once

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <vector>

// One line of the simulator's request record.
struct RecordedLine {
    QString name; // of the OID; empty unless it is a structure call
    bool set { false };
    QByteArray input;
};

inline std::vector<RecordedLine> recordedIn(const QString& path)
{
    std::vector<RecordedLine> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    while (!file.atEnd()) {
        const QJsonObject line = QJsonDocument::fromJson(file.readLine()).object();
        lines.push_back({ line[u"name"].toString(), line[u"set"].toBool(),
            QByteArray::fromHex(line[u"input"].toString().toLatin1()) });
    }
    return lines;
}

// The SSIDs of all OID_802_11_SSID sets, in order.
inline std::vector<QString> ssidsSetIn(const std::vector<RecordedLine>& lines)
{
    std::vector<QString> ssids;
    for (const RecordedLine& line : lines) {
        if (line.name != u"OID_802_11_SSID" || !line.set || line.input.size() < 4)
            continue;
        ssids.push_back(QString::fromUtf8(line.input.mid(4, line.input.at(0)))); // 4 bytes of length, then the SSID
    }
    return ssids;
}

inline std::ptrdiff_t countOf(const std::vector<RecordedLine>& lines, QStringView name)
{
    return std::count_if(lines.begin(), lines.end(), [&](const RecordedLine& line) { return line.name == name; });
}
