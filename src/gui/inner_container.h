// A group box or panel inside a window. On Windows the widget that belongs to Alt and a letter is
// sought only in the container that is asked first, the innermost around the keyboard. Such a
// container passes the search on, so that the letter reaches every widget of the window.
#pragma once

#include <wx/window.h>

#ifdef __WXMSW__
#include <wx/msw/wrapwin.h>
#endif

namespace veldara {

template <typename Container>
class InnerContainer : public Container {
  public:
    using Container::Container;

#ifdef __WXMSW__
    bool MSWProcessMessage(WXMSG* message) override {
        return message->message != WM_SYSCHAR && Container::MSWProcessMessage(message);
    }
#else
  protected:
    // The toolkit would name the next widget after it.
    bool GTKWidgetNeedsMnemonic() const override {
        return false;
    }
#endif
};

} // namespace veldara
