#include "services/simulator/service/FaultyReply.h"
#include "services/simulator/service/ListFaults.h"
#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

ServiceRequest structureCall(std::uint32_t selector, std::uint32_t capacity = 4)
{
    ServiceRequest request;
    request.kind = RequestKind::StructureCall;
    request.selector = selector;
    request.replyCapacity = capacity;
    return request;
}

ServiceRequest openCall()
{
    return {};
}

Fault faultOn(FaultKind kind, std::optional<std::uint32_t> oid = std::nullopt)
{
    Fault fault;
    fault.kind = kind;
    fault.oid = oid;
    return fault;
}

FaultyReply replyUnder(const Fault& fault, const Bytes& output = Bytes(4, std::byte { 7 }))
{
    return faultyReply(structureCall(OID_802_11_RSSI), { true, output }, { fault });
}

} // namespace

TEST(Faults, ApplyToTheirOid)
{
    Faults faults;
    faults.add(faultOn(FaultKind::Fail, OID_802_11_SSID));
    EXPECT_EQ(faults.take(structureCall(OID_802_11_SSID)).size(), 1U);
    EXPECT_EQ(faults.take(structureCall(OID_802_11_SSID | oidSetFlag)).size(), 1U);
    EXPECT_TRUE(faults.take(structureCall(OID_802_11_BSSID)).empty());
    EXPECT_TRUE(faults.take(openCall()).empty());
    faults.clear();
    EXPECT_TRUE(faults.take(structureCall(OID_802_11_SSID)).empty());
}

TEST(Faults, ApplyToQueriesOrSetsOnly)
{
    Faults faults;
    Fault fault = faultOn(FaultKind::Fail);
    fault.direction = FaultDirection::Set;
    faults.add(fault);
    EXPECT_TRUE(faults.take(structureCall(OID_802_11_SSID)).empty());
    EXPECT_EQ(faults.take(structureCall(OID_802_11_SSID | oidSetFlag)).size(), 1U);
    faults.clear();
    fault.direction = FaultDirection::Query;
    faults.add(fault);
    EXPECT_EQ(faults.take(structureCall(OID_802_11_SSID)).size(), 1U);
    EXPECT_TRUE(faults.take(structureCall(OID_802_11_SSID | oidSetFlag)).empty());
}

TEST(Faults, ExpireAfterTheirTimes)
{
    Faults faults;
    Fault fault = faultOn(FaultKind::Fail);
    fault.remainingTimes = 2;
    faults.add(fault);
    EXPECT_EQ(faults.take(structureCall(1)).size(), 1U);
    EXPECT_EQ(faults.take(structureCall(1)).size(), 1U);
    EXPECT_TRUE(faults.take(structureCall(1)).empty());
    EXPECT_TRUE(faults.all().empty());
}

TEST(Faults, ClientFaultsApplyToOpen)
{
    Faults faults;
    faults.add(faultOn(FaultKind::RefuseClients));
    EXPECT_EQ(faults.take(openCall()).size(), 1U);
    EXPECT_TRUE(faults.take(structureCall(1)).empty());
    faults.clear();
    faults.add(faultOn(FaultKind::HangAll));
    EXPECT_EQ(faults.take(openCall()).size(), 1U);
    EXPECT_EQ(faults.take(structureCall(1)).size(), 1U);
}

TEST(Faults, EveryKindHasAUniqueName)
{
    EXPECT_EQ(faultKinds().size(), static_cast<std::size_t>(FaultKind::ListEndless) + 1);
    for (const FaultKindRow& row : faultKinds()) {
        EXPECT_EQ(faultFromName(row.name), row.kind);
        EXPECT_EQ(nameOfFault(row.kind), row.name);
    }
    EXPECT_FALSE(faultFromName("nonsense"));
}

TEST(FaultyReply, IsTheAnswerIfNoFaultApplies)
{
    const FaultyReply reply = faultyReply(structureCall(1), { true, Bytes(3) }, {});
    EXPECT_EQ(reply.form, FaultyReply::Form::Reply);
    EXPECT_TRUE(reply.answer.accepted);
    EXPECT_EQ(reply.answer.output.size(), 3U);
    EXPECT_EQ(reply.delayMs, 0U);
}

TEST(FaultyReply, FailAndHangKeepTheRequestFromTheCard)
{
    EXPECT_TRUE(reachesCard({}));
    EXPECT_TRUE(reachesCard({ faultOn(FaultKind::Delay), faultOn(FaultKind::HangUp) }));
    EXPECT_FALSE(reachesCard({ faultOn(FaultKind::Fail) }));
    EXPECT_FALSE(reachesCard({ faultOn(FaultKind::Hang) }));
    EXPECT_FALSE(reachesCard({ faultOn(FaultKind::HangAll) }));
}

TEST(FaultyReply, AppliesEachFault)
{
    EXPECT_FALSE(replyUnder(faultOn(FaultKind::Fail)).answer.accepted);
    EXPECT_TRUE(replyUnder(faultOn(FaultKind::Fail)).answer.output.empty());
    EXPECT_EQ(replyUnder(faultOn(FaultKind::Hang)).form, FaultyReply::Form::Silence);
    EXPECT_EQ(replyUnder(faultOn(FaultKind::HangAll)).form, FaultyReply::Form::Silence);
    EXPECT_EQ(replyUnder(faultOn(FaultKind::HangUp)).form, FaultyReply::Form::HangUp);
    Fault late = faultOn(FaultKind::Delay);
    late.argument = 250;
    EXPECT_EQ(replyUnder(late).delayMs, 250U);
    Fault cut = faultOn(FaultKind::CutShort);
    cut.argument = 3;
    EXPECT_EQ(replyUnder(cut).answer.output.size(), 3U);
    EXPECT_EQ(replyUnder(cut, Bytes(2)).answer.output.size(), 2U);
}

TEST(FaultyReply, MalformedPacketsDisagreeWithTheirHeaders)
{
    EXPECT_EQ(replyUnder(faultOn(FaultKind::ShortHeader)).packet.size(), 4U);

    const FaultyReply lie = replyUnder(faultOn(FaultKind::SizeLie));
    EXPECT_EQ(lie.form, FaultyReply::Form::Packet);
    EXPECT_EQ(lie.packet.size(), 8U + 4U);
    EXPECT_EQ(recordAt<std::uint32_t>(lie.packet, 0), 0U);
    EXPECT_NE(recordAt<std::uint32_t>(lie.packet, 4), 4U);

    const FaultyReply over = replyUnder(faultOn(FaultKind::OverCapacity));
    EXPECT_GT(*recordAt<std::uint32_t>(over.packet, 4), 4U);
    EXPECT_EQ(*recordAt<std::uint32_t>(over.packet, 4), over.packet.size() - 8);
}

TEST(ListFaults, SpoilTheFirstEntryOrTheCount)
{
    const Bytes nothing = bytesOf(NDIS_802_11_BSSID_LIST { 0 });
    const auto entryOf
        = [&nothing](FaultKind kind) { return *recordAt<WLAN_BSSID_EX>(spoiledChunk(nothing, kind), 4); };
    EXPECT_EQ(valueOf(entryOf(FaultKind::ListZeroLength).Length), 0U);
    EXPECT_GT(valueOf(entryOf(FaultKind::ListHugeLength).Length), 0xFFFF0000U);
    EXPECT_EQ(recordAt<std::uint32_t>(spoiledChunk(nothing, FaultKind::ListLyingCount), 0), 1'000'000U);
    const WLAN_BSSID_EX pastEnd = entryOf(FaultKind::ListElementsPastEnd);
    EXPECT_GT(valueOf(pastEnd.IELength), valueOf(pastEnd.Length));
    EXPECT_EQ(recordAt<std::uint32_t>(spoiledChunk(nothing, FaultKind::ListEndless), 0), 1U);
}

TEST(ListFaults, OnlyAnEndlessListSuppressesTheEnd)
{
    const ServiceRequest next = structureCall(VX_OID_802_11_BSSID_LIST_NEXT, 4096);
    for (const FaultKind kind : { FaultKind::ListZeroLength, FaultKind::ListLyingCount, FaultKind::ListHugeLength,
             FaultKind::ListElementsPastEnd })
        EXPECT_TRUE(faultyReply(next, { true, {} }, { faultOn(kind) }).answer.output.empty());
    EXPECT_FALSE(faultyReply(next, { true, {} }, { faultOn(FaultKind::ListEndless) }).answer.output.empty());
}
