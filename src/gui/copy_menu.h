// The context menu "Copy" over figures, so that they can be pasted into a message.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <wx/window.h>

namespace veldara {

// Offers the menu over the parent's children of those names and over everything inside them. text:
// asked when the entry is chosen.
void offerCopyOf(wxWindow& parent, const std::vector<std::string>& names,
                 const std::function<std::string()>& text);

} // namespace veldara
