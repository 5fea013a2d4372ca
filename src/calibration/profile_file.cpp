#include "calibration/profile_file.h"

#include "platform/error.h"
#include "platform/text/characters.h"

#include <memory>
#include <utility>

namespace veldara {

std::string profileFilePath(const std::string& applicationFolder, const std::string& programFolder,
                            char separator) {
    const std::string& folder = applicationFolder.empty() ? programFolder : applicationFolder;
    return withSeparator(folder, separator) + "printer_edge_config";
}

ProfileFileContent readProfiles(const std::function<std::optional<std::string>()>& nextLine) {
    ProfileFileContent content;
    try {
        while (content.profiles.size() < mostProfiles) {
            const std::optional<std::string> line = nextLine();
            if (!line) {
                break;
            }
            content.profiles.push_back(ParseProfileLine(*line));
        }
    } catch (const Error&) {
        return {};
    }
    content.status =
        content.profiles.empty() ? profileFileEmpty : static_cast<int>(content.profiles.size());
    return content;
}

ProfileFileContent readProfileFile(FileSystem& fileSystem, const std::string& path) {
    try {
        const std::unique_ptr<FileSystemObject> files = fileSystem.createOrSubstitute();
        if (!files->fileExists(path)) {
            return {};
        }
        const std::unique_ptr<TextReader> reader = files->openTextFile(path);
        return readProfiles([&]() -> std::optional<std::string> {
            return reader->atEndOfStream() ? std::nullopt : std::optional(reader->readLine());
        });
    } catch (const Error&) {
        return {};
    }
}

std::vector<EdgeProfile> loadProfiles(FileSystem& fileSystem, const std::string& path) {
    ProfileFileContent content = readProfileFile(fileSystem, path);
    return content.status > 0 ? std::move(content.profiles) : builtInProfiles();
}

ProfileFileContent readProfileText(std::string_view text) {
    const std::vector<std::string> lines = splitLines(text);
    std::size_t next = 0;
    return readProfiles([&]() -> std::optional<std::string> {
        return next < lines.size() ? std::optional(lines[next++]) : std::nullopt;
    });
}

std::vector<std::string> profileLines(const std::vector<EdgeProfile>& profiles) {
    std::vector<std::string> lines;
    lines.reserve(profiles.size());
    for (const EdgeProfile& profile : profiles) {
        lines.push_back(formatProfileLine(profile));
    }
    return lines;
}

} // namespace veldara
