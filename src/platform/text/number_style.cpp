#include "platform/text/number_text.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <locale>
#include <stdexcept>
#endif

namespace veldara {

#ifdef _WIN32

NumberStyle NumberStyle::ofUser() {
    char separator[8] = ".";
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator,
                                      static_cast<int>(sizeof separator));
    NumberStyle style;
    // A separator of several bytes cannot be told from text; the point then stays.
    if (length == 2) {
        style.decimalSeparator = separator[0];
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
