#pragma once

#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "survey/connection/TaskQueue.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/PlantedBssidList.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingIORegistry.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/survey/InitialSurveyState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

// A request to the driver.
struct DriverRequest {
    std::uint32_t oid { 0 };
    Bytes input;

    bool operator==(const DriverRequest& other) const = default;
};

template <typename Record> Bytes recordBytes(const Record& record)
{
    Bytes bytes(sizeof(Record));
    std::memcpy(bytes.data(), &record, sizeof(Record));
    return bytes;
}

inline Bytes word(std::uint32_t value)
{
    return recordBytes(value);
}

inline Bytes joined(Bytes first, const Bytes& second)
{
    append(first, second);
    return first;
}

// An adapter with a recording registry, an empty queue, and the shared flags with a card present.
class SurveyFixture : public testing::Test {
protected:
    SurveyFixture()
    {
        G_bDeviceExist = 1;
        G_bCurSelItem = -1;
    }

    static void haveList(const std::vector<EntryBuilder>& entries) { plantBssidList(entries); }

    // The result of the next scan, in one chunk.
    void letScanFind(const std::vector<EntryBuilder>& entries)
    {
        registry.answer(OID_802_11_BSSID_LIST, bssidList(entries));
    }

    void letLinkBeUp(const MacAddress& bssid)
    {
        registry.answer(OID_GEN_MEDIA_CONNECT_STATUS, word(0));
        registry.answer(OID_802_11_BSSID, recordBytes(bssid));
    }

    void letLinkBeDown() { registry.answer(OID_GEN_MEDIA_CONNECT_STATUS, word(1)); }

    [[nodiscard]] std::vector<DriverRequest> requests() const
    {
        std::vector<DriverRequest> result;
        for (const RecordedRegistryCall& call : registry.calls) {
            if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
                result.push_back({ call.index, call.input });
        }
        return result;
    }

    InitialSurveyState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };
    TaskQueue queue;
};

// The requests of a scan: the scan, the list and the end of the list.
inline std::vector<std::uint32_t> scanOids()
{
    return { asSet(OID_802_11_BSSID_LIST_SCAN), OID_802_11_BSSID_LIST, VX_OID_802_11_BSSID_LIST_NEXT };
}
