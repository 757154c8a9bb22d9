// From a network of the list and what was typed for it to every byte that the driver is sent, for each kind of
// connection. What is expected is written out and made by nothing that the utility itself uses.

#include "survey/ConnectionRecord.h"
#include "survey/ConnectionTasks.h"
#include "tests/support/RecordedRequests.h"
#include "tests/survey/SurveyFixture.h"

#include <optional>
#include <string>

namespace {

using Requests = std::vector<RecordedRequest>;

constexpr int tkip = 2;
constexpr int ccmp = 4;

Requests operator+(Requests first, const Requests& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// What every connection begins with.
Requests settings(int networkType, int authenMode, int encryStatus)
{
    return {
        { 0x0D810115, bytesOf({ 0, 0, 0, 0 }) }, // OID_802_11_DISASSOCIATE
        { 0x0D810108, bytesOf({ networkType, 0, 0, 0 }) }, // OID_802_11_INFRASTRUCTURE_MODE
        { 0x0DF10101, bytesOf({ 2, 0, 0, 0 }) }, // VX_OID_802_11_PREAMBLE
        { 0x0D81020A, bytesOf({ 0x2B, 0x09, 0, 0 }) }, // OID_802_11_RTS_THRESHOLD: 2347 bytes
        { 0x0D810209, bytesOf({ 0, 0, 0, 0 }) }, // OID_802_11_FRAGMENTATION_THRESHOLD
        { 0x0D810118, bytesOf({ authenMode, 0, 0, 0 }) }, // OID_802_11_AUTHENTICATION_MODE
        { 0x0D81011B, bytesOf({ encryStatus, 0, 0, 0 }) }, // OID_802_11_ENCRYPTION_STATUS
        { 0x0DF10118, bytesOf({ 100, 0, 0, 0 }) }, // VX_OID_802_11_TX_POWER: 100 percent
    };
}

const RecordedRequest powerMode { 0x0D810216, bytesOf({ 0, 0, 0, 0 }) }; // OID_802_11_POWER_MODE: always awake

RecordedRequest associateByBssid()
{
    return { 0x0D810101, bytesOf({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x07 }) }; // OID_802_11_BSSID
}

RecordedRequest associateBySsid(const Bytes& name)
{
    Bytes record = bytesOf({ static_cast<int>(name.size()), 0, 0, 0 }); // SsidLength
    append(record, name); // Ssid
    record.resize(4 + 32);
    return { 0x0D810102, record }; // OID_802_11_SSID
}

// What the card is set to before the connection; an ad hoc network of the list names no channel of its own.
const Bytes cardConfiguration = bytesOf({
    32, 0, 0, 0, // Length
    0xC8, 0, 0, 0, // BeaconPeriod: 200 Kusec
    9, 0, 0, 0, // ATIMWindow
    0x88, 0x2F, 0x25, 0, // DSConfig: channel 6, 2437000 kHz
    16, 0, 0, 0, // FHConfig.Length
    1, 0, 0, 0, // FHConfig.HopPattern
    2, 0, 0, 0, // FHConfig.HopSet
    3, 0, 0, 0, // FHConfig.DwellTime
});

Requests adHocChannel()
{
    Bytes configuration = cardConfiguration;
    for (std::size_t place = 12; place < 16; ++place)
        configuration[place] = std::byte { 0 }; // DSConfig
    return {
        { 0x0D010211, Bytes(32), 32 }, // OID_802_11_CONFIGURATION, the query
        { 0x0D810211, configuration }, // OID_802_11_CONFIGURATION
    };
}

const Bytes ieee = bytesOf({ 'I', 'E', 'E', 'E' });

// The key of passphrase "password" and SSID "IEEE" that IEEE 802.11i publishes.
const Bytes presharedKey = bytesOf({
    71, 0, 0, 0, // Length: 32 + 39
    0, 0, 0, 0x80, // KeyIndex: 0, transmit key
    32, 0, 0, 0, // KeyLength
    0, 0, 0, 0, 0, 0, // BSSID
    0, 0, // padding
    0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    0xf4, 0x2c, 0x6f, 0xc5, 0x2d, 0xf0, 0xeb, 0xef, // KeyMaterial
    0x9e, 0xbb, 0x4b, 0x90, 0xb3, 0x8a, 0x5f, 0x90, // …
    0x2e, 0x83, 0xfe, 0x1b, 0x13, 0x5a, 0x70, 0xe2, // …
    0x3a, 0xed, 0x76, 0x2e, 0x97, 0x10, 0xa1, 0x2e, // …
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // what Length counts behind the key
});

Requests addWpa()
{
    return { { 0x0DF10116, presharedKey } }; // VX_OID_802_11_ADD_WPA
}

Requests addWpaNone()
{
    return { { 0x0D81011D, presharedKey } }; // OID_802_11_ADD_KEY
}

RecordedRequest removeKey(int index)
{
    return { 0x0D81011E, // OID_802_11_REMOVE_KEY
        bytesOf({
            16, 0, 0, 0, // Length
            index, 0, 0, 0, // KeyIndex
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
        }) };
}

// The first byte of a key tells its number from the others.
Bytes wepKeyBytes(int index, int length)
{
    if (length == 5)
        return bytesOf({ 0xA0 + index, 0x00, 0xFF, 0x7F, 0x80 });
    return bytesOf({ 0xB0 + index, 0x00, 0xFF, 0x7F, 0x80, 1, 2, 3, 4, 5, 6, 7, 8 });
}

RecordedRequest addKey(int index, bool transmit, int length)
{
    Bytes record = bytesOf({
        length + 39, 0, 0, 0, // Length
        index, 0, 0, transmit ? 0x80 : 0, // KeyIndex
        length, 0, 0, 0, // KeyLength
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    });
    append(record, wepKeyBytes(index, length)); // KeyMaterial
    append(record, bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 })); // what Length counts behind the key
    return { 0x0D81011D, record }; // OID_802_11_ADD_KEY
}

struct WepKeys {
    int length { 5 }; // bytes: 5 for 40-bit WEP, 13 for 104-bit WEP
    int transmit { 0 };
    bool all { false }; // or the transmit key alone

    [[nodiscard]] bool has(int index) const { return all || index == transmit; }
};

Requests wepKeyRequests(const WepKeys& keys)
{
    Requests requests;
    for (int index = 0; index < 4; ++index)
        requests.push_back(keys.has(index) ? addKey(index, index == keys.transmit, keys.length) : removeKey(index));
    return requests;
}

SecuritySettings wep(const WepKeys& keys, int authenType, int encryType = 1)
{
    SecuritySettings security;
    security.AuthenType = authenType;
    security.EncryType = encryType;
    security.SelKeyIndex = keys.transmit;
    for (int index = 0; index < 4; ++index) {
        if (!keys.has(index))
            continue;
        const Bytes bytes = wepKeyBytes(index, keys.length);
        WepKey& key = security.WepKeys[static_cast<std::size_t>(index)];
        key.length = static_cast<std::uint8_t>(bytes.size());
        std::memcpy(key.material.data(), bytes.data(), bytes.size());
    }
    return security;
}

SecuritySettings passphrase(int encryType)
{
    SecuritySettings security;
    security.AuthenType = 2;
    security.EncryType = encryType;
    security.WPAPSK = "password";
    return security;
}

SecuritySettings openWithNone()
{
    // Keys of an earlier opening of the sheet that are of no use now.
    SecuritySettings security = wep({ .all = true }, 0, 0);
    security.WPAPSK = "password";
    return security;
}

EntryBuilder network(std::int32_t mode = Ndis802_11Infrastructure)
{
    EntryBuilder entry("IEEE", 7);
    entry.fixedPart.InfrastructureMode = mode;
    return entry;
}

EntryBuilder wepNetwork(std::int32_t mode = Ndis802_11Infrastructure)
{
    EntryBuilder entry = network(mode);
    entry.fixedPart.Privacy = 1;
    return entry;
}

EntryBuilder wpaNetwork(int cipher, std::int32_t mode = Ndis802_11Infrastructure)
{
    EntryBuilder entry = wepNetwork(mode);
    entry.elements = wpaElement(cipher, 2);
    return entry;
}

EntryBuilder nameless(EntryBuilder entry)
{
    entry.fixedPart.Ssid = {};
    return entry;
}

struct Join {
    std::string name;
    EntryBuilder entry;
    std::optional<SecuritySettings> security;
    std::optional<std::string> typedName; // for a network that does not send its own
    Requests expected;
};

void PrintTo(const Join& join, std::ostream* stream)
{
    *stream << join.name;
}

std::vector<Join> openJoins()
{
    return {
        { "Open", network(), {}, {}, settings(1, 0, 1) + Requests { powerMode, associateByBssid() } },
        { "AdHocOpen", network(Ndis802_11IBSS), {}, {},
            settings(0, 0, 1) + adHocChannel() + Requests { associateBySsid(ieee) } },
        { "HiddenOpen", nameless(network()), {}, "IEEE",
            settings(1, 0, 1) + Requests { powerMode, associateBySsid(ieee) } },
        { "HiddenOpenWithAnEmptyName", nameless(network()), {}, "",
            settings(1, 0, 1) + Requests { powerMode, associateBySsid({}) } },
        { "OpenOfUnknownMode", network(Ndis802_11AutoUnknown), {}, {},
            settings(2, 0, 1) + Requests { powerMode, associateByBssid() } },
    };
}

std::vector<Join> wpaJoins()
{
    return {
        { "WpaPskTkip", wpaNetwork(tkip), passphrase(0), {},
            settings(1, 4, 4) + addWpa() + Requests { powerMode, associateByBssid() } },
        { "WpaPskAes", wpaNetwork(ccmp), passphrase(1), {},
            settings(1, 4, 6) + addWpa() + Requests { powerMode, associateByBssid() } },
        { "WpaPskRepeatedTkip", wpaNetwork(tkip), passphrase(2), {},
            settings(1, 4, 6) + addWpa() + Requests { powerMode, associateByBssid() } },
        { "WpaPskWithoutACipher", wpaNetwork(ccmp), passphrase(-1), {},
            settings(1, 4, 6) + addWpa() + Requests { powerMode, associateByBssid() } },
        { "WpaNoneTkip", wpaNetwork(tkip, Ndis802_11IBSS), passphrase(0), {},
            settings(0, 5, 4) + addWpaNone() + adHocChannel() + Requests { associateBySsid(ieee) } },
        { "WpaNoneAes", wpaNetwork(ccmp, Ndis802_11IBSS), passphrase(1), {},
            settings(0, 5, 6) + addWpaNone() + adHocChannel() + Requests { associateBySsid(ieee) } },
        { "WpaOfUnknownMode", wpaNetwork(tkip, Ndis802_11AutoUnknown), passphrase(0), {},
            settings(2, 5, 4) + addWpaNone() + Requests { powerMode, associateByBssid() } },
        { "HiddenWpaPskTkip", nameless(wpaNetwork(tkip)), passphrase(0), "IEEE",
            settings(1, 4, 4) + addWpa() + Requests { powerMode, associateBySsid(ieee) } },
        { "HiddenWpaPskAes", nameless(wpaNetwork(ccmp)), passphrase(1), "IEEE",
            settings(1, 4, 6) + addWpa() + Requests { powerMode, associateBySsid(ieee) } },
    };
}

// What the sheet also lets the user choose.
std::vector<Join> mismatchedJoins()
{
    const WepKeys third { .transmit = 2 };
    return {
        { "OpenWithNoneForWpa", wpaNetwork(tkip), openWithNone(), {},
            settings(1, 0, 1) + Requests { powerMode, associateByBssid() } },
        { "OpenWithNoneForWep", wepNetwork(), openWithNone(), {},
            settings(1, 0, 1) + Requests { powerMode, associateByBssid() } },
        { "SharedWithWepForWpa", wpaNetwork(ccmp), wep(third, 1), {},
            settings(1, 1, 0) + wepKeyRequests(third) + Requests { powerMode, associateByBssid() } },
        { "SharedWithNone", wepNetwork(), wep(third, 1, 0), {},
            settings(1, 1, 1) + wepKeyRequests(third) + Requests { powerMode, associateByBssid() } },
        { "WpaForWep", wepNetwork(), passphrase(0), {},
            settings(1, 4, 4) + addWpa() + Requests { powerMode, associateByBssid() } },
        { "WpaForAdHocWep", wepNetwork(Ndis802_11IBSS), passphrase(1), {},
            settings(0, 5, 6) + addWpaNone() + adHocChannel() + Requests { associateBySsid(ieee) } },
    };
}

std::vector<Join> wepJoins(const WepKeys& keys, int authenType)
{
    const std::string name = std::string(authenType == 0 ? "Open" : "Shared") + (keys.length == 5 ? "Wep40" : "Wep104")
        + (keys.all ? "FourKeys" : "OneKey") + "Transmit" + std::to_string(keys.transmit);
    const Requests keyRequests = wepKeyRequests(keys);
    return {
        { name, wepNetwork(), wep(keys, authenType), {},
            settings(1, authenType, 0) + keyRequests + Requests { powerMode, associateByBssid() } },
        { "AdHoc" + name, wepNetwork(Ndis802_11IBSS), wep(keys, authenType), {},
            settings(0, authenType, 0) + keyRequests + adHocChannel() + Requests { associateBySsid(ieee) } },
        { "Hidden" + name, nameless(wepNetwork()), wep(keys, authenType), "IEEE",
            settings(1, authenType, 0) + keyRequests + Requests { powerMode, associateBySsid(ieee) } },
    };
}

std::vector<Join> everyJoin()
{
    std::vector<Join> all;
    const auto add = [&all](const std::vector<Join>& joins) { all.insert(all.end(), joins.begin(), joins.end()); };
    add(openJoins());
    add(wpaJoins());
    add(mismatchedJoins());
    for (const int authenType : { 0, 1 }) {
        for (const int length : { 5, 13 }) {
            for (const bool all4 : { false, true }) {
                for (const int transmit : { 0, 1, 2, 3 })
                    add(wepJoins({ length, transmit, all4 }, authenType));
            }
        }
    }
    return all;
}

NetworkChoice choiceOf(const Join& join)
{
    Bytes list = bssidList({ join.entry });
    const auto entry = BssidListWalk(list).next();
    NetworkChoice choice { entry->fixedPart(), wpaClassOf(*entry), false, entry->fixedPart().Ssid };
    if (join.typedName) {
        choice.hidden = true;
        choice.ssid = EntryBuilder(*join.typedName).fixedPart.Ssid;
    }
    return choice;
}

class WholeJoinTest : public SurveyFixture, public testing::WithParamInterface<Join> { };

TEST_P(WholeJoinTest, SendsEveryByteInItsOrder)
{
    const Join& join = GetParam();
    const NetworkChoice choice = choiceOf(join);
    EXPECT_EQ(isHiddenNetwork(choice.network), join.typedName.has_value());
    EXPECT_EQ(needsSecuritySettings(choice), join.security.has_value());
    registry.answer(OID_802_11_CONFIGURATION, cardConfiguration);

    (void)queueConnection(connectionRecord(choice, join.security ? &*join.security : nullptr));
    EXPECT_TRUE(recordedRequests(registry).empty()); // nothing is sent before the task is executed
    ConnectionState state;
    DoTask(state, adapter);

    EXPECT_EQ(recordedRequests(registry), join.expected);
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(state.runFlag, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, WholeJoinTest, testing::ValuesIn(everyJoin()),
    [](const testing::TestParamInfo<Join>& info) { return info.param.name; });

} // namespace
