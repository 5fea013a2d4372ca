// The plan as JSON (RFC 8259): numbers with a point, text in valid UTF-8 whatever the names hold.
#pragma once

#include "cli/job_plan.h"

#include <string>
#include <string_view>

namespace veldara {

// The text between quotes; bytes that are no UTF-8 become the replacement character.
std::string jsonString(std::string_view text);

std::string planJson(const JobPlan& plan);

} // namespace veldara
