// The program's drawings: there is one for every use, all different, and none uses what the
// toolkit's small SVG renderer would silently leave out.
#include "art/drawings.h"

#include <array>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace veldara {
namespace {

constexpr std::array<Drawing, 13> allDrawings{
    Drawing::loading1,   Drawing::loading2,      Drawing::loading3,     Drawing::loading4,
    Drawing::error,      Drawing::pickImage,     Drawing::pickFolder,   Drawing::arrowPad,
    Drawing::arrowPadUp, Drawing::arrowPadRight, Drawing::arrowPadDown, Drawing::arrowPadLeft,
    Drawing::checkMark,
};

std::string attribute(std::string_view svg, const std::string& name) {
    const std::size_t element = svg.find("<svg ");
    const std::size_t start = svg.find(" " + name + "=\"", element) + name.size() + 3;
    return std::string(svg.substr(start, svg.find('"', start) - start));
}

void expectDrawable(std::string_view svg) {
    EXPECT_TRUE(svg.starts_with("<?xml"));
    EXPECT_TRUE(svg.ends_with("</svg>\n"));
    EXPECT_EQ(attribute(svg, "width"), attribute(svg, "height"));
    EXPECT_EQ(attribute(svg, "viewBox"),
              "0 0 " + attribute(svg, "width") + " " + attribute(svg, "height"));
    for (const char* missing : {"<text", "<filter", "<clipPath", "<mask", "<use", "<image",
                                "<style", "<pattern", "class=", "<symbol"})
        EXPECT_EQ(svg.find(missing), std::string_view::npos) << missing;
}

void expectGradientsExist(std::string_view svg) {
    std::size_t at = svg.find("url(#");
    while (at != std::string_view::npos) {
        const std::size_t end = svg.find(')', at);
        const std::string id(svg.substr(at + 5, end - at - 5));
        EXPECT_NE(svg.find("id=\"" + id + "\""), std::string_view::npos) << id;
        at = svg.find("url(#", end);
    }
}

TEST(Drawings, EveryDrawingHasAPictureOfItsOwn) {
    std::set<std::string_view> seen;
    for (const Drawing drawing : allDrawings)
        EXPECT_TRUE(seen.insert(drawingSvg(drawing)).second) << static_cast<int>(drawing);
    EXPECT_EQ(seen.size(), allDrawings.size());
    EXPECT_EQ(seen.count(""), 0U);
}

TEST(Drawings, NoDrawingIsEmpty) {
    EXPECT_TRUE(drawingSvg(Drawing::none).empty());
}

TEST(Drawings, UseOnlyWhatTheRendererKnows) {
    for (const Drawing drawing : allDrawings) {
        SCOPED_TRACE(static_cast<int>(drawing));
        expectDrawable(drawingSvg(drawing));
        expectGradientsExist(drawingSvg(drawing));
    }
}

TEST(Drawings, ArrowPadsAndLoadingFramesAreOfOneSize) {
    for (const Drawing pad : {Drawing::arrowPadUp, Drawing::arrowPadRight, Drawing::arrowPadDown,
                              Drawing::arrowPadLeft})
        EXPECT_EQ(attribute(drawingSvg(pad), "viewBox"),
                  attribute(drawingSvg(Drawing::arrowPad), "viewBox"));
    for (const Drawing frame : {Drawing::loading2, Drawing::loading3, Drawing::loading4})
        EXPECT_EQ(attribute(drawingSvg(frame), "viewBox"),
                  attribute(drawingSvg(Drawing::loading1), "viewBox"));
}

TEST(Drawings, TheIconIsSimplerWhereItIsSmall) {
    for (const int size : {16, 24, 25, 48, 256}) {
        SCOPED_TRACE(size);
        expectDrawable(iconSvg(size));
        expectGradientsExist(iconSvg(size));
    }
    EXPECT_EQ(iconSvg(16), iconSvg(24));
    EXPECT_EQ(iconSvg(25), iconSvg(256));
    EXPECT_LT(iconSvg(16).size(), iconSvg(256).size());
}

} // namespace
} // namespace veldara
