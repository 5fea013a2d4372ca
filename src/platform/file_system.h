// The file-system object: folders, files, free space and text files, as the windows use them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veldara {

// Lines of a text file, from the first to the last.
class TextReader {
  public:
    virtual ~TextReader() = default;
    virtual bool atEndOfStream() = 0;
    virtual std::string readLine() = 0; // without its line end; throws Error
};

// A text file being written. Nothing stands under the final name before close() has succeeded, and
// a writer that is destroyed without close() leaves the old file as it was.
class TextWriter {
  public:
    virtual ~TextWriter() = default;
    virtual void writeLine(const std::string& line) = 0; // adds carriage return and line feed
    virtual void close() = 0;                            // throws Error
};

// Paths are UTF-8 text with the platform's separator. A name that is not valid text on disk comes
// and goes byte for byte.
class FileSystemObject {
  public:
    virtual ~FileSystemObject() = default;

    // Names of the files (not the folders) of a folder, in the order the system gives.
    virtual std::vector<std::string> files(const std::string& folder) = 0; // throws Error
    virtual bool fileExists(const std::string& path) = 0;                  // throws Error
    virtual bool folderExists(const std::string& path) = 0;                // throws Error
    virtual void createFolder(const std::string& path) = 0; // throws Error; the parent must exist
    // Bytes free for this user on the drive that the text names: a drive as Drives lists it.
    virtual std::uint64_t freeSpace(const std::string& drive) = 0;                   // throws Error
    virtual std::unique_ptr<TextReader> openTextFile(const std::string& path) = 0;   // throws Error
    virtual std::unique_ptr<TextWriter> createTextFile(const std::string& path) = 0; // throws Error
    // Copies a file that could not be read and is about to be replaced, so that nothing is lost.
    // The copy's name ends in ".unread", with a number where that is taken. Throws Error.
    virtual void keepCopy(const std::string& path) = 0;
};

// Makes file-system objects. Making one can fail where the system's component is missing.
class FileSystem {
  public:
    virtual ~FileSystem() = default;
    virtual std::unique_ptr<FileSystemObject> create() = 0; // throws Error
    // The same, or without that component an object that uses the system's own calls: for browsing
    // and reading, where nobody need know of the component.
    virtual std::unique_ptr<FileSystemObject> createOrSubstitute() { return create(); }
};

} // namespace veldara
