#pragma once

#include "driver/records/Oids.h"
#include "services/card/BssidEncoder.h"
#include "services/linux/card/Card.h"
#include "tests/services/card/RequestRecords.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

inline const MacAddress ownAddress { 2, 0, 0, 0, 0xC0, 0 };

[[nodiscard]] inline Octets octets(const std::string& text)
{
    return { text.begin(), text.end() };
}

[[nodiscard]] inline ScanEntry networkEntry(
    const std::string& ssid, std::uint8_t lastOctet, std::uint32_t frequencyMhz = 2412)
{
    ScanEntry entry;
    entry.bssid = { 2, 0, 0, 0, 0xA0, lastOctet };
    entry.frequencyMhz = frequencyMhz;
    entry.beaconIntervalKusec = 100;
    entry.capabilities = capabilityEss;
    entry.signalDbm = -60;
    appendElement(entry.elements, elementSsid, octets(ssid));
    return entry;
}

// With RSN and a pre-shared key.
[[nodiscard]] inline ScanEntry rsnEntry(const std::string& ssid, std::uint8_t lastOctet, std::uint8_t cipher = 4)
{
    ScanEntry entry = networkEntry(ssid, lastOctet);
    entry.capabilities = capabilityEss | capabilityPrivacy;
    appendElement(entry.elements, elementRsn,
        Octets { 1, 0, 0x00, 0x0F, 0xAC, cipher, 1, 0, 0x00, 0x0F, 0xAC, cipher, 1, 0, 0x00, 0x0F, 0xAC, 2, 0, 0 });
    return entry;
}

// Channels 1, 6 and 36, and the radar channel 52.
[[nodiscard]] inline WiphyFacts dualBandWiphy()
{
    WiphyFacts wiphy;
    wiphy.channels = { { 2412, 2000, false, false }, { 2437, 2000, false, false }, { 5180, 2300, false, false },
        { 5260, 2300, false, true } };
    wiphy.twoGhzRates = { 2, 4, 11, 22, 12, 18, 24, 36, 48, 72, 96, 108 };
    wiphy.fiveGhzRates = { 12, 18, 24, 36, 48, 72, 96, 108 };
    wiphy.maxScanSsids = 4;
    return wiphy;
}

template <typename Wanted> [[nodiscard]] const Wanted* effectIn(const Effects& effects)
{
    for (const Effect& effect : effects) {
        if (const auto* const found = std::get_if<Wanted>(&effect))
            return found;
    }
    return nullptr;
}

// A card whose clock the test controls, on an interface with two bands and a supplicant that runs.
class CardUnderTest {
public:
    explicit CardUnderTest(bool isReturning = false)
        : card({ ownAddress, 12, 34 }, isReturning, 0)
    {
        (void)card.wiphyRead(dualBandWiphy(), nowMs);
        (void)card.supplicantReady(nowMs);
        // The scan with which a card begins.
        while (!card.state().scanPlan.isDone())
            (void)card.scanRead({}, card.state().allowedMhz(), nowMs);
    }

    void pass(std::int64_t elapsedMs)
    {
        nowMs += elapsedMs;
        effects = card.timePassed(nowMs);
    }

    [[nodiscard]] std::optional<Bytes> queryBytes(std::uint32_t oid, std::uint32_t capacity)
    {
        CardReply reply = card.answer(oid, Bytes(capacity), capacity, nowMs);
        return reply.accepted ? std::optional(reply.output) : std::nullopt;
    }

    template <typename Record> [[nodiscard]] std::optional<Record> query(std::uint32_t oid)
    {
        const auto bytes = queryBytes(oid, sizeof(Record));
        return bytes ? recordOf<Record>(*bytes) : std::nullopt;
    }

    [[nodiscard]] std::uint32_t word(std::uint32_t oid) { return query<std::uint32_t>(oid).value_or(0xDEAD); }

    [[nodiscard]] bool setBytes(std::uint32_t oid, const Bytes& input)
    {
        CardReply reply = card.answer(oid | oidSetFlag, input, 0, nowMs);
        effects = std::move(reply.effects);
        return reply.accepted;
    }

    template <typename Record> [[nodiscard]] bool set(std::uint32_t oid, const Record& record)
    {
        return setBytes(oid, bytesOf(record));
    }

    void hear(const std::vector<ScanEntry>& entries) { effects = card.scanRead(entries, {}, nowMs); }

    void linkUp(std::uint8_t lastOctet = 1, const std::string& ssid = "cafe", std::uint32_t frequencyMhz = 2412)
    {
        SupplicantStatus status;
        status.isCompleted = true;
        status.bssid = MacAddress { 2, 0, 0, 0, 0xA0, lastOctet };
        status.ssid = octets(ssid);
        status.frequencyMhz = frequencyMhz;
        effects = card.linkUp(status, nowMs);
    }

    void joinOpen(const std::string& ssid = "cafe")
    {
        (void)set(OID_802_11_SSID, ssidRecord(ssid));
        linkUp(1, ssid);
    }

    [[nodiscard]] const NetworkBlock* block() const
    {
        const auto* const join = effectIn<JoinNetwork>(effects);
        return join != nullptr ? &join->block : nullptr;
    }

    Card card;
    Effects effects; // of the last operation
    std::int64_t nowMs { 1000 };
};
