// A group box or panel inside a window. On Windows the letters of widgets are sought only in the
// container that is asked first: the innermost around the keyboard. Such a container lets the
// question pass, so that Alt and a letter reach every widget of the window.
#pragma once

#include <wx/window.h>

namespace veldara {

template <typename Container>
class InnerContainer : public Container {
  public:
    using Container::Container;

#ifdef __WXMSW__
    bool MSWProcessMessage(WXMSG*) override {
        return false;
    }
#endif
};

} // namespace veldara
