// What arrives at the printers of with_print_server.sh.
#pragma once

#include "e2e/driver.h"
#include "e2e/test_photos.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace veldara::test {

// A job as the printer got it.
struct PrintedJob {
    std::filesystem::path document; // PDF, or PostScript from a system that draws its pages
    // "title=...", "copies=..." and the options of the job, blanks between them.
    std::string options;
    bool has(const std::string& option) const;

    // Of a job in PostScript: its pages as the printer has drawn them, 300 dots per inch.
    std::size_t drawnPages() const;
    ReadPicture drawnPage(std::size_t number) const; // from 1
};

constexpr int printerDotsPerInch = 300;

// The jobs that a printer has kept so far, in their order.
std::size_t countPrinted(const std::string& printer);
// Waits for the next one.
PrintedJob waitForPrinted(Driver& user, const std::string& printer, std::size_t number = 0);

} // namespace veldara::test
