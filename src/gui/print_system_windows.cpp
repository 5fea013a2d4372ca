// Printing on Windows: the system's print dialog, and the sheets drawn on the printer in bands.
#include "gui/native_print_system.h"

#ifdef __WXMSW__

#include "gui/native_text.h"
#include "gui/page_drawing.h"
#include "platform/error.h"
#include "printing/print_check.h"
#include "sheets/sheet_page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <cwchar>
#include <type_traits>
#include <utility>
#include <vector>

#include <winspool.h>
#include <wx/cmndata.h>
#include <wx/dcprint.h>
#include <wx/msw/dcprint.h>
#include <wx/msw/printdlg.h>
#include <wx/msw/wrapwin.h>
#include <wx/paper.h>
#include <wx/printdlg.h>

namespace veldara {

namespace {

constexpr double tenths = 10; // of a millimetre: the system's lengths of paper

double pointsOfTenths(double length) {
    return length / tenths * pointsPerMillimetre;
}
int tenthsOfPoints(double length) {
    return static_cast<int>(std::lround(length / pointsPerMillimetre * tenths));
}

// The system's sentence for what has just failed.
Error systemError(const std::string& what) {
    const DWORD code = ::GetLastError();
    const std::string reason = portableText(wxString(wxSysErrorMsgStr(code)));
    return Error(code == 0 ? what : what + " (" + reason + ")");
}

// Asks for a list of the printer's that is as long as it says itself.
template <typename Entry>
std::vector<Entry> capabilities(const std::wstring& printer, WORD which, std::size_t each) {
    const int count = ::DeviceCapabilitiesW(printer.c_str(), nullptr, which, nullptr, nullptr);
    if (count <= 0) {
        return {};
    }
    std::vector<Entry> list(static_cast<std::size_t>(count) * each);
    if (::DeviceCapabilitiesW(printer.c_str(), nullptr, which,
                              reinterpret_cast<LPWSTR>(list.data()), nullptr) != count) {
        return {};
    }
    return list;
}

// A driver's settings: its own bytes follow the system's.
class DriverSettings {
  public:
    // As the dialog left them. Throws Error when there are none.
    explicit DriverSettings(const wxPrintData& data) {
        wxPrintData settings(data);
        settings.ConvertToNative();
        auto* native = static_cast<wxWindowsPrintNativeData*>(settings.GetNativeData());
        const void* locked =
            native->GetDevMode() == nullptr ? nullptr : ::GlobalLock(native->GetDevMode());
        if (locked == nullptr) {
            throw Error("The printer's driver has no settings.");
        }
        const auto* mode = static_cast<const DEVMODEW*>(locked);
        bytes_.resize(std::size_t{mode->dmSize} + mode->dmDriverExtra);
        std::memcpy(bytes_.data(), mode, bytes_.size());
        ::GlobalUnlock(native->GetDevMode());
    }

    DEVMODEW& mode() { return *reinterpret_cast<DEVMODEW*>(bytes_.data()); }

    // identifier: of a paper that the printer has; 0: none has that size.
    void setPaper(short identifier, double width, double height) {
        DEVMODEW& set = mode();
        const bool lying = width > height;
        set.dmFields |= DM_ORIENTATION | DM_PAPERSIZE | DM_DUPLEX | DM_SCALE;
        set.dmOrientation = lying ? DMORIENT_LANDSCAPE : DMORIENT_PORTRAIT;
        set.dmDuplex = DMDUP_SIMPLEX;
        set.dmScale = 100;
        set.dmPaperSize = identifier == 0 ? short{DMPAPER_USER} : identifier;
        set.dmFields &= ~static_cast<DWORD>(DM_FORMNAME);
        if (identifier == 0) {
            set.dmFields |= DM_PAPERWIDTH | DM_PAPERLENGTH;
            set.dmPaperWidth = static_cast<short>(tenthsOfPoints(std::min(width, height)));
            set.dmPaperLength = static_cast<short>(tenthsOfPoints(std::max(width, height)));
        } else {
            set.dmFields &= ~static_cast<DWORD>(DM_PAPERWIDTH | DM_PAPERLENGTH);
        }
    }

  private:
    std::vector<unsigned char> bytes_;
};

struct DeleteContext {
    void operator()(HDC context) const { ::DeleteDC(context); }
};
using Context = std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext>;

// What the printer cannot reach on the paper that it is set to, seen by a page in portrait.
std::array<double, 4> whiteOf(HDC context) {
    const auto points = [&](int dots, int perInch) {
        return dots * pointsPerInch / ::GetDeviceCaps(context, perInch);
    };
    const int left = ::GetDeviceCaps(context, PHYSICALOFFSETX);
    const int top = ::GetDeviceCaps(context, PHYSICALOFFSETY);
    const int right =
        ::GetDeviceCaps(context, PHYSICALWIDTH) - ::GetDeviceCaps(context, HORZRES) - left;
    const int bottom =
        ::GetDeviceCaps(context, PHYSICALHEIGHT) - ::GetDeviceCaps(context, VERTRES) - top;
    return {points(top, LOGPIXELSY), points(std::max(right, 0), LOGPIXELSX),
            points(std::max(bottom, 0), LOGPIXELSY), points(left, LOGPIXELSX)};
}

// What the printer takes, and for each of its papers the number that the driver knows it by.
struct Described {
    PrinterFacts facts;
    std::vector<WORD> papers; // as long as facts.papers
};

Described describe(const std::wstring& printer, const wxPrintData& data, double width,
                   double height) {
    constexpr std::size_t nameLength = 64;
    Described described;
    described.facts.name = portableText(wxString(printer));
    const std::vector<WORD> numbers = capabilities<WORD>(printer, DC_PAPERS, 1);
    const std::vector<POINT> sizes = capabilities<POINT>(printer, DC_PAPERSIZE, 1);
    const std::vector<wchar_t> names = capabilities<wchar_t>(printer, DC_PAPERNAMES, nameLength);
    for (std::size_t i = 0; i < numbers.size() && i < sizes.size(); ++i) {
        const wchar_t* name = names.data() + i * nameLength;
        const bool named = (i + 1) * nameLength <= names.size();
        if (numbers[i] == DMPAPER_USER || sizes[i].x <= 0 || sizes[i].y <= 0) {
            continue;
        }
        described.papers.push_back(numbers[i]);
        described.facts.papers.push_back(
            {named ? portableText(wxString(name, ::wcsnlen(name, nameLength))) : std::string(),
             pointsOfTenths(sizes[i].x),
             pointsOfTenths(sizes[i].y),
             {}});
    }
    const DWORD fields = static_cast<DWORD>(
        ::DeviceCapabilitiesW(printer.c_str(), nullptr, DC_FIELDS, nullptr, nullptr));
    described.facts.takesCustomSizes =
        fields != static_cast<DWORD>(-1) && (fields & DM_PAPERWIDTH) != 0 &&
        std::find(numbers.begin(), numbers.end(), WORD{DMPAPER_USER}) != numbers.end();

    // The driver tells the white of the paper that it is set to; it is that of all its papers.
    const PrinterPaper* found = findPrinterPaper(described.facts, width, height);
    DriverSettings settings(data);
    const std::size_t index =
        found == nullptr ? 0 : static_cast<std::size_t>(found - described.facts.papers.data());
    if (!described.papers.empty()) {
        settings.setPaper(static_cast<short>(described.papers[index]), 1, 2);
    }
    const Context context(::CreateICW(L"WINSPOOL", printer.c_str(), nullptr, &settings.mode()));
    if (!context) {
        throw systemError("The printer \"" + described.facts.name + "\" does not answer.");
    }
    const std::array<double, 4> white = whiteOf(context.get());
    for (PrinterPaper& paper : described.facts.papers) {
        paper.white = white;
    }
    return described;
}

// A document on its way to the printer; given up unless it is ended.
class SpooledDocument {
  public:
    SpooledDocument(HDC context, const std::string& title) : context_(context) {
        const wxString name = nativeText(title);
        DOCINFOW document{};
        document.cbSize = sizeof document;
        document.lpszDocName = name.wc_str();
        check(::StartDocW(context_, &document));
        open_ = true;
    }
    ~SpooledDocument() {
        if (open_) {
            ::AbortDoc(context_);
        }
    }
    SpooledDocument(const SpooledDocument&) = delete;
    SpooledDocument& operator=(const SpooledDocument&) = delete;

    void startPage() { check(::StartPage(context_)); }
    void endPage() { check(::EndPage(context_)); }
    void end() {
        check(::EndDoc(context_));
        open_ = false;
    }

  private:
    static void check(int result) {
        if (result <= 0) {
            throw systemError("The printer takes no sheets.");
        }
    }

    HDC context_;
    bool open_ = false;
};

class WindowsPrintSystem : public PrintSystem {
  public:
    explicit WindowsPrintSystem(std::function<wxWindow*()> parent) : parent_(std::move(parent)) {}

    bool hasPrinters() override { return !printerNames().empty(); }
    std::optional<PrintChoice> choosePrinter(const PrintRequest& request) override;
    void print(PrintSource& source) override;

  private:
    static std::vector<std::wstring> printerNames();
    wxPrintDialogData dialogDataFor(const PrintRequest& request) const;

    std::function<wxWindow*()> parent_;
    wxPrintData data_; // as the last dialog left it
    bool chosen_ = false;
    std::wstring printer_;
    Described described_;
};

std::vector<std::wstring> WindowsPrintSystem::printerNames() {
    constexpr DWORD which = PRINTER_ENUM_LOCAL | PRINTER_ENUM_CONNECTIONS;
    DWORD bytes = 0;
    DWORD count = 0;
    ::EnumPrintersW(which, nullptr, 4, nullptr, 0, &bytes, &count);
    std::vector<std::wstring> names;
    if (bytes == 0) {
        return names;
    }
    std::vector<PRINTER_INFO_4W> found(bytes / sizeof(PRINTER_INFO_4W) + 1);
    if (::EnumPrintersW(which, nullptr, 4, reinterpret_cast<BYTE*>(found.data()),
                        static_cast<DWORD>(found.size() * sizeof(PRINTER_INFO_4W)), &bytes,
                        &count) == FALSE) {
        return names;
    }
    for (DWORD i = 0; i < count; ++i) {
        names.emplace_back(found[i].pPrinterName);
    }
    return names;
}

wxPrintDialogData WindowsPrintSystem::dialogDataFor(const PrintRequest& request) const {
    wxPrintData data(data_);
    if (!chosen_) {
        const wxString wanted = nativeText(request.printer);
        const std::vector<std::wstring> names = printerNames();
        if (std::any_of(names.begin(), names.end(),
                        [&](const std::wstring& name) { return wanted == wxString(name); })) {
            data.SetPrinterName(wanted);
        }
    }
    data.SetDuplex(wxDUPLEX_SIMPLEX);
    data.SetOrientation(request.paperWidth > request.paperHeight ? wxLANDSCAPE : wxPORTRAIT);
    const wxSize size(tenthsOfPoints(std::min(request.paperWidth, request.paperHeight)),
                      tenthsOfPoints(std::max(request.paperWidth, request.paperHeight)));
    data.SetPaperId(wxThePrintPaperDatabase->GetSize(size));
    data.SetPaperSize(size / 10);
    wxPrintDialogData dialogData(data);
    dialogData.EnablePrintToFile(false);
    dialogData.EnableSelection(false);
    dialogData.EnablePageNumbers(true);
    dialogData.SetMinPage(request.lowestSheet);
    dialogData.SetMaxPage(request.highestSheet);
    dialogData.SetFromPage(request.lowestSheet);
    dialogData.SetToPage(request.highestSheet);
    dialogData.SetAllPages(true);
    return dialogData;
}

std::optional<PrintChoice> WindowsPrintSystem::choosePrinter(const PrintRequest& request) {
    wxPrintDialogData dialogData = dialogDataFor(request);
    wxPrintDialog dialog(parent_(), &dialogData);
    if (dialog.ShowModal() != wxID_OK) {
        return std::nullopt;
    }
    wxPrintDialogData& answered = dialog.GetPrintDialogData();
    data_ = answered.GetPrintData();
    chosen_ = true;
    printer_ = data_.GetPrinterName().ToStdWstring();
    described_ = describe(printer_, data_, request.paperWidth, request.paperHeight);
    PrintChoice choice{described_.facts, {}};
    if (!answered.GetAllPages()) {
        choice.ranges = {{answered.GetFromPage(), answered.GetToPage()}};
    }
    return choice;
}

void WindowsPrintSystem::print(PrintSource& source) {
    DriverSettings settings(data_);
    const PrinterPaper* found =
        findPrinterPaper(described_.facts, source.pageWidth(), source.pageHeight());
    const short paper = found == nullptr
                            ? short{0}
                            : static_cast<short>(described_.papers[static_cast<std::size_t>(
                                  found - described_.facts.papers.data())]);
    settings.setPaper(paper, source.pageWidth(), source.pageHeight());
    HDC context = ::CreateDCW(L"WINSPOOL", printer_.c_str(), nullptr, &settings.mode());
    if (context == nullptr) {
        throw systemError("The printer \"" + described_.facts.name + "\" does not answer.");
    }
    wxPrinterDCFromHDC device(context); // deletes it
    const auto dots = [&](int which) { return ::GetDeviceCaps(context, which); };
    const PrinterDots placed{static_cast<double>(dots(LOGPIXELSX)),
                             static_cast<double>(dots(LOGPIXELSY)), dots(PHYSICALOFFSETX),
                             dots(PHYSICALOFFSETY)};
    SpooledDocument document(context, source.title());
    for (std::size_t page = 0; page < source.pages(); ++page) {
        source.beginPage(page);
        document.startPage();
        drawPageOn(device, source, page, placed);
        document.endPage();
    }
    document.end();
}

} // namespace

// What becomes of a job after it was handed over, Windows says itself.
std::unique_ptr<PrintSystem> makePrintSystem(std::function<wxWindow*()> parent, WxEventPump&) {
    return std::make_unique<WindowsPrintSystem>(std::move(parent));
}

} // namespace veldara

#endif
