// A file descriptor that is closed with its owner, and reading a regular file through one.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

namespace veldara {

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    explicit operator bool() const { return number_ >= 0; }
    int number() const { return number_; }
    bool close(); // false, with errno set, where the system reports a late write error

  private:
    int number_ = -1;
};

// Opens a regular file for reading; not a folder, a pipe or a device, which could block or never
// end. An empty descriptor, with errno set, when it cannot be opened or is something else.
Descriptor openRegularFile(const std::string& path);

// All bytes of an open file, or errno's code (EFBIG when there are more than the limit).
int readWhole(const Descriptor& file, std::size_t limit, std::string& bytes);

} // namespace veldara
