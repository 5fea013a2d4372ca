// What the main window tells the user in message boxes.
#pragma once

#include "platform/dialogs.h"

#include <string>

namespace veldara {

// Browsing
Message driveNotAccessibleMessage();
Message folderNotKnownMessage(const std::string& folderName); // "Desktop", "My Documents"

// A photo that cannot be used; each names the file or says what is wrong with it.
Message photoTooSmallMessage();
Message photoNameMessage(const std::string& fileName);
Message photoMemoryMessage(const std::string& fileName);
Message photoUnreadableMessage(const std::string& reason);

// Layout and preview
Message invalidTileConfigurationMessage();
Message turnMemoryMessage();
Message previewMemoryMessage();
Message edgeCalibrationIntroduction();

// Hand-over to other windows and to the help
Message noImageSelectedMessage();
Message invalidPosterMessage();
Message helpMissingMessage();

// Anything else that went wrong, in a sentence of its own.
Message errorMessage(const std::string& sentence);

} // namespace veldara
