#include "services/simulator/service/RequestRecorder.h"

#include "driver/records/Oids.h"
#include "posix/FileDescriptor.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

ServiceRequest setSsid()
{
    ServiceRequest request;
    request.kind = RequestKind::StructureCall;
    request.selector = OID_802_11_SSID | oidSetFlag;
    request.replyCapacity = 7;
    request.input = { std::byte { 0x04 }, std::byte { 0xAF } };
    return request;
}

std::string contents(const std::string& path)
{
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

TEST(RequestRecorder, WritesOneJsonObjectPerRequest)
{
    EXPECT_EQ(recordedLine(setSsid(), 1234),
        R"({"time_ms":1234,"kind":"structure","oid":"0x0D810102","name":"OID_802_11_SSID","set":true,)"
        R"("capacity":7,"input":"04AF"})");
    EXPECT_EQ(
        recordedLine(ServiceRequest {}, 0), R"({"time_ms":0,"kind":"open","selector":0,"capacity":0,"input":""})");
    ServiceRequest scalar;
    scalar.kind = RequestKind::ScalarCall;
    scalar.selector = 1;
    EXPECT_EQ(recordedLine(scalar, 5), R"({"time_ms":5,"kind":"scalar","selector":1,"capacity":0,"input":""})");
}

TEST(RequestRecorder, RecordsBetweenStartAndStopAndStartsAnew)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath(QStringLiteral("requests.jsonl")).toStdString();
    RequestRecorder recorder;
    recorder.record(setSsid(), 1);
    ASSERT_EQ(recorder.start(path), std::error_code());
    EXPECT_EQ(recorder.path(), path);
    recorder.record(setSsid(), 2);
    EXPECT_EQ(contents(path), recordedLine(setSsid(), 2) + '\n'); // whole lines, without delay
    recorder.stop();
    recorder.record(setSsid(), 3);
    EXPECT_EQ(contents(path), recordedLine(setSsid(), 2) + '\n');
    ASSERT_EQ(recorder.start(path), std::error_code());
    EXPECT_EQ(contents(path), "");
}

TEST(RequestRecorder, MakesAnExistingFilePrivate)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath(QStringLiteral("requests.jsonl")).toStdString();
    std::ofstream(path) << "old";
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    RequestRecorder recorder;
    ASSERT_EQ(recorder.start(path), std::error_code());
    struct stat status { };
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(RequestRecorder, RejectsSymbolicLinksAndReportsErrors)
{
    const QTemporaryDir folder;
    const std::string target = folder.filePath(QStringLiteral("target")).toStdString();
    const std::string link = folder.filePath(QStringLiteral("link")).toStdString();
    ASSERT_EQ(::symlink(target.c_str(), link.c_str()), 0);
    RequestRecorder recorder;
    EXPECT_EQ(recorder.start(link), std::errc::too_many_symbolic_link_levels);
    EXPECT_TRUE(recorder.path().empty());
    EXPECT_EQ(recorder.start(folder.filePath(QStringLiteral("no/such/folder")).toStdString()),
        std::errc::no_such_file_or_directory);
}

// Opening a FIFO for writing waits for a reader.
TEST(RequestRecorder, RejectsFifosWithoutWaiting)
{
    const QTemporaryDir folder;
    const std::string fifo = folder.filePath(QStringLiteral("fifo")).toStdString();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    RequestRecorder recorder;
    EXPECT_EQ(recorder.start(fifo), std::errc::no_such_device_or_address);
    const FileDescriptor reader(::open(fifo.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_EQ(recorder.start(fifo), std::errc::invalid_argument);
    EXPECT_TRUE(recorder.path().empty());
}
