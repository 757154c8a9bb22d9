#pragma once

#include "tests/support/RecordingIORegistry.h"

#include <cstring>
#include <ostream>
#include <vector>

// What the driver was asked, one request each.
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

// A query sends its cleared record and leaves room for all of it.
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

// A set expects no reply.
template <typename Record> RecordedRequest set(std::uint32_t oid, const Record& record)
{
    return { oid, bytesOfRecord(record), 0 };
}
