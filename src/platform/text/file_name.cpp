#include "platform/text/file_name.h"

#include "platform/text/characters.h"

#include <algorithm>
#include <array>

namespace veldara {

namespace {

bool isDeviceName(std::string_view name) {
    std::string stem = lowerCase(name.substr(0, name.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    constexpr std::array<std::string_view, 6> devices{"con", "prn",    "aux",
                                                      "nul", "conin$", "conout$"};
    if (std::find(devices.begin(), devices.end(), stem) != devices.end()) {
        return true;
    }
    const bool numbered = stem.size() == 4 && stem[3] >= '1' && stem[3] <= '9';
    return numbered && (stem.rfind("com", 0) == 0 || stem.rfind("lpt", 0) == 0);
}

std::string windowsProblem(std::string_view name) {
    const std::size_t bad = name.find_first_of(R"(<>:"/\|?*)");
    if (bad != std::string_view::npos) {
        return "has the character " + std::string(1, name[bad]) +
               ", which Windows allows in no file name";
    }
    if (std::any_of(name.begin(), name.end(), [](char c) { return c >= 0 && c < ' '; })) {
        return "has a control character";
    }
    // In units of UTF-16, of which characters are the nearest that need no conversion.
    constexpr std::size_t longest = 255;
    if (characterCount(name) > longest) {
        return "is longer than 255 characters";
    }
    if (isDeviceName(name)) {
        return "is the name of a device in Windows";
    }
    if (name.back() == ' ' || name.back() == '.') {
        return "ends with a blank or a dot, which Windows drops";
    }
    return {};
}

std::string problemOf(std::string_view name, char separator) {
    if (name.empty()) {
        return "is empty";
    }
    if (separator == '\\') {
        return windowsProblem(name);
    }
    return name.find('/') != std::string_view::npos ? "has the character /" : "";
}

std::string sentence(const char* what, std::string_view name, const std::string& problem) {
    return problem.empty()
               ? problem
               : "The " + std::string(what) + " name \"" + std::string(name) + "\" " + problem;
}

} // namespace

std::string fileNameProblem(std::string_view name, char separator) {
    return sentence("file", name, problemOf(name, separator));
}

std::string folderNameProblem(std::string_view name, char separator) {
    return sentence("folder", name, problemOf(name, separator));
}

bool isPdfName(std::string_view name) {
    return lowerCase(name).ends_with(".pdf");
}

} // namespace veldara
