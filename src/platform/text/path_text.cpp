#include "platform/text/path_text.h"

namespace veldara {

#ifdef _WIN32

std::string pathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path textPath(std::string_view text) {
    return {std::u8string(text.begin(), text.end())};
}

#else

std::string pathText(const std::filesystem::path& path) {
    return path.native();
}

std::filesystem::path textPath(std::string_view text) {
    return {std::string(text)};
}

#endif

std::string withSeparator(std::string_view folder, char separator) {
    std::string text(folder);
    if (!text.empty() && text.back() != separator) {
        text += separator;
    }
    return text;
}

std::string forbiddenInNames(char separator) {
    if (separator == '/') {
        return std::string("/\0", 2);
    }
    std::string characters = R"(\/:*?"<>|)";
    for (char control = 0; control < ' '; ++control) {
        characters += control;
    }
    return characters;
}

} // namespace veldara
