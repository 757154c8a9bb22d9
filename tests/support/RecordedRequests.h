#pragma once

#include "driver/records/Oids.h"
#include "tests/support/RecordingIORegistry.h"

#include <cstring>
#include <ostream>
#include <utility>
#include <vector>

// One request that the driver received.
struct RecordedRequest {
    std::uint32_t oid { 0 }; // as sent, set flag included
    std::vector<std::byte> input;
    std::uint32_t capacity { 0 }; // bytes of reply that the request leaves room for

    bool operator==(const RecordedRequest&) const = default;
};

inline void PrintTo(const RecordedRequest& request, std::ostream* stream)
{
    RecordedRegistryCall call { .call = RegistryCall::IOConnectMethodStructureIStructureO, .index = request.oid };
    call.input = request.input;
    call.capacity = request.capacity;
    *stream << readableText(call);
}

inline std::vector<RecordedRequest> recordedRequests(const RecordingIORegistry& registry)
{
    std::vector<RecordedRequest> requests;
    for (const RecordedRegistryCall& call : registry.calls) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            requests.push_back({ call.index, call.input, call.capacity });
    }
    return requests;
}

// The number that a set request of this OID carries.
constexpr std::uint32_t asSet(std::uint32_t oid)
{
    return oid | oidSetFlag;
}

// A query sends a cleared record and leaves room for a reply of the same length.
inline RecordedRequest query(std::uint32_t oid, std::uint32_t length)
{
    return { oid, std::vector<std::byte>(length), length };
}

template <typename Record> std::vector<std::byte> bytesOfRecord(const Record& record)
{
    std::vector<std::byte> bytes(sizeof(Record));
    std::memcpy(bytes.data(), &record, sizeof(Record));
    return bytes;
}

// A set of the OID, named without its set flag; it leaves no room for a reply.
inline RecordedRequest set(std::uint32_t oid, std::vector<std::byte> input)
{
    return { asSet(oid), std::move(input), 0 };
}

template <typename Record> RecordedRequest set(std::uint32_t oid, const Record& record)
{
    return set(oid, bytesOfRecord(record));
}
