#pragma once

#include "services/simulator/Scenario.h"
#include "services/simulator/ScenarioValues.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The library as installed throws; compiled from its headers it reports errors as values. A scenario is three deep.
// It asserts, or with NDEBUG assumes, that a key follows a bracket, which is for the author of the file to decide; the
// code behind the assertion reports the error as it should.
#undef NDEBUG
#undef TOML_HEADER_ONLY
#undef TOML_SHARED_LIB
#define TOML_ASSERT(condition) static_assert(true)
#define TOML_HEADER_ONLY 1
#define TOML_EXCEPTIONS 0
#define TOML_MAX_NESTED_VALUES 16
#include <toml++/toml.h>

// For Scenario.cpp alone, so that the library is compiled once.

inline ScenarioError errorAt(const toml::source_position& place, std::string text)
{
    return { std::move(text), place.line, place.column };
}

inline std::string joined(std::span<const std::string_view> words)
{
    std::string list;
    for (const std::string_view word : words)
        list.append(list.empty() ? "" : ", ").append(word);
    return list;
}

// Reads the values of a table and remembers the first thing wrong. What is wrong leaves its value as it was.
class TableReader {
public:
    TableReader(const toml::table& table, std::string_view name, std::optional<ScenarioError>& error)
        : m_table(table)
        , m_name(name)
        , m_error(error)
    {
    }

    [[nodiscard]] bool has(std::string_view key) const { return m_table.contains(key); }

    // At the value of the key, or at the table where it has none.
    void complain(std::string_view key, const std::string& text)
    {
        const toml::node* node = m_table.get(key);
        complainAt((node ? node->source() : m_table.source()).begin, std::string(key) + ": " + text);
    }

    void expectKeys(std::span<const std::string_view> known)
    {
        for (const auto& [key, node] : m_table) {
            if (std::find(known.begin(), known.end(), key.str()) == known.end())
                complainAt(
                    key.source().begin, std::string(key.str()) + ": no such key; " + m_name + " has " + joined(known));
        }
    }

    void readFlag(std::string_view key, bool& value)
    {
        const toml::node* node = m_table.get(key);
        if (!node)
            return;
        if (const auto* flag = node->as_boolean())
            value = flag->get();
        else
            complain(key, "expected true or false");
    }

    // Nothing when there is no such key, or no whole number.
    std::optional<std::int64_t> wholeNumber(std::string_view key)
    {
        const toml::node* node = m_table.get(key);
        if (!node)
            return std::nullopt;
        if (const auto* number = node->as_integer())
            return number->get();
        complain(key, "expected a whole number");
        return std::nullopt;
    }

    template <typename Integer>
    void readNumber(std::string_view key, std::int64_t least, std::int64_t most, Integer& value)
    {
        const auto number = wholeNumber(key);
        if (!number)
            return;
        if (*number >= least && *number <= most)
            value = static_cast<Integer>(*number);
        else
            complain(key,
                std::to_string(*number) + " is out of range; allowed are " + std::to_string(least) + " to "
                    + std::to_string(most));
    }

    std::optional<std::string> text(std::string_view key)
    {
        const toml::node* node = m_table.get(key);
        if (!node)
            return std::nullopt;
        if (const auto* text = node->as_string())
            return text->get();
        complain(key, "expected a text in quotation marks");
        return std::nullopt;
    }

    // Bytes written as hexadecimal digits.
    std::optional<std::string> hexBytes(std::string_view key)
    {
        const auto digits = text(key);
        if (!digits)
            return std::nullopt;
        auto bytes = bytesOfHex(*digits);
        if (!bytes)
            complain(key, "expected an even number of hexadecimal digits");
        return bytes;
    }

    template <typename Value> void readWord(std::string_view key, std::span<const Word<Value>> words, Value& value)
    {
        const auto given = text(key);
        if (!given)
            return;
        std::vector<std::string_view> allowed;
        for (const auto& [word, meaning] : words) {
            allowed.push_back(word);
            if (word == *given) {
                value = meaning;
                return;
            }
        }
        complain(key, "\"" + *given + "\" is not known; allowed are " + joined(allowed));
    }

    void readAddress(std::string_view key, MacAddress& value)
    {
        const auto given = text(key);
        if (!given)
            return;
        const auto address = macAddressOf(*given);
        if (!address)
            complain(key, "expected an address such as 00-11-22-AA-BB-CC");
        else if (!isStationAddress(*address))
            complain(key, "a group address, or none at all; the first octet must be even and not all octets 0");
        else
            value = *address;
    }

private:
    void complainAt(const toml::source_position& place, std::string text)
    {
        if (!m_error)
            m_error = errorAt(place, std::move(text));
    }

    const toml::table& m_table;
    std::string m_name;
    std::optional<ScenarioError>& m_error;
};
