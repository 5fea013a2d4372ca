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
    FolderListBox(wxWindow* parent, const wxString& name, const wxSize& size);

    void showEntries(const std::vector<FolderList::Entry>& entries, int current);

    // The first entry of that name, -1: none.
    int indexOf(const std::string& name) const;

    std::function<void(int)> onOpen;

  protected:
    void OnDrawItem(wxDC& dc, const wxRect& rect, std::size_t entry) const override;
    wxCoord OnMeasureItem(std::size_t entry) const override;

  private:
    void openSelected();
    void openParent();

    std::vector<FolderList::Entry> entries_;
    int current_ = -1;
    wxBitmapBundle closedFolder_;
    wxBitmapBundle openFolder_;
};

} // namespace veldara
