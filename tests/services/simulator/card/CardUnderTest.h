#pragma once

#include "driver/records/Oids.h"
#include "services/card/RecordBytes.h"
#include "services/simulator/card/SimulatedCard.h"
#include "tests/services/card/RequestRecords.h"

#include <cstdint>
#include <optional>
#include <string>

// A simulated card whose clock the test controls.
class CardUnderTest {
public:
    explicit CardUnderTest(const Scenario& scenario, std::uint64_t seed = 1)
        : card(scenario, seed)
    {
    }

    void pass(std::int64_t elapsedMs) { nowMs += elapsedMs; }

    [[nodiscard]] std::optional<Bytes> queryBytes(std::uint32_t oid, std::uint32_t capacity)
    {
        CardAnswer answer = card.answer(oid, Bytes(capacity), capacity, nowMs);
        return answer.accepted ? std::optional(answer.output) : std::nullopt;
    }

    template <typename Record> [[nodiscard]] std::optional<Record> query(std::uint32_t oid)
    {
        const auto bytes = queryBytes(oid, sizeof(Record));
        return bytes ? recordOf<Record>(*bytes) : std::nullopt;
    }

    [[nodiscard]] bool setBytes(std::uint32_t oid, const Bytes& input)
    {
        return card.answer(oid | oidSetFlag, input, 0, nowMs).accepted;
    }

    template <typename Record> [[nodiscard]] bool set(std::uint32_t oid, const Record& record)
    {
        return setBytes(oid, bytesOf(record));
    }

    [[nodiscard]] bool isLinkUp()
    {
        return query<std::uint32_t>(OID_GEN_MEDIA_CONNECT_STATUS) == NdisMediaStateConnected;
    }

    // Requests a scan and waits for its result.
    void scan()
    {
        (void)set(OID_802_11_BSSID_LIST_SCAN, std::uint32_t { 0 });
        pass(2000);
    }

    SimulatedCard card;
    std::int64_t nowMs { 1000 };
};

[[nodiscard]] inline ScenarioNetwork openNetwork(
    const std::string& ssid, std::uint8_t lastOctet, std::int32_t signalDbm = -60)
{
    ScenarioNetwork network;
    network.ssid = ssid;
    network.bssid = { 0x00, 0x11, 0x22, 0x33, 0x44, lastOctet };
    network.signalDbm = signalDbm;
    network.channel = 6;
    return network;
}
