// Messages of the calibration dialog about its profile list.
#pragma once

#include "platform/dialogs.h"

#include <string>

namespace veldara {

Message onlyProfileMessage();
Message deleteProfileQuestion(const std::string& name);

} // namespace veldara
