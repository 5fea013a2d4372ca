// The native folder list: the path from the drive's root, each folder a step further in, and below
// it the folders that can be opened. A double click or Enter opens an entry. Screen readers get its
// rows: on Linux from the native list, on Windows from an object that describes what is drawn.
#pragma once

#include "controls/browsing.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/bmpbndl.h>

#ifdef __WXMSW__
#include <wx/vlbox.h>
#else
#include <wx/dataview.h>
#endif

namespace veldara {

#ifdef __WXMSW__
using NativeFolderList = wxVListBox;
#else
using NativeFolderList = wxDataViewTreeCtrl;
#endif

class FolderListBox : public NativeFolderList {
  public:
    FolderListBox(wxWindow* parent, const wxString& name, const wxSize& size);

    void showEntries(const std::vector<FolderList::Entry>& entries, int current);
    const std::vector<FolderList::Entry>& entries() const { return entries_; }

    // The first entry of that name, -1: none.
    int indexOf(const std::string& name) const;

    int currentEntry() const { return current_; }

    void bringIntoSight(int entry);
    wxRect placeOf(int entry) const; // in the list's client area

    std::function<void(int)> onOpen;

#ifdef __WXMSW__
  protected:
    void DoEnable(bool enable) override;
    void OnDrawBackground(wxDC& dc, const wxRect& rect, std::size_t entry) const override;
    void OnDrawItem(wxDC& dc, const wxRect& rect, std::size_t entry) const override;
    wxCoord OnMeasureItem(std::size_t entry) const override;
    wxAccessible* CreateAccessible() override;
#endif

  private:
    void makeNative(wxWindow* parent, const wxSize& size);
    void showRows();
    int selectedRow() const;
    void openSelected();
    void openParent();
#ifdef __WXMSW__
    wxColour textColour(std::size_t entry) const;
    int iconLeft(const FolderList::Entry& folder) const;
    int nameLeftOf(const FolderList::Entry& folder) const;
    wxString cutNameAt(const wxPoint& at) const; // empty: none is cut there
#else
    void scrollToCurrent();
#endif

    std::vector<FolderList::Entry> entries_;
    int current_ = -1;
#ifdef __WXMSW__
    wxBitmapBundle closedFolder_;
    wxBitmapBundle openFolder_;
#else
    std::vector<wxDataViewItem> rows_;
#endif
};

} // namespace veldara
