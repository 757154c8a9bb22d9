// From a scanned network and the typed keys to every byte sent to the driver, for each kind of
// connection. The expected bytes are literals and do not depend on production code.

#include "survey/ConnectionRecord.h"
#include "survey/connection/ConnectionTasks.h"
#include "tests/support/ExpectedRequests.h"
#include "tests/survey/SurveyFixture.h"

#include <optional>
#include <string>

namespace {

Requests settings(int networkType, int authenMode, int encryStatus)
{
    const ExpectedRadio radio {
        .preamble = 2,
        .rtsThreshold = { 0x2B, 0x09, 0, 0 }, // 2347 bytes
        .fragmentationThreshold = { 0, 0, 0, 0 },
        .txPowerPercent = 100,
    };
    return expectedSettings(radio, networkType, authenMode, encryStatus);
}

const Bytes ieee = bytesOf({ 'I', 'E', 'E', 'E' });

Requests byAddress()
{
    return {
        setPowerMode({ 0, 0, 0, 0 }), // always awake
        associateByBssid(bytesOf({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x07 })),
    };
}

Requests byName(const Bytes& name = ieee)
{
    return { setPowerMode({ 0, 0, 0, 0 }), associateBySsid(name) };
}

// A scanned ad hoc network sets no channel.
Requests adHocByName()
{
    return setFrequency({ 0, 0, 0, 0 }) + Requests { associateBySsid(ieee) };
}

// The first byte identifies the key.
Bytes wepKeyBytes(int index, int length)
{
    if (length == 5)
        return bytesOf({ 0xA0 + index, 0x00, 0xFF, 0x7F, 0x80 });
    return bytesOf({ 0xB0 + index, 0x00, 0xFF, 0x7F, 0x80, 1, 2, 3, 4, 5, 6, 7, 8 });
}

struct WepKeys {
    int length { 5 }; // bytes: 5 for 40-bit WEP, 13 for 104-bit WEP
    int transmit { 0 };
    bool all { false }; // otherwise only the transmit key

    [[nodiscard]] bool has(int index) const { return all || index == transmit; }
};

Requests wepKeyRequests(const WepKeys& keys)
{
    Requests requests;
    for (int index = 0; index < 4; ++index) {
        const bool transmit = index == keys.transmit;
        requests.push_back(
            keys.has(index) ? addKey(index, transmit, wepKeyBytes(index, keys.length)) : removeKey(index));
    }
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
    // Unused keys of an earlier opening of the sheet.
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
    std::optional<std::string> typedName; // for a hidden network
    Requests expected;
};

void PrintTo(const Join& join, std::ostream* stream)
{
    *stream << join.name;
}

std::vector<Join> openJoins()
{
    return {
        { "Open", network(), {}, {}, settings(1, 0, 1) + byAddress() },
        { "AdHocOpen", network(Ndis802_11IBSS), {}, {}, settings(0, 0, 1) + adHocByName() },
        { "HiddenOpen", nameless(network()), {}, "IEEE", settings(1, 0, 1) + byName() },
        { "HiddenOpenWithAnEmptyName", nameless(network()), {}, "", settings(1, 0, 1) + byName({}) },
        { "OpenOfUnknownMode", network(Ndis802_11AutoUnknown), {}, {}, settings(2, 0, 1) + byAddress() },
    };
}

std::vector<Join> wpaJoins()
{
    return {
        { "WpaPskTkip", wpaNetwork(tkip), passphrase(0), {}, settings(1, 4, 4) + addWpa(publishedKey()) + byAddress() },
        { "WpaPskAes", wpaNetwork(ccmp), passphrase(1), {}, settings(1, 4, 6) + addWpa(publishedKey()) + byAddress() },
        { "WpaPskRepeatedTkip", wpaNetwork(tkip), passphrase(2), {},
            settings(1, 4, 6) + addWpa(publishedKey()) + byAddress() },
        { "WpaPskWithoutACipher", wpaNetwork(ccmp), passphrase(-1), {},
            settings(1, 4, 6) + addWpa(publishedKey()) + byAddress() },
        { "WpaNoneTkip", wpaNetwork(tkip, Ndis802_11IBSS), passphrase(0), {},
            settings(0, 5, 4) + addWpaNone(publishedKey()) + adHocByName() },
        { "WpaNoneAes", wpaNetwork(ccmp, Ndis802_11IBSS), passphrase(1), {},
            settings(0, 5, 6) + addWpaNone(publishedKey()) + adHocByName() },
        { "WpaOfUnknownMode", wpaNetwork(tkip, Ndis802_11AutoUnknown), passphrase(0), {},
            settings(2, 5, 4) + addWpaNone(publishedKey()) + byAddress() },
        { "HiddenWpaPskTkip", nameless(wpaNetwork(tkip)), passphrase(0), "IEEE",
            settings(1, 4, 4) + addWpa(publishedKey()) + byName() },
        { "HiddenWpaPskAes", nameless(wpaNetwork(ccmp)), passphrase(1), "IEEE",
            settings(1, 4, 6) + addWpa(publishedKey()) + byName() },
    };
}

// Unusual selections that the sheet allows.
std::vector<Join> mismatchedJoins()
{
    const WepKeys third { .transmit = 2 };
    return {
        { "OpenWithNoneForWpa", wpaNetwork(tkip), openWithNone(), {}, settings(1, 0, 1) + byAddress() },
        { "OpenWithNoneForWep", wepNetwork(), openWithNone(), {}, settings(1, 0, 1) + byAddress() },
        { "SharedWithWepForWpa", wpaNetwork(ccmp), wep(third, 1), {},
            settings(1, 1, 0) + wepKeyRequests(third) + byAddress() },
        { "SharedWithNone", wepNetwork(), wep(third, 1, 0), {},
            settings(1, 1, 1) + wepKeyRequests(third) + byAddress() },
        { "WpaForWep", wepNetwork(), passphrase(0), {}, settings(1, 4, 4) + addWpa(publishedKey()) + byAddress() },
        { "WpaForAdHocWep", wepNetwork(Ndis802_11IBSS), passphrase(1), {},
            settings(0, 5, 6) + addWpaNone(publishedKey()) + adHocByName() },
    };
}

std::vector<Join> wepJoins(const WepKeys& keys, int authenType)
{
    const std::string name = std::string(authenType == 0 ? "Open" : "Shared") + (keys.length == 5 ? "Wep40" : "Wep104")
        + (keys.all ? "FourKeys" : "OneKey") + "Transmit" + std::to_string(keys.transmit);
    const Requests keyRequests = wepKeyRequests(keys);
    return {
        { name, wepNetwork(), wep(keys, authenType), {}, settings(1, authenType, 0) + keyRequests + byAddress() },
        { "AdHoc" + name, wepNetwork(Ndis802_11IBSS), wep(keys, authenType), {},
            settings(0, authenType, 0) + keyRequests + adHocByName() },
        { "Hidden" + name, nameless(wepNetwork()), wep(keys, authenType), "IEEE",
            settings(1, authenType, 0) + keyRequests + byName() },
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
    NetworkChoice choice { entry->fixedPart(), IsItemWPA(*entry), false, entry->fixedPart().Ssid };
    if (join.typedName) {
        choice.hidden = true;
        choice.ssid = EntryBuilder(*join.typedName).fixedPart.Ssid;
    }
    return choice;
}

class WholeJoinTest : public SurveyFixture, public testing::WithParamInterface<Join> { };

TEST_P(WholeJoinTest, SendsTheExactRequests)
{
    const Join& join = GetParam();
    const NetworkChoice choice = choiceOf(join);
    EXPECT_EQ(isHiddenNetwork(choice.network), join.typedName.has_value());
    EXPECT_EQ(needsSecuritySettings(choice), join.security.has_value());
    registry.answer(OID_802_11_CONFIGURATION, configuration({ 0x88, 0x2F, 0x25, 0 })); // channel 6, 2437000 kHz

    (void)queueConnection(connectionRecord(choice, join.security ? &*join.security : nullptr));
    EXPECT_TRUE(recordedRequests(registry).empty()); // nothing is sent before the task runs
    ConnectionState state;
    DoTask(state, adapter);

    EXPECT_EQ(recordedRequests(registry), join.expected);
    EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(state.runFlag, 0);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, WholeJoinTest, testing::ValuesIn(everyJoin()),
    [](const testing::TestParamInfo<Join>& info) { return info.param.name; });

} // namespace
