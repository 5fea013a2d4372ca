#include "controls/window.h"

namespace veldara {

void Window::load() {
    if (!loaded_) {
        loaded_ = true;
        try {
            loadHandler();
        } catch (...) {
            loaded_ = false; // so that the next attempt runs the whole handler again
            throw;
        }
    }
}

void Window::unload() {
    if (!loaded_) {
        return;
    }
    loaded_ = false;
    unloadHandler();
    hide();
}

void Window::show() {
    load();
    if (!visible()) {
        setVisible(true);
        screen_.show(*this);
    }
}

void Window::showModal() {
    load();
    if (!visible()) {
        setVisible(true);
        screen_.showModal(*this);
    }
}

void Window::hide() {
    if (visible()) {
        setVisible(false);
        screen_.hide(*this);
    }
}

} // namespace veldara
