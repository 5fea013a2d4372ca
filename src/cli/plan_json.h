// What --plan prints.
#pragma once

#include "cli/job_plan.h"

#include <string>
#include <string_view>

namespace veldara {

// The text between quotes; bytes that are no UTF-8 become the replacement character.
std::string jsonString(std::string_view text);

// The plan as a JSON object, a line for each member and each tile. pdf: the value of a last member
// of that name; empty: there is none.
std::string planJson(const JobPlan& plan, const std::string& pdf = {});

} // namespace veldara
