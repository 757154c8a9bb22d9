#pragma once

#include "crypto/Sha1Engine.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <span>
#include <string>
#include <vector>

using Digest = std::array<unsigned char, sha1DigestSize>;

inline void PrintTo(const Sha1Engine* engine, std::ostream* stream)
{
    *stream << engine->name;
}

// Runs each test with every engine that this processor supports.
class EngineTest : public testing::TestWithParam<const Sha1Engine*> {
private:
    ForcedSha1Engine m_forced { *GetParam() };
};

inline std::vector<const Sha1Engine*> availableEngines()
{
    std::vector<const Sha1Engine*> engines { &portableSha1Engine() };
    if (processorSha1Engine() != nullptr)
        engines.push_back(processorSha1Engine());
    return engines;
}

inline std::string engineName(const testing::TestParamInfo<const Sha1Engine*>& info)
{
    return info.param->name;
}

inline const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

inline unsigned char* bytesOf(std::string& text)
{
    return reinterpret_cast<unsigned char*>(text.data());
}

inline std::int32_t lengthOf(const std::string& text)
{
    return static_cast<std::int32_t>(text.size());
}

inline std::string hexOf(std::span<const unsigned char> bytes)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const unsigned char byte : bytes)
        text.append({ digits[byte / 16], digits[byte % 16] });
    return text;
}
