#include "help/help_pages.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <iterator>
#include <utility>

namespace veldara {

std::string fileText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<std::string> pageNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(HELP_FOLDER))
        if (entry.path().extension() == ".html")
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string pageText(const std::string& name) {
    return fileText(std::filesystem::path(HELP_FOLDER) / name);
}

std::vector<std::string> quotedAfter(const std::string& text, const std::string& start) {
    std::vector<std::string> found;
    std::size_t at = text.find(start + '"');
    while (at != std::string::npos) {
        const std::size_t from = at + start.size() + 1;
        const std::size_t to = text.find('"', from);
        found.push_back(text.substr(from, to - from));
        at = text.find(start + '"', to);
    }
    return found;
}

std::string withSingleBlanks(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool blank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (!blank)
            result += c;
        else if (!result.empty() && result.back() != ' ')
            result += ' ';
    }
    return result;
}

namespace {

std::string withoutMarks(const std::string& html) {
    std::string text;
    bool inMark = false;
    for (const char c : html) {
        if (c == '<')
            inMark = true;
        if (!inMark)
            text += c;
        if (c == '>')
            inMark = false;
    }
    return text;
}

} // namespace

std::string plainText(const std::string& html) {
    static const std::array<std::pair<std::string, std::string>, 5> entities{
        {{"&quot;", "\""}, {"&lt;", "<"}, {"&gt;", ">"}, {"&nbsp;", " "}, {"&amp;", "&"}}};
    std::string text = withoutMarks(html);
    for (const auto& [entity, character] : entities)
        for (std::size_t at = text.find(entity); at != std::string::npos;
             at = text.find(entity, at + 1))
            text.replace(at, entity.size(), character);
    return withSingleBlanks(text);
}

} // namespace veldara
