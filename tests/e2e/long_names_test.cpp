// Names that are longer than the lists are wide.
#include "e2e/stage.h"
#include "e2e/test_photos.h"
#include "gui/folder_list_box.h"

#include <map>

#include <gtest/gtest.h>
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#include <wx/image.h>
#include <wx/listbox.h>

namespace veldara::test {

namespace {

// Letters that are high everywhere, so that a cut one is not taken for dots.
const std::string longName(80, 'M');

// A row of the file list; for the window thread only.
wxRect rowNow(int index) {
    const auto* list = dynamic_cast<const wxListBox*>(Driver::widget("frmMain", "lstFiles"));
    if (list == nullptr) {
        throw DriverError("There is no list of files.");
    }
    const wxSize room = list->GetClientSize();
    wxRect row(0, 0, room.x, 0);
    for (int y = 0; y < room.y; ++y) {
        if (list->HitTest(wxPoint(12, y)) == index) {
            row.y = row.height == 0 ? y : row.y;
            ++row.height;
        }
    }
    return row;
}

// What is on the screen there.
wxImage pictureOf(const wxRect& place) {
    wxScreenDC screen;
    wxBitmap picture;
    picture.Create(place.GetSize());
    wxMemoryDC copy(picture);
    copy.Blit(wxPoint(), place.GetSize(), &screen, place.GetPosition());
    copy.SelectObject(wxNullBitmap);
    return picture.ConvertToImage();
}

int colourAt(const wxImage& picture, int x, int y) {
    return picture.GetRed(x, y) << 16 | picture.GetGreen(x, y) << 8 | picture.GetBlue(x, y);
}

// The colour that most of it has.
int ground(const wxImage& picture) {
    std::map<int, int> counts;
    for (int y = 0; y < picture.GetHeight(); ++y) {
        for (int x = 0; x < picture.GetWidth(); ++x) {
            ++counts[colourAt(picture, x, y)];
        }
    }
    return std::max_element(
               counts.begin(), counts.end(),
               [](const auto& one, const auto& other) { return one.second < other.second; })
        ->first;
}

// Whether the last thing in the row stands in its lower half only, as dots do, and near its end.
bool endsInDots(const wxImage& row, int dotWidth) {
    const int empty = ground(row);
    const auto hasInk = [&](int x, int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            if (colourAt(row, x, y) != empty) {
                return true;
            }
        }
        return false;
    };
    const int height = row.GetHeight();
    int last = row.GetWidth() - 1;
    while (last > 0 && !hasInk(last, 0, height)) {
        --last;
    }
    for (int x = last; x > last - dotWidth; --x) {
        if (hasInk(x, 0, height / 2)) {
            return false;
        }
    }
    return last > row.GetWidth() * 3 / 4;
}

TEST(FileList, LongNamesEndInDotsAndAreWholeInTheToolTip) {
    Stage stage;
    const std::string name = longName + ".bmp";
    writeBitmap(stage.photos() / "a.bmp", 60, 40, smoothColour);
    writeBitmap(stage.photos() / name, 60, 40, smoothColour);
    stage.start();
    Driver& user = stage.user();
    stage.waitFor("both are listed", [](frmMain& main) { return main.lstFiles.count() == 2; });
    user.waitUntil("the long name ends in dots", [] {
        const wxWindow* list = Driver::widget("frmMain", "lstFiles");
        wxRect row = rowNow(1);
        if (row.height == 0) {
            return false;
        }
        const int dot = list->GetTextExtent(".").x;
        row.SetPosition(list->ClientToScreen(row.GetPosition()));
        row.Deflate(3, 0); // without the list's border
        return endsInDots(pictureOf(row), dot);
    });
    const auto inRow = [&](int index) {
        return user.onWindowThread([&] {
            const wxRect row = rowNow(index);
            return wxPoint(30, row.y + row.height / 2);
        });
    };
    user.waitForToolTip("frmMain", "lstFiles", inRow(1), name);
    user.waitForToolTip("frmMain", "lstFiles", inRow(0),
                        "Filtered list of files in selected folder");
}

TEST(Browsing, ALongFolderNameIsWholeInTheToolTip) {
    Stage stage;
    stage.home().addFolder("photos/" + longName);
    stage.home().addFolder("photos/near");
    stage.start();
    Driver& user = stage.user();
    const auto tipOf = [&](const std::string& folder, const std::string& words) {
        const wxPoint at = user.onWindowThread([&] {
            auto& list = dynamic_cast<FolderListBox&>(*Driver::widget("frmMain", "Dir1"));
            const int entry = list.indexOf(folder);
            list.bringIntoSight(entry);
            const wxRect row = list.placeOf(entry);
            return wxPoint(list.GetClientSize().x / 2, row.y + row.height / 2);
        });
        user.waitForToolTip("frmMain", "Dir1", at, words);
    };
    tipOf(longName, longName);
    const std::string own = stage.ask([](frmMain& main) { return main.Dir1.toolTip(); });
    tipOf("near", own);
}

} // namespace

} // namespace veldara::test
