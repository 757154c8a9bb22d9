#include "driver/records/Oids.h"
#include "tests/support/application/UtilityRun.h"

#include <QLabel>
#include <gtest/gtest.h>

#include <array>
#include <chrono>

// A few cells of the fault matrix over the real socket, with a short limit for a request.

namespace {

constexpr std::chrono::milliseconds requestLimit { 400 };

class FaultsOverSocket : public testing::TestWithParam<FaultKind>, protected SimulatedMachine, protected UtilityRun {
protected:
    FaultsOverSocket()
        : UtilityRun(static_cast<SimulatedMachine&>(*this), requestLimit)
    {
        tick(2);
    }

    void inject(std::uint32_t oid, std::optional<std::uint32_t> times)
    {
        const Fault fault { .kind = GetParam(),
            .oid = targetOfFault(GetParam()) == FaultTarget::Client ? std::nullopt : std::optional(oid),
            .argument = 1,
            .remainingTimes = times };
        simulator.run([&] { simulator.service().faults().add(fault); });
    }
    // Ends the connections too: a probe whose open was swallowed would be repeated only after 10 s.
    void endFaults()
    {
        simulator.run([this] {
            simulator.service().faults().clear();
            simulator.service().dropConnections();
        });
    }

    [[nodiscard]] QString status() { return application.window().findChild<QLabel*>(u"Status"_qs)->text(); }

    // The service is used again once the probe of it has been answered.
    void expectRightAgain()
    {
        for (int ticks = 0; status() != u"Disconnected"_qs && ticks < maxTicksToRecover; ++ticks) {
            QTest::qWait(1);
            tick();
        }
        EXPECT_EQ(status(), u"Disconnected"_qs);
        EXPECT_FALSE(linkIsUp());
        EXPECT_EQ(G_bDeviceExist, 1);
    }

    static constexpr int maxTicksToRecover = 100;
};

TEST_P(FaultsOverSocket, BlockForOneLimitAtMostAndEnd)
{
    for (const std::uint32_t oid : { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_STA_CONFIG }) {
        for (const std::optional<std::uint32_t> times : { std::optional(1U), std::optional<std::uint32_t>() }) {
            inject(oid, times);
            const auto begin = std::chrono::steady_clock::now();
            tick();
            // Every request of the tick would take the limit if a hung service were asked again and again.
            EXPECT_LT(std::chrono::steady_clock::now() - begin, 5 * requestLimit);
            endFaults();
            expectRightAgain();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, FaultsOverSocket,
    testing::Values(FaultKind::RefuseClients, FaultKind::HangAll, FaultKind::Fail, FaultKind::Delay, FaultKind::Hang,
        FaultKind::HangUp, FaultKind::CutShort, FaultKind::ShortHeader, FaultKind::SizeLie, FaultKind::OverCapacity),
    [](const testing::TestParamInfo<FaultKind>& info) {
        std::string name(nameOfFault(info.param));
        std::erase(name, '-');
        return name;
    });

} // namespace
