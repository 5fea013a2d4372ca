// A copy of a photo that the window's file list takes, for a photo that it does not: of another
// kind, or with another ending.
#pragma once

#include "platform/dialogs.h"
#include "platform/image/codec.h"
#include "platform/image/image.h"
#include "platform/stop_flag.h"
#include "platform/stoppable_work.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldara {

// Whether the name ends like a kind of picture that can be read (InputFormat), whatever its case.
bool hasPictureEnding(const std::string& name);

// What the copy of a photo with that name and content is called: ".jpg" in place of its ending for
// a JPEG, else ".tif". A name that `taken` knows gets a number: "IMG_0001 (2).tif".
std::string photoCopyName(const std::string& photoName, const ImageHeader& header,
                          const std::function<bool(const std::string& name)>& taken);

// The offer, which names both.
Message photoCopyOffer(const std::string& photoName, const std::string& copyName);

// A copy in the making, step by step, so that the window can show how far it is and stop it.
class CopySteps {
  public:
    CopySteps() = default;
    CopySteps(const CopySteps&) = delete;
    CopySteps& operator=(const CopySteps&) = delete;
    virtual ~CopySteps() = default;

    virtual bool done() const = 0;
    virtual double fraction() const = 0; // done so far, 0 to 1

    // Some more of it. Throws Error.
    virtual void step() = 0;
};

// Makes the copy piece by piece: a JPEG byte for byte, any other picture as a lossless TIFF,
// upright, with its colour profile and its resolution. The file appears whole, with the last step,
// or not at all.
class PhotoCopy : public CopySteps {
  public:
    // Decodes the first rows, which may take seconds where a picture can only be decoded whole.
    // Throws Error when the photo cannot be read.
    PhotoCopy(const std::filesystem::path& photo, std::filesystem::path target);

    bool done() const override { return done_; }
    double fraction() const override;
    // Refuses to replace what has come into being under the target's name.
    void step() override;

  private:
    void readRows();
    void finish(const std::vector<std::uint8_t>& bytes);

    std::filesystem::path photo_;
    std::filesystem::path target_;
    std::unique_ptr<RowReader> reader_;
    std::unique_ptr<RowEncoder> encoder_; // none: byte for byte
    int nextRow_ = 0;                     // the first that is not encoded
    Image rows_;                          // from there on
    bool done_ = false;
};

// Whether files can be made in that folder: found out by making one, which is removed again.
bool mayWriteIn(const std::filesystem::path& folder);

// What opening such a photo does with the disk; tests replace it.
struct PhotoCopyHooks {
    std::function<ImageHeader(const std::filesystem::path& photo)> readHeader;
    std::function<bool(const std::filesystem::path& folder)> mayWriteIn;
    // Throws Error, or WorkStopped after the flag was set.
    std::function<std::unique_ptr<CopySteps>(const std::filesystem::path& photo,
                                             const std::filesystem::path& target,
                                             const StopFlag& stop)>
        begin;
};

// The copy above, whose beginning cannot be stopped.
PhotoCopyHooks realPhotoCopy();

// The same on a thread that is left when the flag is set.
PhotoCopyHooks realPhotoCopy(StoppableWork& decoding);

} // namespace veldara
