#pragma once

#include "platform/registry/IORegistry.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <span>

class AlertPanels;
class TickClock;

// The adapter. All requests to the driver go through this class. Main thread only; requests never overlap.
class VX7100Access {
    Q_DISABLE_COPY_MOVE(VX7100Access)

public:
    VX7100Access(IORegistry& registry, TickClock& clock, AlertPanels& alerts);
    ~VX7100Access();

    // Looks up the driver's service; uses the last one if there are several. Returns false if there is none. In both
    // cases CloseConnectToDevice must be called to release the handles.
    [[nodiscard]] bool SearchDevice();
    // Opens a user client of the service found.
    [[nodiscard]] bool OpenConnectToDevice();
    // Releases all handles. May be called when there are none.
    void CloseConnectToDevice();

    // One complete request: find, open, call, complete, close. InfoBuffer is both input and output. Returns whether the
    // driver accepted the request. A failed request does not change the buffer, so callers clear it before a query to
    // read zeros on failure.
    // The reply capacity of a query is InfoBufferLen; *pReturn is only written: the number of bytes returned.
    bool OidQueryInformation(std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn);
    // Adds the set flag to the OID. The reply capacity is the initial value of *pReturn. Retry is ignored: requests are
    // never repeated.
    bool OidSetInformation(
        std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn, std::int32_t Retry);

    // Prepares a newly inserted card: checks its EEPROM and its bands, scans, and reads the list. Shows an alert and
    // returns false if the card failed to initialise.
    bool InitCard();
    // Sets G_bSupportAMode if the card supports 802.11a; never clears it.
    void CheckPhyMode();
    // Always true.
    bool CheckCountryRegion();
    // Starts a scan and blocks for the 2 s that it takes.
    void RescanBssidList();
    // Replaces G_pBssidList with the driver's current list, or with what it delivers within 4 s.
    void QueryBssidList();
    // Converts dBm to a quality of 0 to 100.
    [[nodiscard]] static std::uint32_t ConvertRssiToSignalQuality(std::int32_t rssiDbm);

private:
    enum class ReplyCapacity {
        BufferLength,
        ReturnedLength, // the initial value of *pReturn
    };
    bool performRequest(std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn,
        ReplyCapacity capacity);

    IORegistry& m_registry;
    TickClock& m_clock;
    AlertPanels& m_alerts;

    // Zero if not held. currentDevice and dataService are the same object, which is released twice.
    mach_port_t masterPort { 0 };
    CFDictionaryRef devicesMatch { 0 };
    io_object_t iter { 0 };
    io_object_t device { 0 };
    io_object_t currentDevice { 0 };
    io_object_t dataService { 0 };
    io_connect_t dataPort { 0 };
};

// The Retry argument of all set requests.
inline constexpr std::int32_t setRetryCount = 3;

// Clears the record and queries it.
template <typename Record> bool queryRecord(VX7100Access& adapter, std::uint32_t oid, Record& record)
{
    record = {};
    std::uint32_t returned = 0;
    return adapter.OidQueryInformation(oid, &record, sizeof(Record), &returned);
}

// Sets a copy of the record; expects no reply.
template <typename Record> bool setRecord(VX7100Access& adapter, std::uint32_t oid, Record record)
{
    std::uint32_t returned = 0;
    return adapter.OidSetInformation(oid, &record, sizeof(Record), &returned, setRetryCount);
}
