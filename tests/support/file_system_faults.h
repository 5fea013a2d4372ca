// Switches for every way in which a file system can fail, shared by the fake ones.
#pragma once

#include <cstdint>
#include <optional>

namespace veldara::test {

struct FileSystemFaults {
    bool creationFails = false;         // the object itself cannot be made
    bool substituteWorks = false;       // one without the system's component can be made
    bool listingFails = false;          // files()
    bool fileExistsFails = false;       // throws instead of answering
    bool folderExistsFails = false;     // the same
    bool createFolderFails = false;     //
    bool freeSpaceFails = false;        //
    bool openTextFileFails = false;     //
    bool createTextFileFails = false;   //
    bool keepCopyFails = false;         //
    bool readLineFails = false;         // the reader opens, and its first line cannot be read
    bool writeLineFails = false;        // the writer opens, and takes no line
    bool closeFails = false;            // the writer takes lines, and cannot finish
    std::optional<std::uint64_t> space; // answers freeSpace() instead of the disk
};

} // namespace veldara::test
