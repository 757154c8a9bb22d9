#include "driver/VX7100Access.h"

#include "tests/support/BssidListBuilder.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/StandardErrorOf.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using Texts = std::vector<std::string>;

class VX7100AccessTest : public testing::Test {
protected:
    InitialSharedState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };

    bool query(std::uint32_t oid, std::uint32_t& value)
    {
        std::uint32_t returned = 0;
        return adapter.OidQueryInformation(oid, &value, sizeof(value), &returned);
    }
};

TEST_F(VX7100AccessTest, MakesNoCallsOnConstruction)
{
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(VX7100AccessTest, QueryFindsOpensCallsCompletesAndCloses)
{
    registry.answer(OID_GEN_MEDIA_CONNECT_STATUS, bytesOf({ 1, 0, 0, 0 }));
    std::uint32_t value = 0x04030201;
    EXPECT_TRUE(query(OID_GEN_MEDIA_CONNECT_STATUS, value));
    EXPECT_EQ(value, 1u);
    EXPECT_EQ(registry.texts(),
        (Texts {
            "IOMasterPort() = 1", "IOServiceMatching(Pellvane) = 2", "IOServiceGetMatchingServices(1, 2) = 3",
            "IOIteratorNext(3) = 4", "IOIteratorNext(3)", "IOServiceOpen(4, 0) = 5",
            "IOConnectMethodStructureIStructureO(5, 0x00010114, [01 02 03 04], capacity 4) = 4",
            "IOConnectMethodScalarIScalarO(5, 1)",
            "IOObjectRelease(3)", // the iterator
            "mach_port_deallocate(1)",
            "IOObjectRelease(4)", // currentDevice
            "IOServiceClose(5)",
            "IOObjectRelease(4)", // dataService, the same object
        }));
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(VX7100AccessTest, ReplyCapacityOfAQueryIsTheBufferLength)
{
    std::uint32_t value = 0;
    std::uint32_t returned = 4711;
    EXPECT_TRUE(adapter.OidQueryInformation(OID_GEN_RCV_OK, &value, sizeof(value), &returned));
    EXPECT_EQ(recordedRequests(registry), std::vector { ::query(OID_GEN_RCV_OK, 4) });
    EXPECT_EQ(returned, 0u); // the driver returned no bytes
}

TEST_F(VX7100AccessTest, SetAddsTheFlagAndTakesTheReplyCapacityFromTheReturnedLength)
{
    std::uint32_t value = 7;
    std::uint32_t returned = 2;
    EXPECT_TRUE(adapter.OidSetInformation(OID_802_11_POWER_MODE, &value, sizeof(value), &returned, 3));
    EXPECT_EQ(recordedRequests(registry),
        (std::vector<RecordedRequest> { { asSet(OID_802_11_POWER_MODE), bytesOf({ 7, 0, 0, 0 }), 2 } }));
}

TEST_F(VX7100AccessTest, SetOfAnOidThatAlreadyHasTheFlagSendsTheSameNumber)
{
    EXPECT_TRUE(setRecord(adapter, asSet(OID_802_11_ADD_KEY), std::uint32_t { 0 }));
    EXPECT_TRUE(setRecord(adapter, OID_802_11_ADD_KEY, std::uint32_t { 0 }));
    EXPECT_EQ(registry.oids(), std::vector(2, asSet(OID_802_11_ADD_KEY)));
}

TEST_F(VX7100AccessTest, FailedSetIsNotRepeated)
{
    registry.fail(asSet(OID_802_11_POWER_MODE));
    EXPECT_FALSE(setRecord(adapter, OID_802_11_POWER_MODE, std::uint32_t { 1 }));
    EXPECT_EQ(registry.count(RegistryCall::IOConnectMethodStructureIStructureO), 1);
    EXPECT_EQ(registry.count(RegistryCall::IOConnectMethodScalarIScalarO), 1);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(VX7100AccessTest, SetDoesNotWritePastTheBuffer)
{
    std::array<std::uint8_t, 8> memory { 1, 2, 3, 4, 5, 6, 7, 8 };
    registry.answer(asSet(OID_802_11_POWER_MODE), bytesOf({ 9, 9, 9, 9, 9, 9, 9, 9 }));
    std::uint32_t returned = 8; // more than the buffer length
    EXPECT_TRUE(adapter.OidSetInformation(OID_802_11_POWER_MODE, memory.data(), 4, &returned, 3));
    EXPECT_EQ(memory, (std::array<std::uint8_t, 8> { 9, 9, 9, 9, 5, 6, 7, 8 }));
}

TEST_F(VX7100AccessTest, RequestMayHaveAnEmptyBuffer)
{
    std::uint32_t returned = 0;
    EXPECT_TRUE(adapter.OidQueryInformation(asSet(VX_OID_802_11_RESET_COUNTERS), nullptr, 0, &returned));
    EXPECT_EQ(recordedRequests(registry), std::vector { ::query(asSet(VX_OID_802_11_RESET_COUNTERS), 0) });
}

TEST_F(VX7100AccessTest, RequestWithoutACardFailsAndReleasesEverything)
{
    registry.serviceCount = 0;
    std::uint32_t value = 5;
    EXPECT_FALSE(query(OID_GEN_MEDIA_CONNECT_STATUS, value));
    EXPECT_FALSE(setRecord(adapter, OID_802_11_POWER_MODE, std::uint32_t { 1 }));
    EXPECT_EQ(value, 5u);
    EXPECT_EQ(registry.count(RegistryCall::IOServiceOpen), 0);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(VX7100AccessTest, SearchWithoutACardIsReleasedByTheClose)
{
    registry.serviceCount = 0;
    EXPECT_FALSE(adapter.SearchDevice());
    EXPECT_EQ(registry.count(RegistryCall::IOIteratorNext), 1);
    adapter.CloseConnectToDevice();
    EXPECT_TRUE(registry.held().empty());
    registry.forgetCalls();
    adapter.CloseConnectToDevice();
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(VX7100AccessTest, SecondCloseDoesNothing)
{
    ASSERT_TRUE(adapter.SearchDevice());
    ASSERT_TRUE(adapter.OpenConnectToDevice());
    adapter.CloseConnectToDevice();
    registry.forgetCalls();
    adapter.CloseConnectToDevice();
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(VX7100AccessTest, SearchWithoutACardIsTraced)
{
    registry.serviceCount = 0;
    EXPECT_EQ(tracesOf([this] { EXPECT_FALSE(adapter.SearchDevice()); }),
        "#### VX7100Access - SearchDevice ####\n"
        "**** VX7100Access - SearchDevice - Iterations: 0 ****\n"
        "!!!! VX7100Access - SearchDevice - Couldn't find a WirelessDriver service in registry - is the card loaded? "
        "!!!!\n");
}

TEST_F(VX7100AccessTest, LastOfTwoCardsIsUsedAndTheFirstIsNotReleased)
{
    registry.serviceCount = 2;
    EXPECT_EQ(tracesOf([this] { EXPECT_TRUE(adapter.SearchDevice()); }),
        "#### VX7100Access - SearchDevice ####\n"
        "!!!! VX7100Access - SearchDevice - But we already have a device I'm confused. !!!!\n"
        "**** VX7100Access - SearchDevice - Iterations: 2 ****\n");
    EXPECT_TRUE(adapter.OpenConnectToDevice());
    EXPECT_EQ(registry.calls.back().handle, 5u); // services 4 and 5
    EXPECT_EQ(tracesOf([this] { adapter.CloseConnectToDevice(); }), "#### VX7100Access - CloseConnectToDevice ####\n");
    EXPECT_EQ(registry.held(), (std::vector<std::uint32_t> { 4 }));
}

TEST_F(VX7100AccessTest, SearchFailuresAreTracedAndReleased)
{
    struct Failure {
        RegistryCall call;
        std::string trace;
        Texts releases;
    };
    const std::vector<Failure> failures {
        { RegistryCall::IOMasterPort, "!!!! VX7100Access - SearchDevice - Couldn't create a master IOKit Port. !!!!\n",
            {} },
        { RegistryCall::IOServiceMatching,
            "**** VX7100Access - SearchDevice - Can't create a 'Pellvane' matching dictionary. ****\n",
            { "mach_port_deallocate(1)" } },
        { RegistryCall::IOServiceGetMatchingServices,
            "!!!! VX7100Access - SearchDevice - Can't create a Service iterator. !!!!\n",
            { "mach_port_deallocate(1)", "CFRelease(2)" } },
    };
    for (const Failure& failure : failures) {
        RecordingIORegistry fresh;
        VX7100Access access(fresh, clock, alerts);
        fresh.failAt(failure.call);
        EXPECT_EQ(tracesOf([&] { EXPECT_FALSE(access.SearchDevice()); }),
            "#### VX7100Access - SearchDevice ####\n" + failure.trace);
        access.CloseConnectToDevice();
        Texts releases = fresh.texts();
        releases.erase(releases.begin(), releases.end() - static_cast<std::ptrdiff_t>(failure.releases.size()));
        EXPECT_EQ(releases, failure.releases);
        EXPECT_TRUE(fresh.held().empty());
    }
}

TEST_F(VX7100AccessTest, OpenFailureIsTracedAsSearchDevice)
{
    registry.failAt(RegistryCall::IOServiceOpen);
    ASSERT_TRUE(adapter.SearchDevice());
    EXPECT_EQ(tracesOf([this] { EXPECT_FALSE(adapter.OpenConnectToDevice()); }),
        "#### VX7100Access - OpenConnectToDevice ####\n"
        "!!!! VX7100Access - SearchDevice - Couldn't create a user client, why not? !!!!\n");
    adapter.CloseConnectToDevice();
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(VX7100AccessTest, OpenFailureFailsTheRequestAndReleasesEverything)
{
    registry.failAt(RegistryCall::IOServiceOpen);
    std::uint32_t value = 0;
    EXPECT_FALSE(query(OID_GEN_RCV_OK, value));
    EXPECT_EQ(registry.count(RegistryCall::IOConnectMethodStructureIStructureO), 0);
    EXPECT_EQ(registry.count(RegistryCall::IOConnectMethodScalarIScalarO), 0);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(VX7100AccessTest, FailureOfTheCompletionCallIsIgnored)
{
    registry.failAt(RegistryCall::IOConnectMethodScalarIScalarO);
    std::uint32_t value = 0;
    EXPECT_TRUE(query(OID_GEN_RCV_OK, value));
}

TEST_F(VX7100AccessTest, QueriesTraceTheirOidAndSetsDoNot)
{
    std::uint32_t value = 0;
    const std::string ofQuery = tracesOf([&] { (void)query(OID_802_11_BSSID_LIST, value); });
    EXPECT_TRUE(ofQuery.starts_with("#### VX7100Access - OidQueryInformation ####\n"
                                    "**** VX7100Access - Oid = 218169879 ****\n"
                                    "#### VX7100Access - SearchDevice ####\n"));
    const std::string ofSet = tracesOf([&] { (void)setRecord(adapter, OID_802_11_POWER_MODE, value); });
    EXPECT_TRUE(ofSet.starts_with("#### VX7100Access - OidSetInformation ####\n"
                                  "#### VX7100Access - SearchDevice ####\n"));
}

TEST_F(VX7100AccessTest, OperationsTraceTheirNameFirst)
{
    struct Operation {
        std::string name;
        std::function<void()> run;
    };
    const std::vector<Operation> operations {
        { "init", [this] { const VX7100Access another(registry, clock, alerts); } },
        { "InitCard", [this] { (void)adapter.InitCard(); } },
        { "CheckPhyMode", [this] { adapter.CheckPhyMode(); } },
        { "CheckCountryRegion", [this] { (void)adapter.CheckCountryRegion(); } },
        { "RescanBssidList", [this] { adapter.RescanBssidList(); } },
        { "QueryBssidList", [this] { adapter.QueryBssidList(); } },
        { "ConvertRssiToSignalQuality", [] { (void)VX7100Access::ConvertRssiToSignalQuality(-50); } },
    };
    for (const Operation& operation : operations) {
        const std::string written = tracesOf(operation.run);
        EXPECT_TRUE(written.starts_with("#### VX7100Access - " + operation.name + " ####\n")) << written;
    }
}

TEST_F(VX7100AccessTest, WritesNoTracesUnlessDebugging)
{
    std::uint32_t value = 0;
    EXPECT_EQ(standardErrorOf([&] { (void)query(OID_GEN_RCV_OK, value); }), "");
}

TEST_F(VX7100AccessTest, DestructorReleasesEverything)
{
    RecordingIORegistry fresh;
    {
        VX7100Access access(fresh, clock, alerts);
        ASSERT_TRUE(access.SearchDevice());
        ASSERT_TRUE(access.OpenConnectToDevice());
    }
    EXPECT_TRUE(fresh.held().empty());
}

} // namespace
