// The native folder list: the way down from the drive's root, each folder a step further in, and
// below it the folders that can be opened. A double click or Enter opens an entry.
#pragma once

#include "controls/browsing.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/bmpbndl.h>
#include <wx/vlbox.h>

namespace veldara {

class FolderListBox : public wxVListBox {
  public:
    // Makes a list inside a frame of its own where the desktop draws none around such a window.
    static FolderListBox* make(wxWindow* parent, const wxString& name, const wxSize& size);

    // What is laid out: the list with its frame.
    wxWindow* framed() { return frame_ == nullptr ? this : frame_; }

    void showEntries(const std::vector<FolderList::Entry>& entries, int current);

    // The first entry of that name, -1: none.
    int indexOf(const std::string& name) const;

    std::function<void(int)> onOpen;

  protected:
    void DoEnable(bool enable) override;
    void OnDrawBackground(wxDC& dc, const wxRect& rect, std::size_t entry) const override;
    void OnDrawItem(wxDC& dc, const wxRect& rect, std::size_t entry) const override;
    wxCoord OnMeasureItem(std::size_t entry) const override;

  private:
    FolderListBox(wxWindow* parent, wxWindow* frame, const wxString& name, const wxSize& size);

    wxColour textColour(std::size_t entry) const;
    void openSelected();
    void openParent();

    wxWindow* frame_;
    std::vector<FolderList::Entry> entries_;
    int current_ = -1;
    wxBitmapBundle closedFolder_;
    wxBitmapBundle openFolder_;
};

} // namespace veldara
