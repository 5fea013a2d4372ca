// The file types by the endings of names.
#pragma once

#include "platform/image/codec.h"

#include <optional>
#include <string>

namespace veldara {

// ".bmp", ".tif" or ".jpg".
std::string extensionOf(FileType type);

// The type by a name's last three characters, whatever their case; nothing for another ending.
// "a-jpg" is a JPEG by this rule, and "a.jpeg" is none.
std::optional<FileType> fileTypeByName(const std::string& name);

} // namespace veldara
