// What every control has, and how a view follows it. A control here is a holder of properties with
// events; it knows no pixels, so that every handler of the program can be tested without a display.
#pragma once

#include <functional>
#include <string>
#include <utility>

namespace veldara {

// What has changed, for the observer.
enum class Property {
    visible,
    enabled,
    caption,
    toolTip,
    value,
    items,
    range,
    picture,
    overlay,
    pointer,
    focus,
    refused // the user entered what the control does not take
};

using Handler = std::function<void()>;

class Control {
  public:
    Control() = default;
    // name: that of the member which the control is ("cmdSaveNow"), by which a native widget can be
    // found in the running program.
    explicit Control(std::string name) : name_(std::move(name)) {}
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control() = default;

    const std::string& name() const { return name_; }
    bool visible() const { return visible_; }
    bool enabled() const { return enabled_; }
    const std::string& caption() const { return caption_; }
    const std::string& toolTip() const { return toolTip_; }

    void setVisible(bool visible) { assign(visible_, visible, Property::visible); }
    void setEnabled(bool enabled) { assign(enabled_, enabled, Property::enabled); }
    void setCaption(const std::string& caption) { assign(caption_, caption, Property::caption); }
    void setToolTip(const std::string& toolTip) { assign(toolTip_, toolTip, Property::toolTip); }

    // Asks the view to give the control the keyboard.
    void setFocus() { changed(Property::focus); }

    // There is one observer; an empty function removes it.
    void observe(std::function<void(Property)> observer) { observer_ = std::move(observer); }

  protected:
    // Whether the user can act on it: every userXxx function asks this first, because a native
    // event may arrive late.
    bool reachable() const { return enabled_ && visible_; }

    void changed(Property property) {
        if (observer_) {
            observer_(property);
        }
    }

    // Stores a value; notifies the observer and returns true only when it is a new one.
    template <typename T>
    bool assign(T& member, const T& value, Property property) {
        if (member == value) {
            return false;
        }
        member = value;
        changed(property);
        return true;
    }

    static void raise(const Handler& handler) {
        if (handler) {
            handler();
        }
    }

  private:
    std::string name_;
    bool visible_ = true;
    bool enabled_ = true;
    std::string caption_;
    std::string toolTip_;
    std::function<void(Property)> observer_;
};

} // namespace veldara
