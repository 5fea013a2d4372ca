// The lines between the tiles on the screen itself. Run once more where the display has small
// pixels.
#include "e2e/stage.h"

#ifndef __WXMSW__

#include "e2e/test_photos.h"
#include "gui/layout.h"
#include "layout/window_place.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <gtk/gtk.h>

namespace veldara::test {

namespace {

Colour grey(int, int) {
    return {128, 128, 128};
}

// A row of the screen's pixels, from a place in a widget on; for the window thread only.
std::vector<Colour> rowNow(const wxWindow& widget, wxPoint inWidget, int length) {
    const wxPoint at = widget.ClientToScreen(inWidget);
    const std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)> row(
        gdk_pixbuf_get_from_window(gdk_get_default_root_window(), at.x, at.y, length, 1),
        g_object_unref);
    std::vector<Colour> pixels;
    for (int x = 0; x < gdk_pixbuf_get_width(row.get()); ++x) {
        const guchar* pixel =
            gdk_pixbuf_read_pixels(row.get()) + x * gdk_pixbuf_get_n_channels(row.get());
        pixels.push_back({pixel[0], pixel[1], pixel[2]});
    }
    return pixels;
}

std::vector<int> redRuns(const std::vector<Colour>& row) {
    std::vector<int> lengths;
    bool inRun = false;
    for (const Colour& pixel : row) {
        const bool red = pixel == Colour{255, 0, 0};
        if (red && !inRun) {
            lengths.push_back(0);
        }
        inRun = red;
        if (red) {
            ++lengths.back();
        }
    }
    return lengths;
}

// A stage with a photo whose crop leaves something of it on every side.
class GridLines : public testing::Test {
  protected:
    GridLines() {
        writeBitmap(stage.photos() / "grey.bmp", 1201, 803, grey);
        stage.store("prefs_numTiles", "w03h02");
        stage.start();
        stage.pickPhoto("grey.bmp");
        user.key('Z', wxMOD_ALT);
        user.key(WXK_PAGEUP);
    }
    static const wxWindow& photo() { return *Driver::widget("frmMain", "picCur"); }

    Stage stage;
    Driver& user = stage.user();
};

TEST_F(GridLines, AreAsThickAsTheDisplaysScaleAsks) {
    int expected = 0;
    user.waitUntil("five lines are seen, as thick as they should be", [&] {
        const wxSize room = photo().GetClientSize();
        expected = lineWidth(displayScale(photo()));
        return redRuns(rowNow(photo(), {0, room.y / 3}, room.x)) == std::vector<int>(5, expected);
    });
    const char* scale = std::getenv("GDK_SCALE");
    EXPECT_EQ(expected, scale == nullptr ? 1 : std::atoi(scale));
}

TEST_F(GridLines, AreInAFrameWhereThePhotoHasTheKeyboard) {
    const auto edgeNow = [] {
        return rowNow(photo(), {0, photo().GetClientSize().y / 2}, photo().FromDIP(6));
    };
    const std::vector<Colour> before = user.onWindowThread(edgeNow);
    user.click("frmMain", "picCur");
    user.waitUntil("the frame is seen", [&] { return edgeNow() != before; });
    user.key('Z', wxMOD_ALT);
    user.waitUntil("the frame has gone", [&] { return edgeNow() == before; });
}

// What lies outside of the crop is darker, until the menu says otherwise.
TEST_F(GridLines, AreSurroundedByWhatIsDimmed) {
    const auto waitForEdge = [&](const std::string& what, bool dimmed) {
        user.waitUntil(what, [&] {
            const wxSize room = photo().GetClientSize();
            const std::vector<Colour> row = rowNow(photo(), {0, room.y / 2}, room.x);
            const Colour edge = row[row.size() / 100 + 2]; // of the photo, which is wide
            const Colour middle = row[row.size() * 2 / 5];
            return middle == grey(0, 0) && (dimmed ? edge[0] < 80 : edge == middle);
        });
    };
    waitForEdge("the photo's edge is dimmed", true);
    user.clickMenu("frmMain", 2, 0);
    waitForEdge("nothing is dimmed", false);
}

} // namespace

} // namespace veldara::test

#endif
