#include "services/linux/kernel/ThreadedKernel.h"

#include <utility>

void ThreadedKernel::readWiphy(Read<WiphyFacts> done)
{
    m_kernel.call(
        [done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.readWiphy(done); });
}

void ThreadedKernel::readScan(Read<std::vector<ScanEntry>> done)
{
    m_kernel.call(
        [done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.readScan(done); });
}

void ThreadedKernel::readStations(const std::optional<MacAddress>& accessPoint, Read<std::vector<StationInfo>> done)
{
    m_kernel.call([accessPoint, done = m_kernel.fromMainThread(std::move(done))](
                      InterfaceKernel& kernel) { kernel.readStations(accessPoint, done); });
}

void ThreadedKernel::readSurvey(Read<std::vector<SurveyFacts>> done)
{
    m_kernel.call(
        [done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.readSurvey(done); });
}

void ThreadedKernel::readLink(Read<LinkMessage> done)
{
    m_kernel.call(
        [done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.readLink(done); });
}

void ThreadedKernel::readDuplicates(Read<std::uint64_t> done)
{
    m_kernel.call(
        [done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.readDuplicates(done); });
}

void ThreadedKernel::startScan(const StartScan& scan, Done done)
{
    m_kernel.call([scan, done = m_kernel.fromMainThread(std::move(done))](
                      InterfaceKernel& kernel) { kernel.startScan(scan, done); });
}

void ThreadedKernel::abortScan()
{
    m_kernel.call([](InterfaceKernel& kernel) { kernel.abortScan(); });
}

void ThreadedKernel::bringUp(Done done)
{
    m_kernel.call([done = m_kernel.fromMainThread(std::move(done))](InterfaceKernel& kernel) { kernel.bringUp(done); });
}
