// The distances that all windows share, so that they look like one family, and the few arrangements
// that they have in common. Lengths are in units of the toolkit at 100%.
#pragma once

#include <vector>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/window.h>

namespace veldara {

namespace spacing {
constexpr int windowEdge = 14; // between a window's edge and its contents
constexpr int group = 12;      // between groups
constexpr int row = 6;         // between rows of one group
constexpr int close = 4;       // between things that belong together
constexpr int column = 8;      // between a label and what it labels
constexpr int insideGroup = 10;
} // namespace spacing

// A group box's sizer: things are added to the inner sizer, which keeps the distance to the frame.
class GroupSizer {
  public:
    GroupSizer(wxStaticBox* box, int orientation);
    wxSizer* outer() const { return outer_; }
    wxBoxSizer* inner() const { return inner_; }
    wxStaticBox* box() const { return box_; }

  private:
    wxStaticBox* box_;
    wxStaticBoxSizer* outer_;
    wxBoxSizer* inner_;
};

// Labels at the left, their widgets at the right; the second column takes the extra width.
wxFlexGridSizer* labelledRows(const wxWindow& window, int columns = 2);

// Adds a label and its widget to such rows.
void addRow(wxFlexGridSizer& rows, wxWindow* label, wxWindow* widget);
void addRow(wxFlexGridSizer& rows, wxWindow* label, wxSizer* widgets);

// Buttons, the one that accepts first, in the system's own order: this one on Windows, the other
// way round on other desktops.
std::vector<wxWindow*> inSystemOrder(std::vector<wxWindow*> buttons);

// Buttons in a row at the right-hand end, in that order and with Tab going through them so, all of
// them as wide as the widest. The first of them is the one that accepts.
wxSizer* buttonRow(const wxWindow& window, const std::vector<wxWindow*>& buttons);

// A length in pixels that text is to fit in: longer where the desktop's text is larger than usual.
int textLength(const wxWindow& window, int units);

// Makes a field at least as long as that, and as high as its text. (On Linux the toolkit makes it
// the lower the larger the desktop's text is.)
void setFieldLength(wxWindow& field, int units);

// Gives the widgets the width of the widest.
void sameWidth(const std::vector<wxWindow*>& widgets);

// Makes buttons as narrow as their words allow, all of one width: a desktop gives each button the
// room of a long word.
void makeNarrow(const std::vector<wxButton*>& buttons);

// Adds the contents with the distance from the window's edge and makes them the window's sizer.
void setContents(wxWindow& window, wxSizer* contents);

// A text broken into lines of at most a width in units at 100%, as textLength() has it, when it
// stands in that window.
wxString wrappedText(wxWindow& window, const wxString& text, int width);

// Breaks a label's text in that way. Some systems draw a line a little wider than they say it is,
// so a little room stays free at its end.
void wrapText(wxStaticText& text, int width);

// How many pixels of the screen one unit of the toolkit is: more than 1 only where the toolkit
// hides the screen's scale.
double pixelsPerUnit(const wxWindow& window);

// How many pixels of the screen a length of one pixel at 100% is.
double displayScale(const wxWindow& window);

// A heading: the window's font, bold, and so much larger.
void makeHeading(wxStaticText& label, float scale = 1);

} // namespace veldara
