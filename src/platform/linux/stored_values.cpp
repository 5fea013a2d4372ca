#include "platform/linux/stored_values.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace veldara {

namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

char small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

void appendHex(std::string& text, std::uint8_t byte) {
    text += hexDigits[byte >> 4U];
    text += hexDigits[byte & 15U];
}

std::optional<std::uint8_t> takeHex(std::string_view& text) {
    if (text.size() < 2) {
        return std::nullopt;
    }
    const std::size_t high = hexDigits.find(small(text[0]));
    const std::size_t low = hexDigits.find(small(text[1]));
    if (high == std::string_view::npos || low == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(2);
    return static_cast<std::uint8_t>(high * 16 + low);
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<std::uint8_t>(c);
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            result += "\\x";
            appendHex(result, byte);
        } else {
            result += c;
        }
    }
    return result + '"';
}

bool take(std::string_view& text, std::string_view start) {
    if (text.substr(0, start.size()) != start) {
        return false;
    }
    text.remove_prefix(start.size());
    return true;
}

std::optional<std::string> takeQuoted(std::string_view& text) {
    if (!take(text, "\"")) {
        return std::nullopt;
    }
    std::string result;
    while (!text.empty()) {
        if (take(text, "\"")) {
            return result;
        }
        if (take(text, "\\x")) {
            const std::optional<std::uint8_t> byte = takeHex(text);
            if (!byte) {
                return std::nullopt;
            }
            result += static_cast<char>(*byte);
            continue;
        }
        if (text[0] == '\\') {
            text.remove_prefix(1);
            if (text.empty() || (text[0] != '"' && text[0] != '\\')) {
                return std::nullopt;
            }
        }
        result += text[0];
        text.remove_prefix(1);
    }
    return std::nullopt; // no closing quote
}

std::optional<RegistryValue> parseText(std::string_view text) {
    const std::optional<std::string> content = takeQuoted(text);
    if (!content || !text.empty()) {
        return std::nullopt;
    }
    RegistryValue value;
    value.type = RegistryType::string;
    value.text = content->substr(0, content->find('\0'));
    return value;
}

std::optional<RegistryValue> parseNumber(std::string_view text) {
    RegistryValue value;
    value.type = RegistryType::dword;
    const char* const end = text.data() + text.size();
    const auto [stop, code] = std::from_chars(text.data(), end, value.number);
    if (code != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<RegistryValue> parseBytes(std::string_view text) {
    RegistryValue value;
    value.type = RegistryType::other;
    while (!text.empty()) {
        const std::optional<std::uint8_t> byte = takeHex(text);
        if (!byte) {
            return std::nullopt;
        }
        value.bytes.push_back(*byte);
        take(text, " ");
    }
    return value;
}

void parseLine(std::string_view line, StoredValues& values, KeyValues*& key) {
    if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
        key = &values[std::string(line.substr(1, line.size() - 2))];
        return;
    }
    const std::size_t blank = line.find(' ');
    if (key == nullptr || blank == std::string_view::npos) {
        return;
    }
    const std::string_view type = line.substr(0, blank);
    line.remove_prefix(blank + 1);
    const std::optional<std::string> name = takeQuoted(line);
    if (!name || !take(line, " =")) {
        return;
    }
    take(line, " ");
    std::optional<RegistryValue> value;
    if (type == "string") {
        value = parseText(line);
    } else if (type == "dword") {
        value = parseNumber(line);
    } else if (type == "other") {
        value = parseBytes(line);
    }
    if (value) {
        (*key)[*name] = *value;
    }
}

std::string valueText(const std::string& name, const RegistryValue& value) {
    switch (value.type) {
    case RegistryType::string:
        return "string " + quoted(name) + " = " + quoted(value.text);
    case RegistryType::dword:
        return "dword " + quoted(name) + " = " + std::to_string(value.number);
    case RegistryType::other: {
        std::string line = "other " + quoted(name) + " =";
        for (const std::uint8_t byte : value.bytes) {
            line += ' ';
            appendHex(line, byte);
        }
        return line;
    }
    case RegistryType::none:
        break;
    }
    return {};
}

} // namespace

bool CaselessLess::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return small(x) < small(y); });
}

StoredValues parseStoredValues(std::string_view text) {
    StoredValues values;
    KeyValues* key = nullptr;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1); // the file may have been through another system's editor
        }
        parseLine(line, values, key);
    }
    return values;
}

std::string storedValuesText(const StoredValues& values) {
    std::string text;
    for (const auto& [key, named] : values) {
        text += text.empty() ? "[" : "\n[";
        text += key + "]\n";
        for (const auto& [name, value] : named) {
            text += valueText(name, value) + "\n";
        }
    }
    return text;
}

} // namespace veldara
