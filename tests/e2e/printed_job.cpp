#include "e2e/printed_job.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

namespace veldara::test {

namespace {

namespace fs = std::filesystem;

fs::path folderOf(const std::string& printer) {
    const char* folder = std::getenv("VELDARA_PRINTED");
    return fs::path(folder == nullptr ? "/nowhere" : folder) / printer;
}

std::vector<fs::path> jobsOf(const std::string& printer) {
    std::vector<fs::path> jobs;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folderOf(printer), ignored)) {
        if (entry.path().extension() == ".job") {
            jobs.push_back(entry.path());
        }
    }
    std::sort(jobs.begin(), jobs.end(), [](const fs::path& one, const fs::path& other) {
        return std::stoi(one.stem().string()) < std::stoi(other.stem().string());
    });
    return jobs;
}

fs::path pictureOf(const PrintedJob& job, std::size_t page) {
    fs::path file = job.document;
    file.replace_extension();
    file += "-" + std::to_string(page) + ".bmp";
    return file;
}

} // namespace

bool PrintedJob::has(const std::string& option) const {
    return (" " + options + " ").find(" " + option + " ") != std::string::npos;
}

std::size_t PrintedJob::drawnPages() const {
    std::size_t pages = 0;
    while (fs::exists(pictureOf(*this, pages + 1))) {
        ++pages;
    }
    return pages;
}

ReadPicture PrintedJob::drawnPage(std::size_t number) const {
    return readPicture(pictureOf(*this, number));
}

std::size_t countPrinted(const std::string& printer) {
    return jobsOf(printer).size();
}

PrintedJob waitForPrinted(Driver& user, const std::string& printer, std::size_t number) {
    user.waitUntil("the printer has printed", [&] { return jobsOf(printer).size() > number; });
    fs::path file = jobsOf(printer)[number];
    std::ifstream stream(file);
    PrintedJob job{file.replace_extension(".ps"),
                   std::string(std::istreambuf_iterator<char>(stream), {})};
    if (!fs::exists(job.document)) {
        job.document.replace_extension(".pdf");
    }
    std::replace(job.options.begin(), job.options.end(), '\n', ' ');
    return job;
}

} // namespace veldara::test
