#pragma once

#include "services/simulator/scenario/Scenario.h"
#include "services/simulator/scenario/ScenarioValues.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Only Scenario.cpp includes this header and the TOML library.

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

// Reads the values of a table and keeps the first error. An invalid entry leaves its value unchanged.
class TableReader {
public:
    TableReader(const toml::table& table, std::string_view name, std::optional<ScenarioError>& error)
        : m_table(table)
        , m_name(name)
        , m_error(error)
    {
    }

    [[nodiscard]] bool has(std::string_view key) const { return m_table.contains(key); }

    // Reports an error at the value of the key, or at the table if the key is missing.
    void report(std::string_view key, const std::string& text)
    {
        const toml::node* node = m_table.get(key);
        reportAt((node ? node->source() : m_table.source()).begin, std::string(key) + ": " + text);
    }

    void expectKeys(std::span<const std::string_view> known)
    {
        for (const auto& [key, node] : m_table) {
            if (std::find(known.begin(), known.end(), key.str()) == known.end())
                reportAt(
                    key.source().begin, std::string(key.str()) + ": unknown key; " + m_name + " has " + joined(known));
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
            report(key, "expected true or false");
    }

    // Returns std::nullopt if the key is missing or not a whole number.
    std::optional<std::int64_t> wholeNumber(std::string_view key)
    {
        const toml::node* node = m_table.get(key);
        if (!node)
            return std::nullopt;
        if (const auto* number = node->as_integer())
            return number->get();
        report(key, "expected a whole number");
        return std::nullopt;
    }

    template <typename Integer>
    void readNumber(std::string_view key, std::int64_t min, std::int64_t max, Integer& value)
    {
        const auto number = wholeNumber(key);
        if (!number)
            return;
        if (*number >= min && *number <= max)
            value = static_cast<Integer>(*number);
        else
            report(key,
                std::to_string(*number) + " is out of range; allowed are " + std::to_string(min) + " to "
                    + std::to_string(max));
    }

    std::optional<std::string> text(std::string_view key)
    {
        const toml::node* node = m_table.get(key);
        if (!node)
            return std::nullopt;
        if (const auto* text = node->as_string())
            return text->get();
        report(key, "expected a string in quotation marks");
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
            report(key, "expected an even number of hexadecimal digits");
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
        report(key, "\"" + *given + "\" is unknown; allowed are " + joined(allowed));
    }

    void readAddress(std::string_view key, MacAddress& value)
    {
        const auto given = text(key);
        if (!given)
            return;
        const auto address = macAddressOf(*given);
        if (!address)
            report(key, "expected an address such as 00-11-22-AA-BB-CC");
        else if (!isStationAddress(*address))
            report(key, "not a station address; the first octet must be even and not all octets 0");
        else
            value = *address;
    }

private:
    void reportAt(const toml::source_position& place, std::string text)
    {
        if (!m_error)
            m_error = errorAt(place, std::move(text));
    }

    const toml::table& m_table;
    std::string m_name;
    std::optional<ScenarioError>& m_error;
};
