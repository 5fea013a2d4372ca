#include "gui/layout.h"

#include <algorithm>

#include <wx/arrstr.h>
#include <wx/dcclient.h>

namespace veldara {

namespace {

// Where a line that is too wide ends: behind its last blank that has room, or where one long word
// fills it, as the name of a file may do, behind a folder of its path.
std::size_t lineEnd(const wxString& line, std::size_t room) {
    const std::size_t blank = line.rfind(' ', room);
    if (blank != wxString::npos && blank > 0) {
        return blank + 1;
    }
    const std::size_t folder = line.find_last_of("/\\", room - 1);
    return folder != wxString::npos && folder > 0 ? folder + 1 : room;
}

} // namespace

GroupSizer::GroupSizer(wxStaticBox* box, int orientation)
    : box_(box), outer_(new wxStaticBoxSizer(box, wxVERTICAL)),
      inner_(new wxBoxSizer(orientation)) {
    const int edge = box->FromDIP(spacing::insideGroup);
    outer_->Add(inner_, wxSizerFlags(1).Expand().Border(wxALL, edge));
}

wxFlexGridSizer* labelledRows(const wxWindow& window, int columns) {
    auto* rows =
        new wxFlexGridSizer(columns, window.FromDIP(spacing::row), window.FromDIP(spacing::column));
    for (int column = 1; column < columns; column += 2) {
        rows->AddGrowableCol(static_cast<std::size_t>(column)); // each by the same length
    }
    return rows;
}

void addRow(wxFlexGridSizer& rows, wxWindow* label, wxWindow* widget) {
    rows.Add(label, wxSizerFlags().CentreVertical());
    rows.Add(widget, wxSizerFlags(1).CentreVertical().Expand());
}

void addRow(wxFlexGridSizer& rows, wxWindow* label, wxSizer* widgets) {
    rows.Add(label, wxSizerFlags().CentreVertical());
    rows.Add(widgets, wxSizerFlags(1).Expand());
}

std::vector<wxWindow*> inSystemOrder(std::vector<wxWindow*> buttons) {
#ifndef __WXMSW__
    std::reverse(buttons.begin(), buttons.end());
#endif
    return buttons;
}

wxSizer* buttonRow(const wxWindow& window, const std::vector<wxWindow*>& buttons) {
    sameWidth(buttons);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    wxWindow* before = nullptr;
    for (wxWindow* button : inSystemOrder(buttons)) {
        row->Add(button, wxSizerFlags().Border(
                             wxLEFT, before == nullptr ? 0 : window.FromDIP(spacing::row)));
        if (before != nullptr) {
            button->MoveAfterInTabOrder(before);
        }
        before = button;
    }
    return row;
}

int textLength(const wxWindow& window, int units) {
    constexpr int usualCharacterWidth = 8;
    return std::max(window.FromDIP(units), units * window.GetCharWidth() / usualCharacterWidth);
}

void setFieldLength(wxWindow& field, int units) {
#ifdef __WXMSW__
    // A higher field would not keep its text in the middle.
    const int height = wxDefaultCoord;
#else
    const int height = std::max(field.GetBestSize().y, field.GetCharHeight() + field.FromDIP(8));
#endif
    field.SetMinSize(wxSize(textLength(field, units), height));
}

void sameWidth(const std::vector<wxWindow*>& widgets) {
    int widest = 0;
    for (const wxWindow* widget : widgets) {
        widest = std::max(widest, widget->GetBestSize().x);
    }
    for (wxWindow* widget : widgets) {
        widget->SetMinSize(wxSize(widest, widget->GetMinSize().y));
    }
}

void makeNarrow(const std::vector<wxButton*>& buttons) {
    int widest = 0;
    for (const wxButton* button : buttons) {
        const int words = button->GetTextExtent(button->GetLabelText()).x;
        widest = std::max(widest, words + button->FromDIP(20));
    }
    for (wxButton* button : buttons) {
        button->SetMinSize(wxSize(widest, button->GetBestSize().y));
    }
}

void setContents(wxWindow& window, wxSizer* contents) {
    auto* edge = new wxBoxSizer(wxVERTICAL);
    edge->Add(contents,
              wxSizerFlags(1).Expand().Border(wxALL, window.FromDIP(spacing::windowEdge)));
    window.SetSizer(edge);
}

// (The toolkit's own wrapping gives up at a word that is wider than a line.)
wxString wrappedText(wxWindow& window, const wxString& text, int width) {
    const wxClientDC dc(&window);
    const int pixels = textLength(window, width);
    wxString result;
    for (wxString line : wxSplit(text, '\n', '\0')) {
        for (;;) {
            wxArrayInt ends;
            dc.GetPartialTextExtents(line, ends);
            const auto room = static_cast<std::size_t>(
                std::upper_bound(ends.begin(), ends.end(), pixels) - ends.begin());
            if (room >= line.length()) {
                break;
            }
            const std::size_t end = lineEnd(line, std::max<std::size_t>(room, 1));
            result += line.Left(end).Trim() + '\n';
            line = line.Mid(end).Trim(false);
        }
        result += line + '\n';
    }
    return result.RemoveLast();
}

void wrapText(wxStaticText& text, int width) {
    text.SetLabelText(wrappedText(text, text.GetLabelText(), width));
    text.SetMinSize(text.GetBestSize() + wxSize(text.FromDIP(spacing::column), 0));
}

double pixelsPerUnit(const wxWindow& window) {
#ifdef wxHAS_DPI_INDEPENDENT_PIXELS
    return window.GetContentScaleFactor();
#else
    static_cast<void>(window);
    return 1;
#endif
}

double displayScale(const wxWindow& window) {
    return window.FromDIP(100) / 100.0 * pixelsPerUnit(window);
}

// On Linux a label tells the size of its text in the new font only after it has come up.
void makeHeading(wxStaticText& label, float scale) {
    label.SetFont(label.GetFont().Bold().Scaled(scale));
    label.InvalidateBestSize();
    wxSize size = label.GetTextExtent(label.GetLabelText());
    size.IncTo(label.GetMinSize());
    label.SetMinSize(size);
}

} // namespace veldara
