#include "services/linux/kernel/ThreadedKernel.h"

#include "tests/services/linux/service/Fakes.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

constexpr int driverMs = 400;

// A kernel whose driver takes long for everything.
class SlowKernel final : public InterfaceKernel {
public:
    void readWiphy(Read<WiphyFacts> done) override { answer(done, fake.wiphy); }
    void readScan(Read<std::vector<ScanEntry>> done) override { answer(done, fake.networks); }
    void readStations(const std::optional<MacAddress>&, Read<std::vector<StationInfo>> done) override
    {
        answer(done, fake.stations);
    }
    void readSurvey(Read<std::vector<SurveyFacts>> done) override { answer(done, fake.surveys); }
    void readLink(Read<LinkMessage> done) override { answer(done, fake.link); }
    void readDuplicates(Read<std::uint64_t> done) override { answer(done, std::optional<std::uint64_t>(7)); }
    void startScan(const StartScan&, Done done) override { answer(done, EBUSY); }
    void abortScan() override { }
    void bringUp(Done done) override { answer(done, 0); }
    void set(const SetRtsThreshold&, Done done) override { answer(done, 1); }
    void set(const SetFragmentationThreshold&, Done done) override { answer(done, 2); }
    void set(const SetRates&, Done done) override { answer(done, 3); }
    void set(const SetPowerSave&, Done done) override { answer(done, 4); }
    void set(const SetTransmitPower&, Done done) override { answer(done, 5); }

private:
    template <typename Callback, typename Value> void answer(const Callback& done, const Value& value)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(driverMs));
        done(value);
    }

    FakeKernel fake;
};

template <typename Condition> bool waitFor(Condition condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 10'000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

std::unique_ptr<InterfaceKernel> makeSlow()
{
    return std::make_unique<SlowKernel>();
}

} // namespace

TEST(ThreadedKernel, NobodyWaitsForTheDriverAndAnswersComeInOrder)
{
    ThreadedKernel kernel(makeSlow);
    std::vector<int> answers;
    const auto store = [&answers, main = QThread::currentThread()](int error) {
        EXPECT_EQ(QThread::currentThread(), main);
        answers.push_back(error);
    };
    QElapsedTimer timer;
    timer.start();
    kernel.bringUp(store);
    kernel.startScan({}, store);
    kernel.set(SetPowerSave {}, store);
    kernel.readDuplicates([&store](std::optional<std::uint64_t> count) { store(static_cast<int>(count.value_or(0))); });
    QCoreApplication::processEvents();
    EXPECT_LT(timer.elapsed(), driverMs);
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(waitFor([&answers] { return answers.size() == 4; }));
    EXPECT_EQ(answers, (std::vector { 0, EBUSY, 4, 7 }));
}

TEST(ThreadedKernel, EndDoesNotWaitForTheDriverAndNothingIsCalledBack)
{
    bool isCalled = false;
    QElapsedTimer timer;
    timer.start();
    {
        ThreadedKernel kernel(makeSlow);
        for (int i = 0; i < 3; ++i)
            kernel.bringUp([&isCalled](int) { isCalled = true; });
    }
    EXPECT_LT(timer.elapsed(), WorkerThread::maxEndMs + driverMs);
    timer.start();
    (void)waitFor([&] { return timer.elapsed() > 4 * driverMs; });
    EXPECT_FALSE(isCalled);
}
