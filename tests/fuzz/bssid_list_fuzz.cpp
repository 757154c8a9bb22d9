// Treats the input as a scan result: appends to it, iterates over it, converts it to rows and passes it to the code
// that joins networks, proposes profiles and watches the connection. The sanitizers detect accesses outside the buffer;
// this file checks properties of the results.

#include "app/shared/SharedState.h"
#include "driver/BssidList.h"
#include "driver/MacAddressText.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "platform/AssertionHandler.h"
#include "survey/AccessPointRows.h"
#include "survey/ConnectionRecord.h"
#include "survey/ProfileFromScan.h"
#include "survey/connection/ConnectionTasks.h"
#include "tests/fuzz/Require.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingIORegistry.h"
#include "tests/support/RecordingTickClock.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace {

class ContinuingHandler final : public AssertionHandler {
public:
    [[nodiscard]] bool handleFailureInMethod(const char* /*method*/, const char* /*object*/, const char* /*file*/,
        int /*lineNumber*/, const char* /*description*/) override
    {
        return true;
    }
};

// Reads each entry like the connect and profile code. Returns the addresses.
std::vector<QString> readEntries(std::span<std::byte> list, AssertionHandler& assertions)
{
    std::vector<QString> addresses;
    BssidListWalk walk(list);
    while (const auto entry = walk.next()) {
        const NetworkChoice choice { entry->fixedPart(), IsItemWPA(*entry), false, entry->fixedPart().Ssid };
        require(encryptionTextOf(*entry) != nullptr);
        require(connectionRecord(choice, nullptr)->DisassociateFirst == 1);
        require(profileProposal(*entry, assertions).has_value());
        addresses.push_back(macAddressText(choice.network.MacAddress));
    }
    require(addresses.size() <= bssidCount(list));
    return addresses;
}

// The vector has exactly the size of the input, so the sanitizer detects any access past its end.
void readAll(std::vector<std::byte> list)
{
    ContinuingHandler assertions;
    (void)readEntries(list, assertions);
    const auto result = accessPointRows(list, assertions);
    require(result.complete);
    // Building the rows modifies the list, and after a truncated element even the Length of the next entry. The rows
    // therefore match the list as it is now.
    const auto addresses = readEntries(list, assertions);
    require(std::equal(result.rows.begin(), result.rows.end(), addresses.begin(), addresses.end(),
        [](const AccessPoint& row, const QString& address) { return row.bssid() == address; }));
    const auto entries = static_cast<std::uint32_t>(addresses.size());
    require(entries == 0 || bssidEntryAt(list, entries - 1).has_value());
    require(!bssidEntryAt(list, entries).has_value());
}

// The first two bytes are the length of the initial list; the remaining input is the appended chunk.
void appendChunk(std::span<const std::byte> input)
{
    std::vector<std::byte> list(8192);
    std::uint16_t split = 0;
    std::memcpy(&split, input.data(), sizeof(split));
    const auto rest = input.subspan(sizeof(split));
    const auto head = rest.first(std::min<std::size_t>({ split, rest.size(), list.size() }));
    std::copy(head.begin(), head.end(), list.begin());
    const std::uint32_t before = bssidCount(list);
    const auto chunk = rest.subspan(head.size());
    const std::uint32_t appended = appendBssidChunk(list, chunk).appended;
    require(appended <= bssidCount(chunk));
    const std::uint32_t countsLeft = std::numeric_limits<std::uint32_t>::max() - before;
    require(bssidCount(list) == before + std::min(appended, countsLeft));
    readAll(list);
}

SecuritySettings wepSettings()
{
    SecuritySettings security;
    security.AuthenType = 1;
    security.EncryType = 1;
    security.SelKeyIndex = 2;
    security.WepKeys[0].length = 5;
    security.WepKeys[2].length = 13;
    return security;
}

// The tab makes the key derivation fail immediately, which keeps the fuzzer fast.
SecuritySettings presharedKeySettings()
{
    SecuritySettings security;
    security.AuthenType = wpaAuthenTypeIndex;
    security.WPAPSK = "eight\tcharacters";
    return security;
}

void joinWithWepKeys(const NetworkChoice& choice)
{
    static const SecuritySettings security = wepSettings();
    const auto record = connectionRecord(choice, &security);
    require(record->pWepKey[0].size() == 44 && record->pWepKey[1].empty());
    require(record->pWepKey[2].size() == 52 && record->pWepKey[3].empty());
    require(record->pWpaKey.empty());
    require(record->ConnectByBssid == (choice.hidden || choice.network.InfrastructureMode == Ndis802_11IBSS ? 0 : 1));
}

void joinWithPresharedKey(const NetworkChoice& choice)
{
    static const SecuritySettings security = presharedKeySettings();
    const auto record = connectionRecord(choice, &security);
    require(record->pWpaKey.size() == 71 && record->pWepKey[0].empty());
    const std::byte* const key = record->pWpaKey.data() + sizeof(NDIS_802_11_KEY);
    require(std::memcmp(key, security.WPAPSK.c_str(), security.WPAPSK.size()) == 0);
}

void joinEntries(std::vector<std::byte> list)
{
    BssidListWalk walk(list);
    for (bool first = true; const auto entry = walk.next(); first = false) {
        const WLAN_BSSID_EX network = entry->fixedPart();
        const NetworkChoice choice { network, IsItemWPA(*entry), isHiddenNetwork(network), network.Ssid };
        joinWithWepKeys(choice);
        if (first) // the failed derivation prints errors
            joinWithPresharedKey(choice);
    }
}

class NullSurveyList final : public SurveyList {
public:
    void RefreshAPList() override { }
    void reloadData() override { }
};

// The index of the access point in the list. The watch stores only its low byte.
std::optional<std::uint32_t> indexOf(const MacAddress& bssid)
{
    BssidListWalk walk(currentBssidList());
    for (std::uint32_t index = 0; const auto entry = walk.next(); ++index) {
        if (entry->fixedPart().MacAddress == bssid)
            return index;
    }
    return std::nullopt;
}

// The last bytes of the input are the address of the current access point.
void watchLink(std::span<const std::byte> input)
{
    MacAddress bssid {};
    const auto tail = input.last(std::min(input.size(), bssid.size()));
    std::copy(tail.begin(), tail.end(), std::as_writable_bytes(std::span(bssid)).begin());
    RecordingIORegistry registry;
    registry.answer(OID_GEN_MEDIA_CONNECT_STATUS, std::vector<std::byte>(sizeof(std::uint32_t)));
    registry.answer(OID_802_11_BSSID, { tail.begin(), tail.end() });
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter(registry, clock, alerts);

    G_bDeviceExist = 1;
    G_pBssidList = std::make_unique<BssidListBuffer>();
    const auto list = input.first(std::min(input.size(), G_pBssidList->size()));
    std::copy(list.begin(), list.end(), G_pBssidList->begin());
    NullSurveyList rows;
    ConnectionState state;
    state.runFlag = 1; // prevents the watch from queueing tasks, which print traces
    ProbeConnectStatus(state, adapter, rows);

    const auto index = indexOf(bssid);
    require(G_bRescan == (index ? 0 : 1));
    require(G_bCurSelItem == (index ? static_cast<std::int8_t>(*index) : -1));
    require(state.TimerCount == -1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto input = std::as_bytes(std::span(data, size));
    readAll({ input.begin(), input.end() });
    joinEntries({ input.begin(), input.end() });
    watchLink(input);
    if (size >= sizeof(std::uint16_t))
        appendChunk(input);
    return 0;
}
