#pragma once

#include <QByteArray>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <vector>

// What the simulated card was asked, read from its recording.
struct RecordedRequest {
    QString name; // of the OID; empty for what is no structure call
    bool set { false };
    QByteArray input;
};

inline std::vector<RecordedRequest> recordedIn(const QString& path)
{
    std::vector<RecordedRequest> requests;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return requests;
    while (!file.atEnd()) {
        const QJsonObject line = QJsonDocument::fromJson(file.readLine()).object();
        requests.push_back({ line[u"name"].toString(), line[u"set"].toBool(),
            QByteArray::fromHex(line[u"input"].toString().toLatin1()) });
    }
    return requests;
}

// The names that the card was told to join, in order.
inline std::vector<QString> namesSetIn(const std::vector<RecordedRequest>& requests)
{
    std::vector<QString> names;
    for (const RecordedRequest& request : requests) {
        if (request.name != u"OID_802_11_SSID" || !request.set || request.input.size() < 4)
            continue;
        names.push_back(QString::fromUtf8(request.input.mid(4, request.input.at(0)))); // length, then the bytes
    }
    return names;
}

inline std::ptrdiff_t countOf(const std::vector<RecordedRequest>& requests, QStringView name)
{
    return std::count_if(
        requests.begin(), requests.end(), [&](const RecordedRequest& request) { return request.name == name; });
}
