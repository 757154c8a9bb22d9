#pragma once

#include "platform/registry/IORegistry.h"

#include <cstddef>
#include <cstdint>
#include <span>

class AlertPanels;
class TickClock;

// The adapter: the one object that reaches the driver. Main thread only; requests are strictly serial.
class VX7100Access {
public:
    VX7100Access(IORegistry& registry, TickClock& clock, AlertPanels& alerts);
    ~VX7100Access();
    VX7100Access(const VX7100Access&) = delete;
    VX7100Access& operator=(const VX7100Access&) = delete;

    // Finds the driver's service; the last one found is used. False when there is none. Whatever the result, what the
    // search holds is given back by CloseConnectToDevice.
    [[nodiscard]] bool SearchDevice();
    // Opens the user client of the service found. False when it is refused.
    [[nodiscard]] bool OpenConnectToDevice();
    // Releases everything held; harmless when nothing is.
    void CloseConnectToDevice();

    // One request: find, open, call, complete, close. The buffer is input and output at once. Returns whether the
    // driver accepted the request; on false the buffer is as the caller left it, and callers clear it before a query
    // so that a failed one reads as zeros.
    // A query offers the whole buffer as reply capacity, whatever pReturn held; afterwards pReturn holds the bytes
    // returned.
    bool OidQueryInformation(std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn);
    // A set adds the set flag to the OID and offers what pReturn holds as reply capacity. Retry is not acted on: no
    // request is ever repeated.
    bool OidSetInformation(
        std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn, std::int32_t Retry);

    // Brings a freshly found card into use: checks its EEPROM, learns its bands, scans and reads the list. False, after
    // an alert, when the card failed to initialise.
    bool InitCard();
    // Sets G_bSupportAMode when the card supports 802.11a; never clears it.
    void CheckPhyMode();
    // Always true.
    bool CheckCountryRegion();
    // Asks for a scan and waits the 2 s that it takes.
    void RescanBssidList();
    // Replaces G_pBssidList with the driver's list.
    void QueryBssidList();
    // dBm to a quality of 0 to 100.
    [[nodiscard]] static std::uint32_t ConvertRssiToSignalQuality(std::int32_t rssiDbm);

private:
    enum class ReplyCapacity {
        WholeBuffer,
        AsReturnedLengthSays,
    };
    bool performRequest(std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn,
        ReplyCapacity capacity);

    IORegistry& m_registry;
    TickClock& m_clock;
    AlertPanels& m_alerts;

    // All zero when nothing is held. currentDevice and dataService are the same object, released once for each.
    mach_port_t masterPort { 0 };
    CFDictionaryRef devicesMatch { 0 };
    io_object_t iter { 0 };
    io_object_t device { 0 };
    io_object_t currentDevice { 0 };
    io_object_t dataService { 0 };
    io_connect_t dataPort { 0 };
};

// The number of attempts that every set request names.
inline constexpr std::int32_t setRetryCount = 3;

// Queries into a record of fixed size, cleared first.
template <typename Record> bool queryRecord(VX7100Access& adapter, std::uint32_t oid, Record& record)
{
    record = {};
    std::uint32_t returned = 0;
    return adapter.OidQueryInformation(oid, &record, sizeof(Record), &returned);
}

// Sets from a copy of the record, with no reply expected.
template <typename Record> bool setRecord(VX7100Access& adapter, std::uint32_t oid, Record record)
{
    std::uint32_t returned = 0;
    return adapter.OidSetInformation(oid, &record, sizeof(Record), &returned, setRetryCount);
}
