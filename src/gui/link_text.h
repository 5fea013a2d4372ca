// Words that are clicked to open something: underlined, in the desktop's link colour, as many lines
// as they need. Enter and the space bar do the same as a click.
#pragma once

#include <functional>

#include <wx/control.h>

namespace veldara {

class LinkText : public wxControl {
  public:
    // No line is longer than the width, in units at 100%.
    LinkText(wxWindow* parent, const wxString& name, int width);

    void setText(const wxString& text);
    std::function<void()> onOpen;

    bool AcceptsFocus() const override { return true; }

  protected:
    wxSize DoGetBestClientSize() const override;

  private:
    wxFont underlined() const;
    void paint();
    void open();

    int width_;
    wxString text_;
};

} // namespace veldara
