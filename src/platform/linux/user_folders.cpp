#include "platform/linux/user_folders.h"

#include "platform/files/descriptor.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace veldara {

namespace {

bool isAbsolute(const std::string& path) {
    return !path.empty() && path.front() == '/';
}

std::string withoutEnd(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

std::string baseFolder(const Environment& environment, const std::string& variable,
                       const std::string& usual) {
    const std::string folder = environment(variable);
    return isAbsolute(folder) ? withoutEnd(folder) : homeFolder(environment) + usual;
}

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// The content of "..." with its backslashes taken away; empty when it is not quoted.
std::string unquoted(std::string_view text) {
    std::string content;
    if (text.size() < 2 || text.front() != '"') {
        return content;
    }
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            return content;
        }
        if (text[i] == '\\' && i + 1 < text.size()) {
            ++i;
        }
        content += text[i];
    }
    return {};
}

} // namespace

std::string processEnvironment(const std::string& name) {
    const char* const value = std::getenv(name.c_str());
    return value == nullptr ? std::string() : std::string(value);
}

std::string homeFolder(const Environment& environment) {
    const std::string home = environment("HOME");
    if (isAbsolute(home)) {
        return withoutEnd(home);
    }
    std::vector<char> buffer(16384);
    struct passwd entry = {};
    struct passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 &&
        found != nullptr && found->pw_dir != nullptr && isAbsolute(found->pw_dir)) {
        return withoutEnd(found->pw_dir);
    }
    return "/";
}

std::string configFolder(const Environment& environment) {
    return baseFolder(environment, "XDG_CONFIG_HOME", "/.config");
}

std::string dataFolder(const Environment& environment) {
    return baseFolder(environment, "XDG_DATA_HOME", "/.local/share");
}

std::string userDirectory(std::string_view userDirsText, std::string_view name,
                          const std::string& home) {
    constexpr std::string_view homeVariable = "$HOME";
    std::string folder; // of several lines the last counts, as in the shell that reads them
    while (!userDirsText.empty()) {
        const std::size_t end = std::min(userDirsText.find('\n'), userDirsText.size());
        const std::string_view line = withoutBlanks(userDirsText.substr(0, end));
        userDirsText.remove_prefix(std::min(end + 1, userDirsText.size()));
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || withoutBlanks(line.substr(0, equals)) != name) {
            continue;
        }
        const std::string value = unquoted(withoutBlanks(line.substr(equals + 1)));
        if (value == homeVariable || value.rfind("$HOME/", 0) == 0) {
            folder = withoutEnd(home + value.substr(homeVariable.size()));
        } else {
            folder = isAbsolute(value) ? withoutEnd(value) : std::string();
        }
    }
    return folder;
}

UserFolders::UserFolders(Environment environment) : environment_(std::move(environment)) {}

std::string UserFolders::find(const std::string& variable, const std::string& usualName) const {
    constexpr std::size_t largestFile = 65536;
    if (const std::string folder = environment_(variable); isAbsolute(folder)) {
        return withoutEnd(folder);
    }
    const std::string home = homeFolder(environment_);
    std::string text;
    const Descriptor file = openRegularFile(configFolder(environment_) + "/user-dirs.dirs");
    if (file && readWhole(file, largestFile, text) == 0) {
        if (std::string folder = userDirectory(text, variable, home); !folder.empty()) {
            return folder;
        }
    }
    std::error_code ignored;
    std::string usual = home + "/" + usualName;
    return std::filesystem::is_directory(usual, ignored) ? usual : std::string();
}

std::string UserFolders::path(int identifier) {
    switch (identifier) {
    case 0:
    case 16:
        return find("XDG_DESKTOP_DIR", "Desktop");
    case 5:
        return find("XDG_DOCUMENTS_DIR", "Documents");
    case picturesIdentifier:
        return find("XDG_PICTURES_DIR", "Pictures");
    case homeIdentifier:
        return homeFolder(environment_);
    default:
        return {};
    }
}

} // namespace veldara
