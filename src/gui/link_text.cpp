#include "gui/link_text.h"

#include <wx/dcbuffer.h>
#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/settings.h>

namespace veldara {

LinkText::LinkText(wxWindow* parent, const wxString& name) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    wxControl::Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                      wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE, wxDefaultValidator, name);
    SetCursor(wxCursor(wxCURSOR_HAND));
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { SetFocus(); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& event) {
        if (GetClientRect().Contains(event.GetPosition())) {
            open();
        }
    });
    // Enter would press the window's default button before the link sees it.
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_SPACE) {
            open();
        } else {
            event.Skip();
        }
    });
    const auto repaint = [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
}

void LinkText::setText(const wxString& text) {
    text_ = text;
    text_.Replace("\r\n", "\n");
    SetLabel(text_);
    InvalidateBestSize();
    SetMinSize(GetBestSize());
    Refresh();
}

wxSize LinkText::DoGetBestClientSize() const {
    wxClientDC dc(const_cast<LinkText*>(this));
    dc.SetFont(underlined());
    return dc.GetMultiLineTextExtent(text_) + FromDIP(wxSize(4, 2));
}

wxFont LinkText::underlined() const {
    return GetFont().Underlined();
}

void LinkText::paint() {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
    dc.Clear();
    dc.SetFont(underlined());
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT));
    dc.DrawLabel(text_, GetClientRect().Deflate(FromDIP(2), FromDIP(1)));
    if (HasFocus()) {
        wxRendererNative::Get().DrawFocusRect(this, dc, GetClientRect());
    }
}

void LinkText::open() {
    if (onOpen) {
        onOpen();
    }
}

} // namespace veldara
