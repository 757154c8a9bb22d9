#include "services/simulator/service/RequestRecorder.h"

#include "driver/records/Oids.h"
#include "posix/FileDescriptor.h"
#include "posix/SystemError.h"
#include "services/simulator/service/OidCatalogue.h"

#include <array>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

std::string hexDigits(const std::vector<std::byte>& bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const std::byte byte : bytes) {
        text.push_back(digits[std::to_integer<std::size_t>(byte >> 4)]);
        text.push_back(digits[std::to_integer<std::size_t>(byte & std::byte { 0x0F })]);
    }
    return text;
}

std::string hexNumber(std::uint32_t value)
{
    std::array<char, 11> text {};
    (void)std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(value));
    return text.data();
}

std::string calledFields(const ServiceRequest& request)
{
    switch (request.kind) {
    case RequestKind::Open:
        return "\"kind\":\"open\",\"selector\":" + std::to_string(request.selector);
    case RequestKind::ScalarCall:
        return "\"kind\":\"scalar\",\"selector\":" + std::to_string(request.selector);
    case RequestKind::StructureCall:
        break;
    }
    const bool isSet = (request.selector & oidSetFlag) != 0;
    return "\"kind\":\"structure\",\"oid\":\"" + hexNumber(request.selector) + "\",\"name\":\""
        + std::string(nameOfOid(request.selector)) + "\",\"set\":" + (isSet ? "true" : "false");
}

} // namespace

std::string recordedLine(const ServiceRequest& request, std::int64_t nowMs)
{
    return "{\"time_ms\":" + std::to_string(nowMs) + ',' + calledFields(request)
        + ",\"capacity\":" + std::to_string(request.replyCapacity) + ",\"input\":\"" + hexDigits(request.input) + "\"}";
}

std::error_code RequestRecorder::start(const std::string& path)
{
    stop();
    // Without O_NONBLOCK, opening a FIFO would wait for a reader.
    FileDescriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    struct stat status { };
    if (!file || ::fstat(file.get(), &status) != 0)
        return lastSystemError();
    if (!S_ISREG(status.st_mode))
        return std::make_error_code(std::errc::invalid_argument);
    // An existing file would keep its mode.
    if (::fchmod(file.get(), 0600) != 0)
        return lastSystemError();
    m_file.reset(::fdopen(file.get(), "w"));
    if (!m_file)
        return lastSystemError();
    (void)file.release(); // the stream closes it now
    m_path = path;
    return {};
}

void RequestRecorder::stop()
{
    m_file.reset();
    m_path.clear();
}

void RequestRecorder::record(const ServiceRequest& request, std::int64_t nowMs)
{
    if (!m_file)
        return;
    const std::string line = recordedLine(request, nowMs) + '\n';
    (void)std::fwrite(line.data(), 1, line.size(), m_file.get());
    // A reader that polls the file must see whole lines.
    (void)std::fflush(m_file.get());
}
