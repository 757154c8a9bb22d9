#include "tests/support/RecordingIORegistry.h"

#include "driver/records/Oids.h"

#include <gtest/gtest.h>

namespace {

using Bytes = std::vector<std::byte>;

const Bytes one { std::byte { 1 } };
const Bytes three { std::byte { 1 }, std::byte { 2 }, std::byte { 3 } };

// A complete request: search, open, call, completion, close.
Bytes request(RecordingIORegistry& registry, std::uint32_t oid, std::uint32_t capacity = 8)
{
    mach_port_t port = 0;
    io_object_t iterator = 0;
    io_connect_t connection = 0;
    (void)registry.IOMasterPort(port);
    (void)registry.IOServiceGetMatchingServices(port, registry.IOServiceMatching("Pellvane"), iterator);
    const io_object_t service = registry.IOIteratorNext(iterator);
    Bytes output(8);
    if (registry.IOServiceOpen(service, 0, connection) != KERN_SUCCESS
        || registry.IOConnectMethodStructureIStructureO(connection, oid, one, capacity, output) != KERN_SUCCESS)
        output.clear();
    else
        output.resize(capacity);
    (void)registry.IOConnectMethodScalarIScalarO(connection, 1);
    registry.IOObjectRelease(iterator);
    registry.mach_port_deallocate(port);
    registry.IOServiceClose(connection);
    registry.IOObjectRelease(service);
    return output;
}

TEST(RecordingIORegistry, RecordsCallsWithArguments)
{
    RecordingIORegistry registry;
    registry.answer(OID_802_11_BSSID, three);
    EXPECT_EQ(request(registry, OID_802_11_BSSID), three);
    EXPECT_EQ(registry.texts(),
        (std::vector<std::string> { "IOMasterPort() = 1", "IOServiceMatching(Pellvane) = 2",
            "IOServiceGetMatchingServices(1, 2) = 3", "IOIteratorNext(3) = 4", "IOServiceOpen(4, 0) = 5",
            "IOConnectMethodStructureIStructureO(5, 0x0D010101, [01], capacity 8) = 3",
            "IOConnectMethodScalarIScalarO(5, 1)", "IOObjectRelease(3)", "mach_port_deallocate(1)", "IOServiceClose(5)",
            "IOObjectRelease(4)" }));
    EXPECT_TRUE(registry.held().empty());
    EXPECT_EQ(registry.oids(), std::vector<std::uint32_t> { OID_802_11_BSSID });
    EXPECT_EQ(registry.inputsOf(OID_802_11_BSSID), std::vector<Bytes> { one });
    EXPECT_EQ(registry.calls[4],
        (RecordedRegistryCall { .call = RegistryCall::IOServiceOpen, .handle = 4, .index = 0, .result = 5 }));
}

TEST(RecordingIORegistry, AnswersAsScripted)
{
    RecordingIORegistry registry;
    registry.answer(1, three);
    registry.answerOnce(1, { .bytes = one });
    registry.answerOnce(1, { .succeeds = false });
    EXPECT_EQ(request(registry, 1), one);
    EXPECT_EQ(request(registry, 1), Bytes());
    EXPECT_EQ(request(registry, 1), three);
    EXPECT_EQ(request(registry, 1, 2), Bytes(three.begin(), three.begin() + 2));
    registry.answerWith(2, [](std::span<const std::byte> input) {
        return RegistryAnswer { .bytes = { input.begin(), input.end() } };
    });
    EXPECT_EQ(request(registry, 2), one);
    registry.fail(2);
    EXPECT_EQ(request(registry, 2), Bytes());
    EXPECT_TRUE(registry.calls.back().call == RegistryCall::IOObjectRelease && registry.held().empty());
}

TEST(RecordingIORegistry, FailsAtTheChosenCall)
{
    RecordingIORegistry registry;
    registry.answer(1, three);
    registry.failAt(RegistryCall::IOServiceOpen, 2);
    EXPECT_EQ(request(registry, 1), three);
    EXPECT_EQ(request(registry, 1), Bytes());
    EXPECT_EQ(request(registry, 1), three);
    registry.forgetCalls();
    registry.failAtCall(6);
    EXPECT_EQ(request(registry, 1), Bytes());
    EXPECT_TRUE(registry.calls[5].failed);
    EXPECT_EQ(registry.calls[5].call, RegistryCall::IOConnectMethodStructureIStructureO);
}

TEST(RecordingIORegistry, ReportsHandlesThatAreStillHeld)
{
    RecordingIORegistry registry;
    registry.serviceCount = 2;
    mach_port_t port = 0;
    io_object_t iterator = 0;
    ASSERT_EQ(registry.IOMasterPort(port), KERN_SUCCESS);
    ASSERT_EQ(
        registry.IOServiceGetMatchingServices(port, registry.IOServiceMatching("Pellvane"), iterator), KERN_SUCCESS);
    const io_object_t first = registry.IOIteratorNext(iterator);
    const io_object_t second = registry.IOIteratorNext(iterator);
    EXPECT_EQ(registry.IOIteratorNext(iterator), 0u);
    EXPECT_EQ(registry.held(), (std::vector<std::uint32_t> { port, iterator, first, second }));
    registry.IOObjectRelease(second);
    registry.IOObjectRelease(second);
    registry.IOObjectRelease(iterator);
    registry.mach_port_deallocate(port);
    EXPECT_EQ(registry.held(), std::vector<std::uint32_t> { first });
    io_connect_t connection = 0;
    EXPECT_NE(registry.IOServiceOpen(second, 0, connection), KERN_SUCCESS);
}

} // namespace
