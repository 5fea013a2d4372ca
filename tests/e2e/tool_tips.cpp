// The tool tip that is on the screen.
#include "e2e/driver.h"
#include "gui/native_text.h"

#ifdef __WXMSW__
#include <wx/msw/wrapcctl.h>
#else
#include <gtk/gtk.h>
#endif

namespace veldara::test {

namespace {

#ifdef __WXMSW__
wxString textOf(HWND tip) {
    wchar_t text[1024] = {};
    TOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.lpszText = text;
    if (SendMessageW(tip, TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&tool)) == 0) {
        return {};
    }
    SendMessageW(tip, TTM_GETTEXTW, 1024, reinterpret_cast<LPARAM>(&tool));
    return text;
}

wxString shownText() {
    HWND tip = nullptr;
    while ((tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(tip, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(tip) != 0) {
            return textOf(tip);
        }
    }
    return {};
}
#else
// The text of the first label inside.
void findText(GtkWidget* widget, gpointer result) {
    auto& text = *static_cast<wxString*>(result);
    if (GTK_IS_LABEL(widget) && gtk_widget_get_mapped(widget)) {
        text = wxString::FromUTF8(gtk_label_get_text(GTK_LABEL(widget)));
    } else if (GTK_IS_CONTAINER(widget) && text.empty()) {
        gtk_container_forall(GTK_CONTAINER(widget), findText, result);
    }
}

wxString shownText() {
    wxString text;
    GList* windows = gtk_window_list_toplevels();
    for (const GList* one = windows; one != nullptr; one = one->next) {
        auto* window = GTK_WINDOW(one->data);
        if (gtk_window_get_type_hint(window) == GDK_WINDOW_TYPE_HINT_TOOLTIP &&
            gtk_widget_get_mapped(GTK_WIDGET(window))) {
            findText(GTK_WIDGET(window), &text);
        }
    }
    g_list_free(windows);
    return text;
}
#endif

} // namespace

std::string Driver::shownToolTip() {
    return onWindowThread([] { return portableText(shownText()); });
}

void Driver::waitForToolTip(const std::string& windowName, const std::string& name,
                            wxPoint inWidget, const std::string& words) {
    // A list that has just been filled may still move below the pointer, and takes the tool tip
    // away with that; a person moves the pointer again.
    constexpr int attempts = 30;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        pointAt(windowName, name, inWidget);
        pointAt(windowName, name, inWidget + wxPoint(2, 1));
        for (int look = 0; look < 40; ++look) {
            if (shownToolTip() == words) {
                return;
            }
            pause(std::chrono::milliseconds(50));
        }
    }
    throw DriverError("The tool tip \"" + words + "\" does not come up.");
}

} // namespace veldara::test
