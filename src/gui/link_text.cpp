#include "gui/link_text.h"

#include "gui/layout.h"

#include <cmath>

#include <wx/dcbuffer.h>
#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/settings.h>

namespace veldara {

namespace {

// The desktop's colour of links where it can be read on the window's ground, which a desktop that
// knows no such colour does not see to.
wxColour linkColour(const wxColour& ground) {
    constexpr double readable = 0.25;
    const wxColour own = wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT);
    if (std::abs(own.GetLuminance() - ground.GetLuminance()) >= readable) {
        return own;
    }
    return ground.GetLuminance() < 0.5 ? wxColour(153, 204, 255) : wxColour(0, 90, 180);
}

} // namespace

LinkText::LinkText(wxWindow* parent, const wxString& name, int width) : width_(width) {
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
    text_ = wrappedText(*this, text, width_);
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
    const wxColour ground = GetParent()->GetBackgroundColour();
    dc.SetBackground(wxBrush(ground));
    dc.Clear();
    dc.SetFont(underlined());
    dc.SetTextForeground(linkColour(ground));
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
