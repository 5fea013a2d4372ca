#include "gui/layout.h"

#include <algorithm>

namespace veldara {

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
        rows->AddGrowableCol(static_cast<std::size_t>(column), 1);
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

wxSizer* buttonRow(const wxWindow& window, std::initializer_list<wxWindow*> buttons) {
    sameWidth(buttons);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->AddStretchSpacer();
    bool first = true;
    for (wxWindow* button : buttons) {
        row->Add(button, wxSizerFlags().Border(wxLEFT, first ? 0 : window.FromDIP(spacing::row)));
        first = false;
    }
    return row;
}

void sameWidth(std::initializer_list<wxWindow*> widgets) {
    int widest = 0;
    for (const wxWindow* widget : widgets) {
        widest = std::max(widest, widget->GetBestSize().x);
    }
    for (wxWindow* widget : widgets) {
        widget->SetMinSize(wxSize(widest, widget->GetMinSize().y));
    }
}

void setContents(wxWindow& window, wxSizer* contents) {
    auto* edge = new wxBoxSizer(wxVERTICAL);
    edge->Add(contents,
              wxSizerFlags(1).Expand().Border(wxALL, window.FromDIP(spacing::windowEdge)));
    window.SetSizer(edge);
}

void wrapText(wxStaticText& text, int width) {
    text.Wrap(text.FromDIP(width));
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

void makeHeading(wxWindow& label) {
    label.SetFont(label.GetFont().Bold());
    label.InvalidateBestSize();
}

} // namespace veldara
