#include "driver/records/Oids.h"
#include "services/card/RecordBytes.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <optional>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int programTimeoutMs = 20'000;

// A user client on a plain socket, written from docs/driver-protocol.md.
class RawClient {
public:
    explicit RawClient(const QString& path)
        : m_socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        const QByteArray bytes = path.toLocal8Bit();
        if (static_cast<std::size_t>(bytes.size()) < sizeof(address.sun_path))
            std::copy(bytes.begin(), bytes.end(), address.sun_path);
        const timeval timeout { 2, 0 };
        (void)::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
        m_isConnected = ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    }
    ~RawClient() { (void)::close(m_socket); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    [[nodiscard]] bool isConnected() const { return m_isConnected; }
    [[nodiscard]] bool open() { return isSuccess(call(0, 0, {}, 0)); }

    // The reply packet; std::nullopt if none arrived.
    [[nodiscard]] std::optional<Bytes> call(
        std::uint32_t kind, std::uint32_t selector, const Bytes& input, std::uint32_t capacity)
    {
        Bytes packet = bytesOf(
            std::array<std::uint32_t, 4> { kind, selector, static_cast<std::uint32_t>(input.size()), capacity });
        packet.insert(packet.end(), input.begin(), input.end());
        if (::send(m_socket, packet.data(), packet.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(packet.size()))
            return std::nullopt;
        Bytes reply(70'000);
        const ssize_t size = ::recv(m_socket, reply.data(), reply.size(), 0);
        if (size <= 0)
            return std::nullopt;
        reply.resize(static_cast<std::size_t>(size));
        return reply;
    }

    [[nodiscard]] static bool isSuccess(const std::optional<Bytes>& reply)
    {
        return reply && reply->size() >= 8 && recordAt<std::uint32_t>(*reply) == 0U;
    }

private:
    int m_socket;
    bool m_isConnected { false };
};

class SimulatorProcessTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        start();
    }

    void TearDown() override
    {
        m_simulator.kill();
        (void)m_simulator.waitForFinished(programTimeoutMs);
    }

    void start()
    {
        m_simulator.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_simulator.start(QStringLiteral(PELLVANE_SIM_PROGRAM),
            { QStringLiteral("--root"), path("registry"), QStringLiteral("--control"), path("control/socket"),
                QStringLiteral("--record"), path("requests.jsonl"), QStringLiteral("--quiet") });
        ASSERT_TRUE(m_simulator.waitForStarted(programTimeoutMs));
        while (!m_simulator.canReadLine())
            ASSERT_TRUE(m_simulator.waitForReadyRead(programTimeoutMs));
        ASSERT_EQ(m_simulator.readLine(), "ready\n");
    }

    [[nodiscard]] QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    [[nodiscard]] QString cardSocket() const { return path("registry/Pellvane/simulated"); }

    // Runs pellvane-simctl; returns its exit code and puts its output into m_output.
    int simctl(const QStringList& words)
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QStringLiteral(PELLVANE_SIMCTL_PROGRAM),
            QStringList { QStringLiteral("--control"), path("control/socket") } + words);
        if (!program.waitForFinished(programTimeoutMs))
            return -1;
        m_output = program.readAll();
        return program.exitCode();
    }

    // A query on a new connection, followed by the scalar call.
    [[nodiscard]] std::optional<Bytes> query(std::uint32_t oid, std::uint32_t length)
    {
        RawClient client(cardSocket());
        if (!client.open())
            return std::nullopt;
        auto reply = client.call(1, oid, Bytes(length), length);
        EXPECT_TRUE(!reply || RawClient::isSuccess(client.call(2, 1, {}, 0)));
        return reply;
    }

    QTemporaryDir m_folder;
    QProcess m_simulator;
    QByteArray m_output;
};

} // namespace

TEST_F(SimulatorProcessTest, AnswersRequestsAndCommands)
{
    const auto eeprom = query(VX_OID_802_11_EEPROM_VERSION, 4);
    ASSERT_TRUE(RawClient::isSuccess(eeprom));
    EXPECT_EQ(eeprom->size(), 12U);

    EXPECT_EQ(simctl({ QStringLiteral("event"), QStringLiteral("raise") }), 0) << m_output.toStdString();
    const auto event = query(VX_OID_802_11_EVENT_FLAG, 4);
    ASSERT_TRUE(RawClient::isSuccess(event));
    EXPECT_EQ(recordAt<std::uint32_t>(*event, 8), 1U);

    EXPECT_EQ(simctl({ QStringLiteral("status") }), 0);
    const QJsonObject status = QJsonDocument::fromJson(m_output).object();
    EXPECT_TRUE(status.value(QStringLiteral("inserted")).toBool());
    EXPECT_EQ(status.value(QStringLiteral("socket")).toString(), cardSocket());

    EXPECT_EQ(simctl({ QStringLiteral("move"), QStringLiteral("no such network"), QStringLiteral("-70") }), 1);
    EXPECT_EQ(simctl({ QStringLiteral("dance") }), 2);
}

TEST_F(SimulatorProcessTest, EjectsAndInsertsTheCard)
{
    EXPECT_EQ(simctl({ QStringLiteral("eject") }), 0);
    EXPECT_FALSE(RawClient(cardSocket()).isConnected());
    EXPECT_FALSE(QFileInfo::exists(cardSocket()));
    EXPECT_EQ(simctl({ QStringLiteral("insert") }), 0);
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_MEDIA_CONNECT_STATUS, 4)));
}

TEST_F(SimulatorProcessTest, InjectsFaults)
{
    const auto withFault = [this](const QStringList& words) {
        EXPECT_EQ(simctl({ QStringLiteral("clear-faults") }), 0);
        EXPECT_EQ(simctl(QStringList { QStringLiteral("fault") } + words), 0) << m_output.toStdString();
    };
    withFault({ QStringLiteral("refuse") });
    EXPECT_FALSE(query(OID_GEN_RCV_OK, 4));
    withFault({ QStringLiteral("fail"), QStringLiteral("--oid"), QStringLiteral("OID_GEN_RCV_OK") });
    const auto failed = query(OID_GEN_RCV_OK, 4);
    ASSERT_TRUE(failed);
    EXPECT_FALSE(RawClient::isSuccess(failed));
    EXPECT_EQ(failed->size(), 8U);
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_NO_BUFFER, 4)));
    withFault({ QStringLiteral("hang-up") });
    EXPECT_FALSE(query(OID_GEN_RCV_OK, 4));
    withFault({ QStringLiteral("short-header") });
    EXPECT_EQ(query(OID_GEN_RCV_OK, 4)->size(), 4U);
    withFault({ QStringLiteral("over-capacity") });
    EXPECT_EQ(query(OID_GEN_RCV_OK, 4)->size(), 8U + 68U);
    withFault({ QStringLiteral("cut"), QStringLiteral("--bytes"), QStringLiteral("1") });
    EXPECT_EQ(query(OID_GEN_RCV_OK, 4)->size(), 9U);
    withFault({ QStringLiteral("delay"), QStringLiteral("--ms"), QStringLiteral("300") });
    const auto before = std::chrono::steady_clock::now();
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_OK, 4)));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(300));
    withFault({ QStringLiteral("hang"), QStringLiteral("--times"), QStringLiteral("1") });
    EXPECT_FALSE(query(OID_GEN_RCV_OK, 4)); // after the receive timeout of two seconds
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_OK, 4)));
}

TEST_F(SimulatorProcessTest, DropsConnections)
{
    RawClient client(cardSocket());
    ASSERT_TRUE(client.open());
    EXPECT_EQ(simctl({ QStringLiteral("drop") }), 0);
    EXPECT_FALSE(client.call(1, OID_GEN_RCV_OK, Bytes(4), 4));
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_OK, 4)));
}

TEST_F(SimulatorProcessTest, RecordsRequests)
{
    ASSERT_TRUE(RawClient::isSuccess(query(OID_802_3_CURRENT_ADDRESS, 6)));
    QFile file(path("requests.jsonl"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    EXPECT_FALSE(file.permissions() & others);
    QStringList kinds;
    while (!file.atEnd())
        kinds.append(QJsonDocument::fromJson(file.readLine()).object().value(QStringLiteral("kind")).toString());
    EXPECT_EQ(kinds, (QStringList { QStringLiteral("open"), QStringLiteral("structure"), QStringLiteral("scalar") }));
}

TEST_F(SimulatorProcessTest, DoesNotStartTwiceUnderOneName)
{
    QProcess second;
    second.start(QStringLiteral(PELLVANE_SIM_PROGRAM),
        { QStringLiteral("--root"), path("registry"), QStringLiteral("--control"), path("control/other"),
            QStringLiteral("--quiet") });
    ASSERT_TRUE(second.waitForFinished(programTimeoutMs));
    EXPECT_EQ(second.exitCode(), 1);
    second.start(QStringLiteral(PELLVANE_SIM_PROGRAM),
        { QStringLiteral("--root"), path("another"), QStringLiteral("--control"), path("control/socket"),
            QStringLiteral("--quiet") });
    ASSERT_TRUE(second.waitForFinished(programTimeoutMs));
    EXPECT_EQ(second.exitCode(), 1);
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_OK, 4)));
}

TEST_F(SimulatorProcessTest, CleansUpOnSigterm)
{
    ASSERT_EQ(::kill(static_cast<pid_t>(m_simulator.processId()), SIGTERM), 0);
    ASSERT_TRUE(m_simulator.waitForFinished(programTimeoutMs));
    EXPECT_EQ(m_simulator.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_simulator.exitCode(), 0);
    EXPECT_FALSE(QFileInfo::exists(cardSocket()));
    EXPECT_FALSE(QFileInfo::exists(path("control/socket")));
    EXPECT_EQ(simctl({ QStringLiteral("status") }), 3);
}

TEST_F(SimulatorProcessTest, ReplacesADeadSimulator)
{
    m_simulator.kill();
    ASSERT_TRUE(m_simulator.waitForFinished(programTimeoutMs));
    EXPECT_TRUE(QFileInfo::exists(cardSocket()));
    start();
    EXPECT_TRUE(RawClient::isSuccess(query(OID_GEN_RCV_OK, 4)));
}
