#include "driver/VX7100Access.h"

#include "app/shared/SharedState.h"
#include "app/shared/Trace.h"
#include "driver/BssidList.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "driver/records/VxRecords.h"
#include "platform/AlertPanels.h"
#include "platform/TickClock.h"
#include "platform/registry/DriverMessages.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace {

constexpr char className[] = "VX7100Access";
constexpr char serviceClass[] = "Pellvane";

constexpr std::uint32_t scanTicks = 2 * ticksPerSecond;
constexpr std::size_t listChunkSize = 4096; // bytes
// A slow driver must not block the window for as long as its list lasts.
constexpr std::chrono::seconds maxListTime { 4 };
// As many as a full list can have entries. A driver that sends more never ends its list.
constexpr std::size_t maxContinuations = std::tuple_size_v<BssidListBuffer> / sizeof(WLAN_BSSID_EX);
// A chunk may be empty, but this many in a row mean that the driver never reports the end of the list.
constexpr int maxEmptyContinuations = 8;
constexpr std::uint32_t cardFailedToInitialise = 1; // bit 0 of SystemErrorBitmap

} // namespace

VX7100Access::VX7100Access(IORegistry& registry, TickClock& clock, AlertPanels& alerts)
    : m_registry(registry)
    , m_clock(clock)
    , m_alerts(alerts)
{
    traceEntry(className, "init");
}

VX7100Access::~VX7100Access()
{
    CloseConnectToDevice();
}

bool VX7100Access::SearchDevice()
{
    traceEntry(className, "SearchDevice");
    masterPort = 0;
    devicesMatch = 0;
    iter = 0;
    device = 0;
    currentDevice = 0;

    if (m_registry.IOMasterPort(masterPort) != KERN_SUCCESS) {
        trace("!!!! VX7100Access - SearchDevice - Couldn't create a master IOKit Port. !!!!\n");
        return false;
    }
    devicesMatch = m_registry.IOServiceMatching(serviceClass);
    if (devicesMatch == 0) {
        trace("**** VX7100Access - SearchDevice - Can't create a '%s' matching dictionary. ****\n", serviceClass);
        return false;
    }
    const auto result = m_registry.IOServiceGetMatchingServices(masterPort, devicesMatch, iter);
    if (result != KERN_SUCCESS) {
        m_registry.mach_port_deallocate(masterPort);
        masterPort = 0;
        trace("!!!! VX7100Access - SearchDevice - Can't create a Service iterator. !!!!\n");
        return false;
    }
    devicesMatch = 0; // consumed by the call above

    // With several cards the last one wins. The handles of the others are overwritten without being released.
    int iterations = 0;
    while ((device = m_registry.IOIteratorNext(iter)) != 0) {
        if (currentDevice != 0)
            trace("!!!! VX7100Access - SearchDevice - But we already have a device I'm confused. !!!!\n");
        currentDevice = device;
        ++iterations;
    }
    trace("**** VX7100Access - SearchDevice - Iterations: %d ****\n", iterations);

    if (currentDevice == 0) {
        trace("!!!! VX7100Access - SearchDevice - Couldn't find a WirelessDriver service in registry - is "
              "the card loaded? !!!!\n");
        return false;
    }
    dataService = currentDevice;
    return true;
}

bool VX7100Access::OpenConnectToDevice()
{
    traceEntry(className, "OpenConnectToDevice");
    if (m_registry.IOServiceOpen(dataService, driverConnectionType, dataPort) == KERN_SUCCESS)
        return true;
    // The message names SearchDevice on purpose: people search logs for this wording.
    trace("!!!! VX7100Access - SearchDevice - Couldn't create a user client, why not? !!!!\n");
    return false;
}

void VX7100Access::CloseConnectToDevice()
{
    traceEntry(className, "CloseConnectToDevice");
    const auto releaseObject = [this](io_object_t& object) {
        if (object != 0)
            m_registry.IOObjectRelease(object);
        object = 0;
    };
    releaseObject(iter);
    if (devicesMatch != 0)
        m_registry.CFRelease(devicesMatch);
    devicesMatch = 0;
    if (masterPort != 0)
        m_registry.mach_port_deallocate(masterPort);
    masterPort = 0;
    releaseObject(device);
    releaseObject(currentDevice);
    if (dataPort != 0)
        m_registry.IOServiceClose(dataPort);
    dataPort = 0;
    releaseObject(dataService); // the same object as currentDevice; each copy is released
}

bool VX7100Access::OidQueryInformation(
    std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn)
{
    traceEntry(className, "OidQueryInformation");
    trace("**** VX7100Access - Oid = %d ****\n", static_cast<int>(Oid));
    return performRequest(Oid, InfoBuffer, InfoBufferLen, pReturn, ReplyCapacity::BufferLength);
}

bool VX7100Access::OidSetInformation(std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen,
    std::uint32_t* pReturn, [[maybe_unused]] std::int32_t Retry)
{
    traceEntry(className, "OidSetInformation");
    return performRequest(Oid | oidSetFlag, InfoBuffer, InfoBufferLen, pReturn, ReplyCapacity::ReturnedLength);
}

bool VX7100Access::performRequest(
    std::uint32_t Oid, void* InfoBuffer, std::uint32_t InfoBufferLen, std::uint32_t* pReturn, ReplyCapacity capacity)
{
    if (!SearchDevice() || !OpenConnectToDevice()) {
        CloseConnectToDevice();
        return false;
    }
    if (capacity == ReplyCapacity::BufferLength)
        *pReturn = InfoBufferLen;
    const std::span buffer(static_cast<std::byte*>(InfoBuffer), InfoBufferLen);
    const auto result = m_registry.IOConnectMethodStructureIStructureO(dataPort, Oid, buffer, *pReturn, buffer);
    // The driver expects this call after every request, even after a failed one.
    (void)m_registry.IOConnectMethodScalarIScalarO(dataPort, completionMethod);
    CloseConnectToDevice();
    return result == KERN_SUCCESS;
}

bool VX7100Access::InitCard()
{
    traceEntry(className, "InitCard");
    VX_802_11_STA_CONFIG configuration {};
    (void)queryRecord(*this, VX_OID_802_11_STA_CONFIG, configuration);
    if ((configuration.SystemErrorBitmap & cardFailedToInitialise) != 0) {
        m_alerts.NSRunAlertPanel(QStringLiteral("EEPRON error!!"),
            QStringLiteral("EEPROM Version error. Please update EEPROM contents."), QStringLiteral("OK"));
        return false;
    }
    G_bDialogRunning = 1;
    CheckPhyMode();
    G_bDialogRunning = 0;
    RescanBssidList();
    QueryBssidList();
    G_bRescan = 1;
    return true;
}

void VX7100Access::CheckPhyMode()
{
    traceEntry(className, "CheckPhyMode");
    NDIS_802_11_NETWORK_TYPE_LIST types {};
    (void)queryRecord(*this, OID_802_11_NETWORK_TYPES_SUPPORTED, types);
    const auto count = std::min<std::size_t>(types.NumberOfItems, types.NetworkType.size());
    const auto supported = std::span(types.NetworkType).first(count);
    if (std::find(supported.begin(), supported.end(), Ndis802_11OFDM5) != supported.end())
        G_bSupportAMode = 1;
}

bool VX7100Access::CheckCountryRegion()
{
    traceEntry(className, "CheckCountryRegion");
    return true;
}

void VX7100Access::RescanBssidList()
{
    traceEntry(className, "RescanBssidList");
    std::uint32_t ignored = 0;
    std::uint32_t returned = 0;
    // A set sent as a query: the driver expects the buffer length as reply capacity.
    (void)OidQueryInformation(OID_802_11_BSSID_LIST_SCAN | oidSetFlag, &ignored, sizeof(ignored), &returned);
    m_clock.Delay(scanTicks);
}

void VX7100Access::QueryBssidList()
{
    traceEntry(className, "QueryBssidList");
    const auto begin = m_clock.elapsed();
    G_pBssidList = std::make_unique<BssidListBuffer>();
    std::uint32_t returned = 0;
    (void)OidQueryInformation(OID_802_11_BSSID_LIST, G_pBssidList->data(), listChunkSize, &returned);

    std::array<std::byte, listChunkSize> chunk {};
    int emptyContinuations = 0;
    for (std::size_t continuations = 0; continuations < maxContinuations; ++continuations) {
        returned = 0; // not written if the card is removed here, and then the loop must end
        (void)OidQueryInformation(VX_OID_802_11_BSSID_LIST_NEXT, chunk.data(), listChunkSize, &returned);
        if (returned == 0)
            break;
        const auto received = std::span(chunk).first(std::min<std::size_t>(returned, chunk.size()));
        const BssidChunkResult result = appendBssidChunk(*G_pBssidList, received);
        emptyContinuations = result.appended == 0 ? emptyContinuations + 1 : 0;
        if (result.listIsFull || emptyContinuations == maxEmptyContinuations
            || m_clock.elapsed() - begin >= maxListTime)
            break;
    }
}

std::uint32_t VX7100Access::ConvertRssiToSignalQuality(std::int32_t rssiDbm)
{
    traceEntry(className, "ConvertRssiToSignalQuality");
    if (rssiDbm >= -50)
        return 100;
    if (rssiDbm >= -80)
        return static_cast<std::uint32_t>((rssiDbm + 80) * 2.6 + 24);
    if (rssiDbm >= -90)
        return static_cast<std::uint32_t>((rssiDbm + 90) * 2.6);
    return 0;
}
