#include "cli/plan_json.h"

#include "cli/option_values.h"
#include "platform/text/number_text.h"
#include "platform/text/path_text.h"

#include <nlohmann/json.hpp>

namespace veldara {
namespace {

using Json = nlohmann::ordered_json; // members stay in the order in which they are added

// A whole number has no point, and any other is the shortest text that reads back the same.
Json number(double value) {
    return Json::parse(plainNumber(value));
}

template <class Numbers>
Json numbers(const Numbers& values) {
    Json list = Json::array();
    for (const auto value : values) {
        list.push_back(number(value));
    }
    return list;
}

Json rectangle(const TileRect& rect) {
    return {{"left", rect.left}, {"top", rect.top}, {"right", rect.right}, {"bottom", rect.bottom}};
}

Json cropOf(const PosterPlan& poster) {
    const TileRect& first = poster.tiles.front().rect;
    const TileRect& last = poster.tiles.back().rect;
    return rectangle({first.left, first.top, last.right, last.bottom});
}

Json paperOf(const JobPlan& plan) {
    return {{"name", plan.paper.name},
            {"units", unitsWord(plan.units)},
            {"width", number(plan.paper.width)},
            {"height", number(plan.paper.height)},
            {"margins", numbers(plan.paper.margins)}};
}

Json tileOf(const PlannedTile& tile, std::size_t index) {
    Json member;
    member["number"] = index + 1;
    member.update(rectangle(tile.rect));
    member["width"] = tile.picture.width;
    member["height"] = tile.picture.height;
    member["file"] = pathText(tile.file);
    return member;
}

// On one line; bytes that are no UTF-8 become the replacement character.
std::string line(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string tileList(const std::vector<PlannedTile>& tiles) {
    std::string text;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        text += (i == 0 ? "\n    " : ",\n    ") + line(tileOf(tiles[i], i));
    }
    return "[" + text + "\n  ]";
}

} // namespace

std::string jsonString(std::string_view text) {
    return line(std::string(text));
}

std::string planJson(const JobPlan& plan, const std::string& pdf) {
    const PosterLayout& layout = plan.poster.layout;
    const Json members{
        {"photo",
         {{"file", plan.photoFile}, {"width", layout.photoWidth}, {"height", layout.photoHeight}}},
        {"paper", paperOf(plan)},
        {"tile_inches",
         {{"width", number(layout.tileWidthInches)}, {"height", number(layout.tileHeightInches)}}},
        {"grid",
         {{"wide", layout.tilesWide},
          {"high", layout.tilesHigh},
          {"rotate_tiles", layout.tilesTurned}}},
        {"crop", cropOf(plan.poster)},
        {"figures",
         {{"size", plan.figures.size},
          {"megapixels", plan.figures.megapixels},
          {"resolution", plan.figures.resolution},
          {"quality", plan.figures.quality}}},
        {"dpi", plan.poster.treatment.resolution},
        {"clip", plan.clip ? numbers(*plan.clip) : Json()}};
    // One line for each member and each tile.
    std::string text = "{";
    for (const auto& [name, value] : members.items()) {
        text += "\n  " + line(name) + ":" + line(value) + ",";
    }
    return text + "\n  \"tiles\":" + tileList(plan.poster.tiles) +
           (pdf.empty() ? "" : ",\n  \"pdf\":" + pdf) + "\n}\n";
}

} // namespace veldara
