// A file that appears under its name only when it is whole: written beside it under a name that
// nobody can guess, brought to the disk, and renamed.
#pragma once

#include "platform/linux/descriptor.h"

#include <string>
#include <string_view>

namespace veldara {

class WholeFile {
  public:
    // Nothing is opened yet. A name that is a symbolic link stays one: what it points to is
    // replaced.
    explicit WholeFile(const std::string& path);
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;
    ~WholeFile(); // without finish(): the old file stays as it was

    // Each returns 0 or the errno of what failed. open() refuses a file that exists and may not be
    // written, and a name that is a folder. A new file gets the rights that the user's mask gives,
    // an old one keeps its own.
    int open(unsigned modeOfNew = 0666);
    int write(std::string_view bytes);
    int finish();

  private:
    void discard();

    std::string path_;
    std::string temporary_; // empty: none on the disk
    Descriptor file_;
};

} // namespace veldara
