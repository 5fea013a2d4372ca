#include "cli/plan_json.h"

#include "platform/text/characters.h"
#include "platform/text/path_text.h"

namespace veldara {
namespace {

std::string escaped(char c) {
    constexpr const char* digits = "0123456789abcdef";
    switch (c) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    const auto code = static_cast<unsigned char>(c);
    if (code >= 0x20) {
        return {c};
    }
    return std::string("\\u00") + digits[code >> 4U] + digits[code & 0xFU];
}

// Joins "name":value pairs; values are JSON already.
class Object {
  public:
    Object& add(const std::string& name, const std::string& value) {
        text_ += (text_.empty() ? "" : ",") + jsonString(name) + ":" + value;
        return *this;
    }
    Object& add(const std::string& name, int value) { return add(name, std::to_string(value)); }
    Object& add(const std::string& name, double value) { return add(name, plainNumber(value)); }
    std::string text() const { return "{" + text_ + "}"; }

  private:
    std::string text_;
};

template <class Numbers>
std::string array(const Numbers& numbers) {
    std::string text;
    for (const auto number : numbers) {
        text += (text.empty() ? "" : ",") + plainNumber(number);
    }
    return "[" + text + "]";
}

Object rectangle(const TileRect& rect) {
    return Object()
        .add("left", rect.left)
        .add("top", rect.top)
        .add("right", rect.right)
        .add("bottom", rect.bottom);
}

std::string tileList(const std::vector<PlannedTile>& tiles) {
    std::string text;
    int number = 0;
    for (const PlannedTile& tile : tiles) {
        Object object;
        object.add("number", ++number)
            .add("left", tile.rect.left)
            .add("top", tile.rect.top)
            .add("right", tile.rect.right)
            .add("bottom", tile.rect.bottom)
            .add("width", tile.picture.width)
            .add("height", tile.picture.height)
            .add("file", jsonString(pathText(tile.file)));
        text += (text.empty() ? "\n    " : ",\n    ") + object.text();
    }
    return "[" + text + "\n  ]";
}

} // namespace

std::string jsonString(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::string character = sleft(text, 1);
        text.remove_prefix(character.size());
        if (character.size() > 1) {
            result += character;
        } else if (static_cast<unsigned char>(character.front()) >= 0x80) {
            result += "\xEF\xBF\xBD";
        } else {
            result += escaped(character.front());
        }
    }
    return result + "\"";
}

std::string planJson(const JobPlan& plan) {
    const Object photo = Object()
                             .add("file", jsonString(plan.photoFile))
                             .add("width", plan.photoWidth)
                             .add("height", plan.photoHeight);
    const Object paper = Object()
                             .add("name", jsonString(plan.paper.name))
                             .add("units", plan.units == Units::inches ? "\"in\"" : "\"mm\"")
                             .add("width", plan.paper.width)
                             .add("height", plan.paper.height)
                             .add("margins", array(plan.paper.margins));
    const Object tileInches = Object()
                                  .add("width", plan.layout.tileWidthInches)
                                  .add("height", plan.layout.tileHeightInches);
    const Object grid = Object()
                            .add("wide", plan.layout.tilesWide)
                            .add("high", plan.layout.tilesHigh)
                            .add("rotate_tiles", plan.layout.tilesTurned ? "true" : "false");
    const Object figures = Object()
                               .add("size", jsonString(plan.figures.size))
                               .add("megapixels", jsonString(plan.figures.megapixels))
                               .add("resolution", jsonString(plan.figures.resolution))
                               .add("quality", jsonString(plan.figures.quality));
    const std::string clip = plan.clip ? array(*plan.clip) : "null";
    return "{\n  \"photo\":" + photo.text() + ",\n  \"paper\":" + paper.text() +
           ",\n  \"tile_inches\":" + tileInches.text() + ",\n  \"grid\":" + grid.text() +
           ",\n  \"crop\":" + rectangle(plan.crop).text() + ",\n  \"figures\":" + figures.text() +
           ",\n  \"dpi\":" + std::to_string(plan.treatment.resolution) + ",\n  \"clip\":" + clip +
           ",\n  \"tiles\":" + tileList(plan.tiles) + "\n}\n";
}

} // namespace veldara
