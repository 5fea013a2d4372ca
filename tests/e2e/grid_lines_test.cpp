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

// The widths of the red lines in a row of the screen's pixels through the middle of a widget; for
// the window thread only.
std::vector<int> lineWidthsNow(const wxWindow& widget) {
    const wxPoint at = widget.ClientToScreen(wxPoint(0, widget.GetClientSize().y / 3));
    const std::unique_ptr<GdkPixbuf, decltype(&g_object_unref)> row(
        gdk_pixbuf_get_from_window(gdk_get_default_root_window(), at.x, at.y,
                                   widget.GetClientSize().x, 1),
        g_object_unref);
    std::vector<int> widths;
    bool inLine = false;
    for (int x = 0; x < gdk_pixbuf_get_width(row.get()); ++x) {
        const guchar* pixel =
            gdk_pixbuf_read_pixels(row.get()) + x * gdk_pixbuf_get_n_channels(row.get());
        const bool red = pixel[0] == 255 && pixel[1] == 0 && pixel[2] == 0;
        if (red && !inLine) {
            widths.push_back(0);
        }
        inLine = red;
        if (red) {
            ++widths.back();
        }
    }
    return widths;
}

TEST(GridLines, AreAsThickAsTheDisplaysScaleAsks) {
    Stage stage;
    writeBitmap(stage.photos() / "grey.bmp", 1201, 803, grey);
    stage.store("prefs_numTiles", "w03h02");
    stage.start();
    stage.pickPhoto("grey.bmp");
    stage.user().key('Z', wxMOD_ALT);
    stage.user().key(WXK_PAGEUP); // the outer lines come off the photo's edges
    std::vector<int> widths;
    int expected = 0;
    stage.user().waitUntil("five lines are seen, as thick as they should be", [&] {
        const wxWindow& photo = *Driver::widget("frmMain", "picCur");
        widths = lineWidthsNow(photo);
        expected = lineWidth(displayScale(photo));
        return widths == std::vector<int>(5, expected);
    });
    const char* scale = std::getenv("GDK_SCALE");
    EXPECT_EQ(expected, scale == nullptr ? 1 : std::atoi(scale));
}

} // namespace

} // namespace veldara::test

#endif
