// A fresh folder on the real disk that goes when the test does.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

namespace veldara::test {

// UTF-8 text as a path and back; bytes that are no text pass unchanged where the system lets them.
inline std::filesystem::path pathOf(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}
inline std::string textOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

class TempFolder {
  public:
    TempFolder() : TempFolder(std::filesystem::temp_directory_path()) {}

    // In memory where the system has a place for that, for tests with very many files.
    static TempFolder inMemory() {
        const std::filesystem::path shared = "/dev/shm";
        std::error_code ignored;
        return std::filesystem::is_directory(shared, ignored) ? TempFolder(shared) : TempFolder();
    }

    explicit TempFolder(const std::filesystem::path& parent) {
        std::random_device random;
        const std::string name =
            "veldara_test_" + std::to_string(random()) + std::to_string(random());
        path_ = std::filesystem::canonical(parent) / name;
        std::filesystem::create_directories(path_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::string text() const { return textOf(path_); }

    // The full path of a name in the folder, as text with the system's separator.
    std::string operator/(const std::string& name) const {
        return textOf((path_ / pathOf(name)).make_preferred());
    }

    std::string addFolder(const std::string& name) const {
        std::filesystem::create_directories(path_ / pathOf(name));
        return *this / name;
    }
    std::string addFile(const std::string& name, const std::string& content = {}) const {
        const std::filesystem::path file = path_ / pathOf(name);
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return *this / name;
    }
    std::string content(const std::string& name) const {
        std::ifstream file(path_ / pathOf(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::filesystem::path path_;
};

} // namespace veldara::test
