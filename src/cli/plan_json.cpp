#include "cli/plan_json.h"

#include "cli/option_values.h"
#include "platform/text/number_text.h"
#include "platform/text/path_text.h"

#include <array>
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

// A list with each of its members on a line of its own.
std::string linesOf(const Json& members) {
    std::string text;
    for (const Json& member : members) {
        text += (text.empty() ? "\n    " : ",\n    ") + line(member);
    }
    return "[" + text + "\n  ]";
}

Json tilesOf(const std::vector<PlannedTile>& tiles) {
    Json list = Json::array();
    for (const PlannedTile& tile : tiles) {
        list.push_back(tileOf(tile, list.size()));
    }
    return list;
}

template <class Rectangle>
Json edges(const Rectangle& rectangle) {
    return numbers(std::array{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom});
}

Json pageOf(const PlannedPage& page, std::size_t index) {
    const bool guide = page.tile == 0;
    Json member;
    member["page"] = index + 1;
    member["kind"] = guide ? "guide" : "sheet";
    member["tile"] = guide ? Json() : Json(page.tile);
    member["width_pt"] = number(page.width);
    member["height_pt"] = number(page.height);
    member["own_pt"] = guide ? Json() : edges(page.own);
    member["own_px"] = guide ? Json() : edges(page.ownPhoto);
    return member;
}

std::string pdfText(const PdfPlan& pdf) {
    Json pages = Json::array();
    for (const PlannedPage& page : pdf.pages) {
        pages.push_back(pageOf(page, pages.size()));
    }
    return "{\"file\":" + line(pathText(pdf.file)) + ",\"pages\":" + linesOf(pages) + "}";
}

} // namespace

std::string planJson(const JobPlan& plan, const PdfPlan* pdf) {
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
    return text + "\n  \"tiles\":" + linesOf(tilesOf(plan.poster.tiles)) +
           (pdf == nullptr ? "" : ",\n  \"pdf\":" + pdfText(*pdf)) + "\n}\n";
}

} // namespace veldara
