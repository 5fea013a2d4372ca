#include "calibration/profile_messages.h"

namespace veldara {

Message onlyProfileMessage() {
    return {"You must have at least one edge clipping setting.  You can not delete your only one.",
            "Can not remove only preference", MessageIcon::none, MessageButtons::ok};
}

Message deleteProfileQuestion(const std::string& name) {
    return {"Are you sure that you want to delete the currently selected Edge Calibration Profile "
            "(" +
                name + ")?",
            "Confirm profile delete", MessageIcon::none, MessageButtons::yesNo};
}

} // namespace veldara
