// The system's print dialog as the user meets it.
#pragma once

#include "e2e/driver.h"

#include <string>

namespace veldara::test {

class PrintDialog {
  public:
    explicit PrintDialog(Driver& user) : user_(user) {}

    // Until the dialog is up and knows what that printer can do. Empty: until it is up.
    void waitFor(const std::string& printer);
    void waitUntilGone();

    // Where the dialog is the desktop's
    void choosePrinterByMouse(const std::string& name);
    void printByMouse();
    // One of the driver's own settings, by the text of the choice.
    void chooseDriverSetting(const std::string& choice);
    // Where it is that of Windows
    void choosePrinterByKey(const std::string& name);

    void printByKey();
    void cancelByKey() { user_.key(WXK_ESCAPE); }
    // Goes to the entry and fills it in: "2-3".
    void choosePages(const std::string& pages);
    void chooseCopies(const std::string& copies);
    int copies();

  private:
    void clickScreen(wxPoint at);
    void fill(int field, const std::string& text);

    Driver& user_;
    Hands hands_;
};

} // namespace veldara::test
