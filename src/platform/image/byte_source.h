// Where the bytes of a picture file come from: a file on a drive, or a block of memory.
// Codecs read through it at any position, so that none of them knows about files or paths.
// A file is read with ordinary calls, never mapped: one that shrinks while it is read ends early
// instead of ending the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <span>

namespace veldara {

class ByteSource {
  public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    virtual std::uint64_t size() const = 0;

    // Copies up to count bytes from that position; fewer at the end of the file. Throws Error with
    // the bare reason when the drive fails.
    virtual std::size_t readAt(std::uint64_t position, void* buffer, std::size_t count) = 0;

    // Exactly count bytes, or false.
    bool readFully(std::uint64_t position, void* buffer, std::size_t count) {
        return readAt(position, buffer, count) == count;
    }
};

// Throws Error with the bare reason ("the file does not exist" ...) when it cannot be opened.
std::unique_ptr<ByteSource> openFileBytes(const std::filesystem::path& file);

// Reads from memory that the caller keeps.
class MemoryBytes : public ByteSource {
  public:
    explicit MemoryBytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::uint64_t size() const override { return bytes_.size(); }
    std::size_t readAt(std::uint64_t position, void* buffer, std::size_t count) override;

  private:
    std::span<const std::uint8_t> bytes_;
};

} // namespace veldara
