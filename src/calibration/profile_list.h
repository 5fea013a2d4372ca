// Rules for editing a list of edge profiles.
#pragma once

#include <string>
#include <string_view>

namespace veldara {

// A name that the profile file can hold: characters that would end the name or the line become
// blanks.
std::string profileName(std::string_view entered);

// Where the profile at `position` stands once the one at `deleted` has gone and `count` are left;
// for the deleted one itself, where its successor stands (the last one's: the one before).
int positionAfterDelete(int position, int deleted, int count);

} // namespace veldara
