#include "paper/paper_line.h"

#include "layout/tile_size.h"

#include <optional>
#include <string_view>

namespace veldara {
namespace {

constexpr std::size_t neededFields = 13;
constexpr std::size_t unitsField = 1;
constexpr std::size_t nameField = 2;
constexpr std::size_t sizeFields = 3;
constexpr std::size_t marginFields = 9;

std::vector<std::string> splitFields(std::string_view line) {
    std::vector<std::string> fields;
    for (std::size_t bar = line.find('|'); bar != std::string_view::npos; bar = line.find('|')) {
        fields.emplace_back(line.substr(0, bar));
        line.remove_prefix(bar + 1);
    }
    fields.emplace_back(line);
    return fields;
}

// What a line says, before the limits are tested.
struct LineContent {
    Units units = Units::inches;
    int index = 0;
    PaperRecord paper;
};

std::optional<LineContent> readLine(const PaperTables& tables, const std::string& line,
                                    NumberStyle style) {
    const std::vector<std::string> fields = splitFields(line);
    if (fields.size() < neededFields) {
        return std::nullopt;
    }
    const std::optional<int> units = readInteger(fields[unitsField], style);
    if (!units) {
        return std::nullopt;
    }
    const PaperFound found = findPaperIndex(tables, fields[nameField], *units);
    if (found.index < 0) {
        return std::nullopt;
    }
    LineContent content{unitsOf(*units), found.index, {}};
    content.paper = tables.catalogue(content.units)[static_cast<std::size_t>(found.index)];
    if (found.isCustom) {
        const std::optional<double> width = readNumber(fields[sizeFields], style);
        const std::optional<double> height = readNumber(fields[sizeFields + 1], style);
        if (!width || !height) {
            return std::nullopt;
        }
        content.paper.width = *width;
        content.paper.height = *height;
    }
    for (std::size_t edge = 0; edge < content.paper.margins.size(); ++edge) {
        const std::optional<double> margin = readNumber(fields[marginFields + edge], style);
        if (!margin) {
            return std::nullopt;
        }
        content.paper.margins[edge] = *margin;
    }
    return content;
}

} // namespace

std::string makePaperRegLine(const PaperTables& tables, NumberStyle style) {
    const PaperRecord& paper = tables.current();
    std::string line = tables.units == Units::inches ? "|0|" : "|1|";
    line += paper.name + "|";
    const auto add = [&](double value) { line += trimmed(plainNumber(value, style)) + "|"; };
    add(paper.width);
    add(paper.height);
    for (const double margin : paper.defaultMargins) {
        add(margin);
    }
    for (const double margin : paper.margins) {
        add(margin);
    }
    return line;
}

bool setPrefFromRegLine(PaperTables& tables, const std::string& line, double leastInches,
                        double mostInches, NumberStyle style) {
    const std::optional<LineContent> content = readLine(tables, line, style);
    const double factor = content && content->units == Units::millimetres ? millimetresPerInch : 1;
    if (!content ||
        !isWithin(content->paper.tileWidth(), leastInches * factor, mostInches * factor) ||
        !isWithin(content->paper.tileHeight(), leastInches * factor, mostInches * factor)) {
        tables = buildPaperTables();
        return false;
    }
    tables.units = content->units;
    tables.index(content->units) = content->index;
    tables.current() = content->paper;
    return true;
}

} // namespace veldara
