// What the main window says to the user: its message boxes, and what a screen reader speaks.
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
// The same for a photo that can be opened, but not from the list.
Message photoNotListedMessage(const std::string& fileName);
Message photoMemoryMessage(const std::string& fileName);
Message photoUnreadableMessage(const std::string& reason);

// What a screen reader calls the picture of the photo.
constexpr const char* noPhotoCaption = "No photo";
std::string photoCaption(const std::string& fileName, int width, int height); // in pixels

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
