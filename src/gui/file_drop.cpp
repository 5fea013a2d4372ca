#include "gui/file_drop.h"

#include "gui/native_text.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <wx/dialog.h>
#include <wx/dnd.h>

namespace veldara {

namespace {

// A modal dialog keeps mouse and keyboard from the windows behind it, but not what is dropped.
bool dialogIsOpen() {
    return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](wxWindow* window) {
        const auto* dialog = dynamic_cast<wxDialog*>(window);
        return dialog != nullptr && dialog->IsModal();
    });
}

class FileDrop : public wxFileDropTarget {
  public:
    FileDrop(wxWindow& window, std::function<void(const std::string&)> open)
        : window_(window), open_(std::move(open)) {}

    wxDragResult OnDragOver(wxCoord, wxCoord, wxDragResult) override {
        return dialogIsOpen() ? wxDragNone : wxDragCopy; // whatever is dragged stays where it is
    }

    bool OnDropFiles(wxCoord, wxCoord, const wxArrayString& paths) override {
        if (paths.empty() || paths[0].empty() || dialogIsOpen()) {
            return false; // nothing, or from a web page
        }
        window_.CallAfter([&window = window_, open = open_, path = portableText(paths[0])] {
            wxGetTopLevelParent(&window)->Raise(); // the user is here now, not in the file manager
            open(path);
        });
        return true;
    }

  private:
    wxWindow& window_; // which owns this
    std::function<void(const std::string&)> open_;
};

} // namespace

void takeDroppedFiles(wxWindow& window, std::function<void(const std::string& path)> open) {
    window.SetDropTarget(std::make_unique<FileDrop>(window, std::move(open)).release());
}

} // namespace veldara
