#include "tests/services/hostile/ServiceUnderAttack.h"

#include "services/host/ServiceHost.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>

#include <malloc.h>
#include <unistd.h>
#ifdef __SANITIZE_ADDRESS__
// From sanitizer/allocator_interface.h, which not every compiler installs. NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

constexpr int programTimeoutMs = 20'000;

std::size_t descriptorsOf(const std::string& process)
{
    const std::filesystem::directory_iterator descriptors("/proc/" + process + "/fd");
    return static_cast<std::size_t>(std::distance(descriptors, std::filesystem::directory_iterator()));
}

std::size_t allocatedBytes()
{
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    return ::mallinfo2().uordblks;
#endif
}

class HostInThisProcess final : public ServiceUnderAttack {
public:
    HostInThisProcess()
    {
        EXPECT_EQ(m_host.publish(m_folder.path().toStdString(), "Pellvane", "card0"), std::error_code());
    }

    [[nodiscard]] std::string socketPath() const override { return m_folder.path().toStdString() + "/Pellvane/card0"; }
    [[nodiscard]] std::size_t openDescriptors() const override { return descriptorsOf("self"); }
    [[nodiscard]] std::size_t memoryBytes() const override { return allocatedBytes(); }
    [[nodiscard]] std::size_t memoryTolerance() const override { return std::size_t { 128 } << 10; }

private:
    QTemporaryDir m_folder;
    ServiceHost m_host { [](const ServiceRequest& request, ServiceReply reply) {
        reply.send(0, std::vector<std::byte>(request.replyCapacity));
    } };
};

class SimulatorProcess final : public ServiceUnderAttack {
    Q_DISABLE_COPY_MOVE(SimulatorProcess)

public:
    SimulatorProcess()
    {
        m_program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_program.start(QStringLiteral(PELLVANE_SIM_PROGRAM),
            { QStringLiteral("--root"), m_folder.filePath(QStringLiteral("registry")), QStringLiteral("--control"),
                QString::fromStdString(controlPath()), QStringLiteral("--quiet") });
        EXPECT_TRUE(m_program.waitForReadyRead(programTimeoutMs));
        EXPECT_EQ(m_program.readLine(), "ready\n");
    }
    ~SimulatorProcess() override
    {
        EXPECT_EQ(m_program.state(), QProcess::Running) << "the simulator has ended";
        m_program.terminate();
        EXPECT_TRUE(m_program.waitForFinished(programTimeoutMs));
        EXPECT_EQ(m_program.exitCode(), 0); // also that of the sanitizers
    }

    [[nodiscard]] std::string socketPath() const override
    {
        return m_folder.filePath(QStringLiteral("registry/Pellvane/simulated")).toStdString();
    }
    [[nodiscard]] std::string controlPath() const override
    {
        return m_folder.filePath(QStringLiteral("control/socket")).toStdString();
    }
    [[nodiscard]] std::size_t openDescriptors() const override
    {
        return descriptorsOf(std::to_string(m_program.processId()));
    }
    [[nodiscard]] std::size_t memoryBytes() const override
    {
        QFile file(QStringLiteral("/proc/%1/statm").arg(m_program.processId()));
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        return file.readAll().split(' ').value(1).toULong() * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    }
    // The address sanitizer keeps freed memory resident.
#ifdef __SANITIZE_ADDRESS__
    [[nodiscard]] std::size_t memoryTolerance() const override
    {
        return std::size_t { 400 } << 20;
    }
#else
    [[nodiscard]] std::size_t memoryTolerance() const override
    {
        return std::size_t { 16 } << 20;
    }
#endif

private:
    QTemporaryDir m_folder;
    QProcess m_program;
};

} // namespace

std::unique_ptr<ServiceUnderAttack> hostInThisProcess()
{
    return std::make_unique<HostInThisProcess>();
}

std::unique_ptr<ServiceUnderAttack> simulatorProcess()
{
    return std::make_unique<SimulatorProcess>();
}
