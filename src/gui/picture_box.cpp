#include "gui/picture_box.h"

#include "gui/drawings.h"
#include "gui/layout.h"
#include "layout/window_place.h"

#include <algorithm>
#include <utility>

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/renderer.h>
#include <wx/settings.h>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace veldara {

namespace {

constexpr int largestDrawing = 320; // units of the toolkit

bool isArrow(int key) {
    return key == WXK_UP || key == WXK_DOWN || key == WXK_LEFT || key == WXK_RIGHT;
}

// A step from the window's own colour towards its text, so that it fits light and dark themes.
wxColour matColour() {
    const wxColour face = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
    const bool dark = face.GetLuminance() < 0.5;
    return face.ChangeLightness(dark ? 70 : 88);
}

// The toolkit only reads through the pointer, and only until its own copy is made.
wxImage sharedPixels(const Image& image) {
    return {image.width(), image.height(), const_cast<unsigned char*>(image.row(0)), true};
}

wxBitmap bitmapOf(const Image& image, double scale, PictureBox::Ground ground) {
    wxImage shared = sharedPixels(image);
    if (ground == PictureBox::Ground::trough) {
        shared = shared.Copy();
        const wxColour trough = matColour();
        shared.Replace(255, 255, 255, trough.Red(), trough.Green(), trough.Blue());
    }
    return {shared, wxBITMAP_SCREEN_DEPTH, scale};
}

} // namespace

PictureBox::PictureBox(wxWindow* parent, const wxString& name, const wxSize& smallest,
                       Keyboard keyboard, Ground ground)
    : keyboard_(keyboard), ground_(ground) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    wxWindow::Create(parent, wxID_ANY, wxDefaultPosition, smallest,
                     wxFULL_REPAINT_ON_RESIZE | wxWANTS_CHARS | wxBORDER_NONE, name);
    SetMinSize(smallest);
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        Refresh();
        if (onResized) {
            onResized(sizeInPixels());
        }
    });
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        event.Skip();
        Refresh();
        if (onColoursChanged) {
            onColoursChanged();
        }
    });
    bindMouse();
    if (keyboard_ == Keyboard::taken) {
        bindKeyboard();
    }
}

void PictureBox::showPixels(std::shared_ptr<const Image> pixels) {
    pixels_ = std::move(pixels);
    drawing_ = Drawing::none;
    bitmap_ = pixels_ && !pixels_->empty() ? bitmapOf(*pixels_, scale(), ground_) : wxNullBitmap;
    Refresh();
}

void PictureBox::showDrawing(Drawing drawing) {
    if (drawing == drawing_ && !pixels_) {
        return;
    }
    pixels_.reset();
    bitmap_ = wxNullBitmap;
    drawing_ = drawing;
    drawingSide_ = 0;
    Refresh();
}

void PictureBox::showOverlay(const std::optional<PictureOverlay>& overlay) {
    overlay_ = overlay;
    Refresh();
}

void PictureBox::dimOutside(bool dim) {
    dimOutside_ = dim;
    Refresh();
}

// A drawing in the photo's place stays of a size that looks like a sign, not like a photo.
const wxBitmapBundle& PictureBox::drawingForSize() {
    const wxSize room = GetClientSize();
    int side = std::max(1, std::min(room.x, room.y));
    if (ground_ == Ground::mat) {
        side = std::min(side * 3 / 4, FromDIP(largestDrawing));
    }
    if (side != drawingSide_) {
        drawingSide_ = side;
        drawingBundle_ = drawingBundle(drawing_, ToDIP(side));
    }
    return drawingBundle_;
}

wxSize PictureBox::sizeInPixels() const {
    const wxSize size = GetClientSize();
    return {wxRound(size.x * scale()), wxRound(size.y * scale())};
}

double PictureBox::scale() const {
    return pixelsPerUnit(*this);
}

void PictureBox::bindMouse() {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& e) { pointerDown(e, MouseButton::left); });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& e) {
        onDoubleClick ? onDoubleClick() : pointerDown(e, MouseButton::left);
    });
    Bind(wxEVT_MIDDLE_DOWN, [this](wxMouseEvent& e) { pointerDown(e, MouseButton::middle); });
    Bind(wxEVT_RIGHT_DOWN, [this](wxMouseEvent& e) { pointerDown(e, MouseButton::right); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent& e) { pointerUp(e, MouseButton::left); });
    Bind(wxEVT_MIDDLE_UP, [this](wxMouseEvent& e) { pointerUp(e, MouseButton::middle); });
    Bind(wxEVT_RIGHT_UP, [this](wxMouseEvent& e) { pointerUp(e, MouseButton::right); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (onMouseMove) {
            const wxPoint at = inPicture(event);
            onMouseMove(at.x, at.y);
        }
    });
    // Another window took the mouse (a message box came up): for the picture the button is up.
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) {
        returnToolTip();
        if (onMouseUp) {
            const wxPoint at = ScreenToClient(wxGetMousePosition());
            const wxPoint origin = pictureOrigin();
            onMouseUp(MouseButton::left, wxRound(at.x * scale()) - origin.x,
                      wxRound(at.y * scale()) - origin.y);
        }
    });
}

void PictureBox::bindKeyboard() {
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        const int key = event.GetKeyCode();
        if (key == WXK_TAB && !event.ControlDown() && !event.AltDown()) {
            Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                       : wxNavigationKeyEvent::IsForward);
            return;
        }
        if (!isArrow(key) || event.HasAnyModifiers()) {
            event.Skip();
            return;
        }
        if (key != arrowKey_ && onArrowDown) { // the keyboard repeats a key that is held
            arrowKey_ = key;
            onArrowDown(key);
        }
    });
    const auto released = [this] {
        if (arrowKey_ != 0) {
            arrowKey_ = 0;
            if (onArrowUp) {
                onArrowUp();
            }
        }
    };
    Bind(wxEVT_KEY_UP, [this, released](wxKeyEvent& event) {
        if (event.GetKeyCode() == arrowKey_) {
            released();
        }
        event.Skip();
    });
    Bind(wxEVT_KILL_FOCUS, [this, released](wxFocusEvent& event) {
        released();
        Refresh();
        event.Skip();
    });
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    });
}

void PictureBox::pointerDown(wxMouseEvent& event, MouseButton button) {
    if (AcceptsFocus()) {
        SetFocus();
    }
    if (!HasCapture()) {
        CaptureMouse();
        toolTip_ = GetToolTipText(); // it would cover what is being dragged
        UnsetToolTip();
    }
    if (onMouseDown) {
        const wxPoint at = inPicture(event);
        onMouseDown(button, at.x, at.y);
    }
}

void PictureBox::pointerUp(wxMouseEvent& event, MouseButton button) {
    if (HasCapture()) {
        ReleaseMouse();
        returnToolTip();
    }
    if (onMouseUp) {
        const wxPoint at = inPicture(event);
        onMouseUp(button, at.x, at.y);
    }
}

void PictureBox::returnToolTip() {
    if (!toolTip_.empty()) {
        SetToolTip(toolTip_);
        toolTip_.clear();
    }
}

void PictureBox::showPointer(const wxCursor& cursor, bool fourWay) {
    SetCursor(cursor);
#ifdef __WXGTK__
    GdkWindow* window = gtk_widget_get_window(GetHandle());
    if (fourWay && window != nullptr) {
        GdkCursor* move = gdk_cursor_new_from_name(gdk_window_get_display(window), "move");
        gdk_window_set_cursor(GTKGetDrawingWindow() != nullptr ? GTKGetDrawingWindow() : window,
                              move);
        if (move != nullptr) {
            g_object_unref(move);
        }
    }
#else
    static_cast<void>(fourWay);
#endif
}

wxPoint PictureBox::inPicture(const wxMouseEvent& event) const {
    const wxPoint origin = pictureOrigin();
    return {wxRound(event.GetX() * scale()) - origin.x, wxRound(event.GetY() * scale()) - origin.y};
}

wxPoint PictureBox::pictureOrigin() const {
    if (!pixels_) {
        return {0, 0};
    }
    const wxSize room = sizeInPixels();
    const auto aligned = [this](int pixel) { // where a unit of the toolkit begins
        return wxRound(wxRound(pixel / scale()) * scale());
    };
    return {aligned(std::max(0, (room.x - pixels_->width()) / 2)),
            aligned(std::max(0, (room.y - pixels_->height()) / 2))};
}

wxColour PictureBox::groundColour() const {
    switch (ground_) {
    case Ground::window:
        return GetParent()->GetBackgroundColour();
    case Ground::list:
        return wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
    default:
        return matColour();
    }
}

void PictureBox::paint() {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(wxBrush(groundColour()));
    dc.Clear();
    if (bitmap_.IsOk()) {
        const wxPoint origin = pictureOrigin();
        dc.DrawBitmap(bitmap_, wxRound(origin.x / scale()), wxRound(origin.y / scale()));
        if (overlay_) {
            drawOverlay(dc);
        }
    } else if (drawing_ != Drawing::none) {
        const wxBitmap picture = drawingForSize().GetBitmapFor(this);
        const wxSize room = GetClientSize();
        const wxSize size = picture.GetLogicalSize();
        dc.DrawBitmap(picture, (room.x - size.x) / 2, (room.y - size.y) / 2, true);
    }
    if (HasFocus() && keyboard_ == Keyboard::taken) {
        drawFocus(dc);
    }
}

// Lines are drawn by the picture itself, one of its pixels wide; on a display with small pixels the
// rest of their width is added here, to the pixel, so that all of them are alike.
void PictureBox::drawOverlay(wxDC& dc) {
    const int width = lineWidth(displayScale(*this));
    if (!dimOutside_ && width == 1) {
        return;
    }
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!context) {
        return;
    }
    const wxPoint origin = pictureOrigin();
    context->Scale(1 / scale(), 1 / scale());
    context->Translate(origin.x, origin.y);
    context->SetPen(*wxTRANSPARENT_PEN);
    if (dimOutside_) {
        drawVeil(*context);
    }
    if (width == 1) {
        return;
    }
    context->SetBrush(wxBrush(wxColour(255, 0, 0)));
    const PictureOverlay& part = *overlay_;
    for (const int column : part.columns) {
        context->DrawRectangle(lineStart(column, width, part.left, part.right), part.top, width,
                               part.bottom + 1 - part.top);
    }
    for (const int row : part.rows) {
        context->DrawRectangle(part.left, lineStart(row, width, part.top, part.bottom),
                               part.right + 1 - part.left, width);
    }
}

void PictureBox::drawVeil(wxGraphicsContext& context) const {
    constexpr unsigned char strength = 140;
    context.SetBrush(wxBrush(wxColour(0, 0, 0, strength)));
    const auto fill = [&](int left, int top, int right, int bottom) { // right, bottom: behind it
        if (right > left && bottom > top) {
            context.DrawRectangle(left, top, right - left, bottom - top);
        }
    };
    const PictureOverlay& part = *overlay_;
    const int right = pixels_->width();
    fill(0, 0, right, part.top);
    fill(0, part.bottom + 1, right, pixels_->height());
    fill(0, part.top, part.left, part.bottom + 1);
    fill(part.right + 1, part.top, right, part.bottom + 1);
}

void PictureBox::drawFocus(wxDC& dc) {
    wxRect edge = GetClientRect();
    edge.Deflate(FromDIP(1));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(
        wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT), FromDIP(2), wxPENSTYLE_SOLID));
    dc.DrawRectangle(edge);
}

} // namespace veldara
