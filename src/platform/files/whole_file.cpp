// What is the same on every system; the class is in the file that has the system's name.
#include "platform/files/whole_file.h"

#include <random>
#include <string>

namespace veldara {

std::filesystem::path temporaryNameBeside(const std::filesystem::path& file) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::random_device random;
    std::string name = ".veldara-";
    for (int i = 0; i < 16; ++i) {
        name += digits[random() % digits.size()];
    }
    return file.parent_path() / (name + ".tmp");
}

void writeWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes) {
    WholeFile writer(file);
    writer.write(bytes);
    writer.commit();
}

} // namespace veldara
