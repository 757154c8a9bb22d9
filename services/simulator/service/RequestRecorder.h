#pragma once

#include "services/host/ServiceHost.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

// Writes every request to a file, one JSON object per line, for tests that check what the utility sends. The input
// bytes are written unchanged, KEY MATERIAL INCLUDED: only the owner can read the file (mode 0600), and nothing is
// recorded unless recording was started.
class RequestRecorder {
public:
    // Starts a new recording and truncates the file. Does not follow a symbolic link. Fails with invalid_argument, or as
    // open() does, for anything but a regular file.
    [[nodiscard]] std::error_code start(const std::string& path);
    void stop();
    // Empty unless a recording runs.
    [[nodiscard]] const std::string& path() const { return m_path; }

    // No-op unless a recording runs.
    void record(const ServiceRequest& request, std::int64_t nowMs);

private:
    struct Close {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    std::string m_path;
};

// The line of one request, without its line feed: {"time_ms":…,"kind":"structure","oid":"0x0D810102","name":
// "OID_802_11_SSID","set":true,"capacity":0,"input":"04000000…"}; open and scalar calls have a "selector" instead of
// the three OID fields.
[[nodiscard]] std::string recordedLine(const ServiceRequest& request, std::int64_t nowMs);
