#pragma once

#include "driver/records/Oids.h"
#include "services/card/RecordBytes.h"
#include "services/simulator/card/SimulatedCard.h"

#include <cstdint>
#include <optional>
#include <string>

// Copies a field of a packed record: test assertions bind references, which a misaligned field does not allow.
template <typename Value> [[nodiscard]] Value valueOf(Value value)
{
    return value;
}

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

[[nodiscard]] inline NDIS_802_11_SSID ssidRecord(const std::string& name)
{
    NDIS_802_11_SSID record {};
    record.SsidLength = static_cast<std::uint32_t>(name.size());
    std::copy(name.begin(), name.end(), record.Ssid.begin());
    return record;
}

[[nodiscard]] inline Bytes keyRecord(std::uint32_t index, const std::string& material, bool isWep = true)
{
    NDIS_802_11_KEY head {};
    head.Length = static_cast<std::uint32_t>(material.size()) + keyRecordOverhead;
    head.KeyIndex = index;
    head.KeyLength = static_cast<std::uint32_t>(material.size());
    if (isWep)
        head.BSSID = { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };
    Bytes bytes = bytesOf(head);
    for (const char character : material)
        bytes.push_back(static_cast<std::byte>(character));
    bytes.resize(head.Length);
    return bytes;
}

[[nodiscard]] inline NDIS_802_11_REMOVE_KEY removeKeyRecord(std::uint32_t index)
{
    return { sizeof(NDIS_802_11_REMOVE_KEY), index, { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, {} };
}

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
