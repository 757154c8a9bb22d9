#include "services/card/RequestRecorder.h"

#include "driver/records/Oids.h"
#include "services/card/OidCatalogue.h"

#include <array>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string hexadecimal(const std::vector<std::byte>& bytes)
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

std::string eightDigits(std::uint32_t value)
{
    std::array<char, 11> text {};
    (void)std::snprintf(text.data(), text.size(), "0x%08X", static_cast<unsigned>(value));
    return text.data();
}

std::string whatIsCalled(const ServiceRequest& request)
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
    return "\"kind\":\"structure\",\"oid\":\"" + eightDigits(request.selector) + "\",\"name\":\""
        + std::string(nameOfOid(request.selector)) + "\",\"set\":" + (isSet ? "true" : "false");
}

} // namespace

std::string recordedLine(const ServiceRequest& request, std::int64_t nowMs)
{
    return "{\"time_ms\":" + std::to_string(nowMs) + ',' + whatIsCalled(request) + ",\"capacity\":"
        + std::to_string(request.replyCapacity) + ",\"input\":\"" + hexadecimal(request.input) + "\"}";
}

bool RequestRecorder::start(const std::string& path)
{
    stop();
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        return false;
    // A file that was there before keeps its mode otherwise.
    if (::fchmod(descriptor, 0600) != 0) {
        (void)::close(descriptor);
        return false;
    }
    m_file.reset(::fdopen(descriptor, "w"));
    if (!m_file) {
        (void)::close(descriptor);
        return false;
    }
    m_path = path;
    return true;
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
    // Whoever waits for the next line reads whole lines.
    (void)std::fflush(m_file.get());
}
