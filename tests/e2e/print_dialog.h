// The desktop's print dialog as the user meets it, and what arrives at the printers of
// with_print_server.sh.
#pragma once

#include "e2e/driver.h"

#include <filesystem>
#include <string>

namespace veldara::test {

class PrintDialog {
  public:
    explicit PrintDialog(Driver& user) : user_(user) {}

    // Until the dialog is up and knows what that printer can do. Empty: until it is up.
    void waitFor(const std::string& printer);
    void waitUntilGone();

    void choosePrinterByMouse(const std::string& name);
    void printByMouse();
    void printByKey() { user_.key('P', wxMOD_ALT); }
    void cancelByKey() { user_.key(WXK_ESCAPE); }
    // Goes to the entry and fills it in.
    void choosePages(const std::string& pages);
    void chooseCopies(const std::string& copies);
    int copies();

  private:
    void clickScreen(wxPoint at);

    Driver& user_;
    Hands hands_;
};

// A job as the printer got it.
struct PrintedJob {
    std::filesystem::path document;
    std::string
        options; // "title=...", "copies=..." and the options of the job, blanks between them
    bool has(const std::string& option) const;
};

// The jobs that a printer has kept so far, in their order.
std::size_t countPrinted(const std::string& printer);
// Waits for the next one.
PrintedJob waitForPrinted(Driver& user, const std::string& printer, std::size_t number = 0);

} // namespace veldara::test
