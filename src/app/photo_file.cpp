#include "app/photo_file.h"

#include "platform/image/input_format.h"
#include "platform/text/characters.h"

#include <algorithm>
#include <optional>

namespace veldara {

namespace {

// The kinds that the file list offers, in the order of its filter.
std::vector<const InputFormat*> browsedFormats() {
    std::vector<const InputFormat*> kinds;
    for (const InputFormat& format : inputFormats()) {
        if (!format.filterText.empty()) {
            kinds.push_back(&format);
        }
    }
    return kinds;
}

} // namespace

std::vector<std::string> fileFilterTexts() {
    std::string patterns;
    std::vector<std::string> texts{""};
    for (const InputFormat* kind : browsedFormats()) {
        patterns += (patterns.empty() ? "*" : ", *") + std::string(kind->endings.front());
        texts.emplace_back(kind->filterText);
    }
    texts.front() = "Image Files (" + patterns + ")";
    texts.emplace_back("Show All Files (*.*)");
    return texts;
}

FileFilter openPhotoFilter() {
    FileFilter filter;
    std::string names;
    for (const InputFormat& format : inputFormats()) {
        names += (names.empty() ? "" : ", ") + std::string(format.name);
        for (const std::string_view ending : format.endings) {
            std::string capitals(ending);
            std::transform(capitals.begin(), capitals.end(), capitals.begin(), [](char c) {
                return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
            });
            filter.pattern +=
                (filter.pattern.empty() ? "*" : ";*") + std::string(ending) + ";*" + capitals;
        }
    }
    filter.label = "Photos (" + names + ")";
    return filter;
}

bool isListedFile(const std::string& name, int filterIndex) {
    if (characterCount(name) <= 4) {
        return false;
    }
    if (filterIndex == filterAll) {
        return true;
    }
    const std::optional<TileFormat> kind = tileFormatByName(name);
    if (!kind || filterIndex == filterImages) {
        return kind.has_value();
    }
    const std::vector<const InputFormat*> kinds = browsedFormats();
    const int index = filterIndex - filterJpeg;
    return index >= 0 && index < static_cast<int>(kinds.size()) &&
           kinds[static_cast<std::size_t>(index)]->tileFormat == kind;
}

bool isPhotoFile(const std::string& name) {
    return characterCount(name) >= 4 && tileFormatByName(name).has_value();
}

} // namespace veldara
