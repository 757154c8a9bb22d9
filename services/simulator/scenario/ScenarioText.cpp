#include "services/simulator/scenario/ScenarioText.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr std::ptrdiff_t maxDotsPerLine = 100;

bool isComment(std::string_view line)
{
    const std::size_t start = line.find_first_not_of(" \t");
    return start != std::string_view::npos && line[start] == '#';
}

} // namespace

std::optional<ScenarioError> unfitForParsing(std::string_view text)
{
    if (text.size() > maxScenarioBytes)
        return ScenarioError { "larger than 1 MiB", 0, 0 };
    for (std::uint32_t number = 1; !text.empty(); ++number) {
        const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, length);
        if (!isComment(line) && std::count(line.begin(), line.end(), '.') > maxDotsPerLine)
            return ScenarioError { "more than 100 dots in a line", number, 1 };
        text.remove_prefix(length);
    }
    return std::nullopt;
}
