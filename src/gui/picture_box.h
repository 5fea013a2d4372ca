// A native picture box: shows pixels of the screen one to one, or one of the program's drawings,
// and tells of the mouse in pixels of the picture. It can take the keyboard, so that a picture that
// is worked with the mouse can be worked with the arrow keys too.
#pragma once

#include "controls/picture.h"

#include <functional>
#include <memory>
#include <optional>

#include <wx/bitmap.h>
#include <wx/bmpbndl.h>
#include <wx/cursor.h>
#include <wx/window.h>

class wxGraphicsContext;

namespace veldara {

class PictureBox : public wxWindow {
  public:
    enum class Keyboard { ignored, taken };
    // mat: the darker ground that a photo is laid on; list: that of the desktop's lists, which the
    // picture has itself; trough: that of a bar that fills, which takes the place of the picture's
    // white.
    enum class Ground { window, mat, list, trough };

    PictureBox(wxWindow* parent, const wxString& name, const wxSize& smallest, Keyboard keyboard,
               Ground ground);

    void showPixels(std::shared_ptr<const Image> pixels);
    void showDrawing(Drawing drawing);

    // fourWay: the system's four-way move pointer, which the toolkit has no name for everywhere;
    // the cursor stands in for it elsewhere.
    void showPointer(const wxCursor& cursor, bool fourWay);
    // What is drawn over the pixels: a veil over everything outside of the part that counts, and
    // more width for the lines in it where one pixel of the screen is hardly seen.
    void showOverlay(const std::optional<PictureOverlay>& overlay);
    void dimOutside(bool dim);

    // The inner size in pixels of the screen (not the toolkit's units, which are larger on a
    // display with small pixels).
    wxSize sizeInPixels() const;

    // The ground's colour, and a call when the desktop's colours change.
    wxColour groundColour() const;
    std::function<void()> onColoursChanged;

    std::function<void(MouseButton, int, int)> onMouseDown;
    std::function<void()> onDoubleClick; // of the left button; its second press is not reported
    std::function<void(int, int)> onMouseMove;
    std::function<void(MouseButton, int, int)> onMouseUp;
    std::function<void(wxSize)> onResized;

    // An arrow key (WXK_UP ...) went down, or the last one that was down came up.
    std::function<void(int)> onArrowDown;
    std::function<void()> onArrowUp;

    bool AcceptsFocus() const override { return keyboard_ == Keyboard::taken; }
    bool AcceptsFocusFromKeyboard() const override { return keyboard_ == Keyboard::taken; }

  private:
    void bindMouse();
    void bindKeyboard();
    void paint();
    const wxBitmapBundle& drawingForSize();
    void drawFocus(wxDC& dc);
    void drawOverlay(wxDC& dc);
    void drawVeil(wxGraphicsContext& context) const;
    void pointerDown(wxMouseEvent& event, MouseButton button);
    void returnToolTip();
    void pointerUp(wxMouseEvent& event, MouseButton button);
    wxPoint inPicture(const wxMouseEvent& event) const;
    wxPoint pictureOrigin() const; // in pixels of the screen
    double scale() const;

    Keyboard keyboard_;
    Ground ground_;
    std::shared_ptr<const Image> pixels_;
    wxBitmap bitmap_;
    Drawing drawing_ = Drawing::none;
    std::optional<PictureOverlay> overlay_;
    bool dimOutside_ = false;
    wxBitmapBundle drawingBundle_;
    int drawingSide_ = 0;
    int arrowKey_ = 0;
    wxString toolTip_; // put aside while a button is down
};

} // namespace veldara
