#include "platform/text/number_text.h"

#ifdef _WIN32
#include <iterator>

#include <windows.h>
#else
#include <locale>
#include <stdexcept>
#endif

namespace veldara {

#ifdef _WIN32

NumberStyle NumberStyle::ofUser() {
    wchar_t separator[8] = L".";
    const int length = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, separator,
                                       static_cast<int>(std::size(separator)));
    NumberStyle style;
    // One that is no single ASCII character could not be told from text; the point then stays.
    if (length == 2 && separator[0] < 0x80) {
        style.decimalSeparator = static_cast<char>(separator[0]);
    }
    return style;
}

#else

NumberStyle NumberStyle::ofUser() {
    NumberStyle style;
    try {
        const std::locale user("");
        style.decimalSeparator = std::use_facet<std::numpunct<char>>(user).decimal_point();
    } catch (const std::runtime_error&) {
        // The desktop names a locale that is not installed: the point stays.
        style.decimalSeparator = '.';
    }
    return style;
}

#endif

} // namespace veldara
