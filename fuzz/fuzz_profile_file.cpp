#include "agreement.h"
#include "calibration/profile_file.h"
#include "platform/linux/text_files.h"

#include <sys/mman.h>
#include <unistd.h>

namespace veldara::fuzz {
namespace {

// The bytes as a file of the process, read through the function that the program uses.
class FileInMemory {
  public:
    explicit FileInMemory(const std::string& content) : number_(memfd_create("profiles", 0)) {
        require(number_ >= 0 && write(number_, content.data(), content.size()) ==
                                    static_cast<ssize_t>(content.size()),
                "a file in memory can be made");
    }
    ~FileInMemory() { close(number_); }
    FileInMemory(const FileInMemory&) = delete;
    FileInMemory& operator=(const FileInMemory&) = delete;

    ProfileFileContent read() const {
        LineReader reader("/proc/self/fd/" + std::to_string(number_));
        return readProfiles([&]() -> std::optional<std::string> {
            return reader.atEndOfStream() ? std::nullopt : std::optional(reader.readLine());
        });
    }

  private:
    int number_;
};

void checkContent(const ProfileFileContent& content) {
    if (content.status < 1) {
        require(content.status == profilesUnreadable || content.status == profileFileEmpty,
                "a status that says why nothing was read");
        require(content.profiles.empty(), "a refused file gives no profile");
        return;
    }
    require(content.profiles.size() <= mostProfiles, "no more profiles than the list takes");
    require(content.status == static_cast<int>(content.profiles.size()), "the status counts them");
    std::string written;
    for (const std::string& line : profileLines(content.profiles)) {
        written += line + "\r\n";
    }
    require(readProfileText(written).profiles == content.profiles,
            "a file that the program writes gives the same profiles");
}

} // namespace
} // namespace veldara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldara;
    const std::string text = fuzz::asText(data, size);
    const ProfileFileContent content = readProfileText(text);
    fuzz::checkContent(content);
    const ProfileFileContent fromFile = fuzz::FileInMemory(text).read();
    fuzz::require(fromFile.status == content.status && fromFile.profiles == content.profiles,
                  "a file reads as its text does");
    return 0;
}
