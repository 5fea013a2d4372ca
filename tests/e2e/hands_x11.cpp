// In an X display: the XTEST extension, over a connection of its own. (The toolkit's own simulator
// sleeps 50 to 75 ms in the window thread for every act.)
#include "e2e/driver.h"
#include "e2e/hands.h"

#ifndef __WXMSW__

#include <cctype>
#include <cstdlib>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xfixes.h>
#include <X11/keysym.h>
#include <wx/defs.h>
#include <wx/utils.h>

namespace veldara::test {

struct Hands::Connection {
    Connection() : display(XOpenDisplay(nullptr)) {}
    ~Connection() {
        if (display != nullptr) {
            XCloseDisplay(display);
        }
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void button(bool down, unsigned number = 1) {
        XTestFakeButtonEvent(display, number, down ? True : False, CurrentTime);
    }

    void click() {
        button(true);
        button(false);
    }

    void symbol(KeySym symbol, bool down) {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), down ? True : False,
                          CurrentTime);
    }

    // The first number of a window's property, 0 where it has none.
    unsigned long property(Window window, const char* name, Atom type) const {
        Atom found = None;
        int bits = 0;
        unsigned long count = 0;
        unsigned long left = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, 1, False, type,
                           &found, &bits, &count, &left, &value);
        const unsigned long number = count > 0 ? *reinterpret_cast<unsigned long*>(value) : 0;
        if (value != nullptr) {
            XFree(value);
        }
        return number;
    }

    bool isShown(Window window) const {
        XWindowAttributes attributes{};
        return XGetWindowAttributes(display, window, &attributes) != 0 &&
               attributes.map_state == IsViewable;
    }

    // What was put in has reached the display, and its events have been sent to the program.
    void finish() { XSync(display, False); }

    Display* display;
};

namespace {

KeySym symbolOf(int keyCode) {
    switch (keyCode) {
    case WXK_RETURN:
        return XK_Return;
    case WXK_ESCAPE:
        return XK_Escape;
    case WXK_TAB:
        return XK_Tab;
    case WXK_BACK:
        return XK_BackSpace;
    case WXK_HOME:
        return XK_Home;
    case WXK_END:
        return XK_End;
    case WXK_LEFT:
        return XK_Left;
    case WXK_RIGHT:
        return XK_Right;
    case WXK_UP:
        return XK_Up;
    case WXK_DOWN:
        return XK_Down;
    case WXK_PAGEUP:
        return XK_Page_Up;
    case WXK_PAGEDOWN:
        return XK_Page_Down;
    case WXK_F5:
        return XK_F5;
    default:
        break;
    }
    if (keyCode < WXK_SPACE || keyCode >= WXK_DELETE) {
        throw DriverError("The test's keyboard has no key " + std::to_string(keyCode) + ".");
    }
    return static_cast<KeySym>(std::tolower(keyCode)); // printable ASCII is its own symbol
}

bool needsShift(Display* display, char character) {
    const auto symbol = static_cast<KeySym>(static_cast<unsigned char>(character));
    return XkbKeycodeToKeysym(display, XKeysymToKeycode(display, symbol), 0, 0) != symbol;
}

} // namespace

Hands::Hands() : connection_(std::make_unique<Connection>()) {
    int ignored = 0;
    if (connection_->display == nullptr ||
        XTestQueryExtension(connection_->display, &ignored, &ignored, &ignored, &ignored) == 0) {
        throw DriverError("This display takes no simulated input.");
    }
}

Hands::~Hands() = default;

void Hands::moveTo(wxPoint at) {
    XTestFakeMotionEvent(connection_->display, -1, at.x, at.y, CurrentTime);
    connection_->finish();
}

void Hands::press() {
    connection_->button(true);
    connection_->finish();
}

void Hands::release() {
    connection_->button(false);
    connection_->finish();
}

// Down and up go to the display in one piece. With a busy machine's pause between them a click
// would be a long press, which closes the list that it has opened, and a key would repeat.
void Hands::click() {
    connection_->click();
    connection_->finish();
}

void Hands::doubleClick() {
    connection_->click();
    connection_->click();
    connection_->finish();
}

void Hands::rightClick() {
    connection_->button(true, 3);
    connection_->button(false, 3);
    connection_->finish();
}

// The wheel is two buttons, one for each direction.
void Hands::turnWheel(int notches) {
    for (int i = 0; i < std::abs(notches); ++i) {
        connection_->button(true, notches > 0 ? 4 : 5);
        connection_->button(false, notches > 0 ? 4 : 5);
    }
    connection_->finish();
}

std::string Hands::pointerName() const {
    XFixesCursorImage* image = XFixesGetCursorImage(connection_->display);
    if (image == nullptr) {
        return {};
    }
    std::string name = image->name == nullptr ? std::string() : image->name;
    XFree(image);
    return name;
}

void Hands::key(int keyCode, int modifiers) {
    const auto modify = [&](bool down) {
        if ((modifiers & wxMOD_ALT) != 0) {
            connection_->symbol(XK_Alt_L, down);
        }
        if ((modifiers & wxMOD_CONTROL) != 0) {
            connection_->symbol(XK_Control_L, down);
        }
        if ((modifiers & wxMOD_SHIFT) != 0) {
            connection_->symbol(XK_Shift_L, down);
        }
    };
    const KeySym symbol = symbolOf(keyCode);
    modify(true);
    connection_->symbol(symbol, true);
    connection_->symbol(symbol, false);
    modify(false);
    connection_->finish();
}

void Hands::type(const std::string& ascii) {
    for (const char character : ascii) {
        const auto code = static_cast<unsigned char>(character);
        const bool shift = needsShift(connection_->display, character);
        key(std::isalpha(code) != 0 ? std::toupper(code) : code, shift ? wxMOD_SHIFT : wxMOD_NONE);
    }
}

std::string Hands::activeTitle() const {
    Display* display = connection_->display;
    XGrabServer(display); // no window goes while it is looked at
    const Window active =
        connection_->property(DefaultRootWindow(display), "_NET_ACTIVE_WINDOW", XA_WINDOW);
    char* name = nullptr;
    if (active != None && connection_->isShown(active)) {
        XFetchName(display, active, &name);
    }
    XUngrabServer(display);
    connection_->finish();
    std::string title;
    if (name != nullptr) {
        title = name;
        XFree(name);
    }
    return title;
}

bool Hands::seesOpenList() const {
    Display* display = connection_->display;
    XGrabServer(display); // no window goes while they are looked at
    Window root = None;
    Window parent = None;
    Window* windows = nullptr;
    unsigned int count = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count);
    bool open = false;
    for (unsigned int i = 0; i < count; ++i) {
        const Atom kind = connection_->property(windows[i], "_NET_WM_WINDOW_TYPE", XA_ATOM);
        for (const char* list : {"_NET_WM_WINDOW_TYPE_COMBO", "_NET_WM_WINDOW_TYPE_POPUP_MENU",
                                 "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU"}) {
            open = open ||
                   (kind == XInternAtom(display, list, False) && connection_->isShown(windows[i]));
        }
    }
    XFree(windows);
    XUngrabServer(display);
    connection_->finish();
    return open;
}

bool Hands::hasMoreForProgram() {
    // What the display has sent so far is on its way; its answer comes behind all of it.
    auto* display = static_cast<Display*>(wxGetDisplay());
    XSync(display, False);
    return XPending(display) > 0;
}

} // namespace veldara::test

#endif
