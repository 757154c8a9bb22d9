#pragma once

#include "services/host/ServiceHost.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

// Writes every request to a file, one JSON object a line, for tests that look at what the utility sends. The input
// bytes are written as they come, KEY MATERIAL INCLUDED: the file is made for its owner alone (0600), and nothing is
// recorded unless it was asked for.
class RequestRecorder {
public:
    // Starts a new recording in place of the file's contents. False, with errno set, when the file cannot be made.
    [[nodiscard]] bool start(const std::string& path);
    void stop();
    [[nodiscard]] bool isRecording() const { return m_file != nullptr; }
    [[nodiscard]] const std::string& path() const { return m_path; }

    // Does nothing while no recording runs.
    void record(const ServiceRequest& request, std::int64_t nowMs);

private:
    struct Close {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }
    };

    std::unique_ptr<std::FILE, Close> m_file;
    std::string m_path;
};

// The line of one request, without its end: {"time_ms":…,"kind":"structure","oid":"0x0D810102","name":
// "OID_802_11_SSID","set":true,"capacity":0,"input":"04000000…"}; open and scalar calls have a "selector" instead of
// the OID's three fields.
[[nodiscard]] std::string recordedLine(const ServiceRequest& request, std::int64_t nowMs);
