// What --plan prints.
#pragma once

#include "cli/job_plan.h"
#include "cli/pdf_poster.h"

#include <string>

namespace veldara {

// The plan as a JSON object, a line for each member, each tile and each page of the document, if
// there is to be one.
std::string planJson(const JobPlan& plan, const PdfPlan* pdf = nullptr);

} // namespace veldara
