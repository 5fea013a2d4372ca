// Writes down, in order, what a control tells its observer and which events it raises.
#pragma once

#include "controls/control.h"

#include <string>
#include <vector>

namespace veldara::test {

inline std::string nameOf(Property property) {
    switch (property) {
    case Property::visible:
        return "visible";
    case Property::enabled:
        return "enabled";
    case Property::caption:
        return "caption";
    case Property::toolTip:
        return "tool tip";
    case Property::value:
        return "value";
    case Property::items:
        return "items";
    case Property::range:
        return "range";
    case Property::picture:
        return "picture";
    case Property::overlay:
        return "overlay";
    case Property::pointer:
        return "pointer";
    case Property::focus:
        return "focus";
    case Property::refused:
        return "refused";
    }
    return "?";
}

class Watch {
  public:
    explicit Watch(Control& control) {
        control.observe([this](Property property) { log_.push_back(nameOf(property)); });
    }
    Handler event(const std::string& name) {
        return [this, name] { log_.push_back(name); };
    }
    // What has happened since the last call.
    std::vector<std::string> taken() {
        std::vector<std::string> log;
        log.swap(log_);
        return log;
    }

  private:
    std::vector<std::string> log_;
};

using Log = std::vector<std::string>;

} // namespace veldara::test
