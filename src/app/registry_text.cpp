#include "app/registry_text.h"

namespace veldara {

namespace {

std::string withoutTrailingNul(std::string text) {
    if (!text.empty() && text.back() == '\0') {
        text.pop_back();
    }
    return text;
}

std::string hexadecimalText(std::uint32_t number) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = "&h";
    for (int shift = 24; shift >= 0; shift -= 8) {
        const std::uint32_t byte = (number >> shift) & 0xFF;
        text += digits[byte >> 4];
        text += digits[byte & 0x0F];
    }
    return text;
}

} // namespace

std::string registryValueText(const RegistryValue& value) {
    switch (value.type) {
    case RegistryType::string:
        return withoutTrailingNul(value.text);
    case RegistryType::dword:
        return hexadecimalText(static_cast<std::uint32_t>(value.number));
    case RegistryType::other:
        return withoutTrailingNul(std::string(value.bytes.begin(), value.bytes.end()));
    case RegistryType::none:
        break;
    }
    return "";
}

} // namespace veldara
