// Files that appear under their final name only when they are complete: written beside it under a
// name that nobody can guess, flushed to the disk, and renamed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>

namespace veldara {

// A file being written, of any size: the bytes go straight to the disk. Until commit() the old file
// stays as it was, and without commit() nothing is left behind. A name that is a symbolic link
// stays one: the file that it points to is replaced. A replaced file passes its permissions on.
class WholeFile {
  public:
    enum class Rights { usual, ownerOnly }; // of a file that did not exist

    // Creates the temporary file. Throws FileError when the target is a folder or may not be
    // written, or its folder takes no file.
    explicit WholeFile(const std::filesystem::path& target, Rights rights = Rights::usual);
    WholeFile(WholeFile&& other) noexcept;
    WholeFile& operator=(WholeFile&& other) noexcept;
    ~WholeFile();

    // Appends. Throws FileError, for example when the disk is full.
    void write(std::span<const std::uint8_t> bytes);
    void write(std::string_view text);

    // Flushes, and puts the file in place. Throws FileError; the file is then given up. Where
    // another program holds one of the two files for a moment, as virus scanners do, it tries again
    // for about two seconds. Not to be called twice.
    void commit();

    // Removes the temporary file. Does nothing after commit().
    void giveUp() noexcept;

  private:
    struct State; // each system's own
    std::unique_ptr<State> state_;
};

// The same in one call. Throws FileError.
void writeWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);

// Beside the file, with sixteen random digits. Not to be guessed, so that nobody can put something
// under the name beforehand.
std::filesystem::path temporaryNameBeside(const std::filesystem::path& file);

} // namespace veldara
