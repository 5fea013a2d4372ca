#include "platform/text/wide_text.h"

#include <array>
#include <cstdio>

#include <windows.h>

namespace veldara {

std::wstring wideText(std::string_view utf8) {
    const int bytes = static_cast<int>(utf8.size());
    if (bytes == 0) {
        return {};
    }
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), bytes, wide.data(), units);
    return wide;
}

std::string narrowText(std::wstring_view wide) {
    const int units = static_cast<int>(wide.size());
    if (units == 0) {
        return {};
    }
    const int bytes =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, text.data(), bytes, nullptr, nullptr);
    return text;
}

std::string systemMessage(unsigned long code) {
    std::array<wchar_t, 512> buffer{};
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::string text = narrowText({buffer.data(), length});
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '.' ||
                             text.back() == ' ')) {
        text.pop_back();
    }
    if (text.empty()) {
        std::array<char, 16> number{};
        std::snprintf(number.data(), number.size(), "0x%08lX", code);
        text = number.data();
    }
    return text;
}

} // namespace veldara
