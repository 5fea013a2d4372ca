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
#include <memory>
#include <new>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include <commdlg.h>
#include <winspool.h>
#include <wx/dcprint.h>
#include <wx/msw/dcprint.h>
#include <wx/msw/wrapwin.h>

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

// A block of memory that the system's dialogs take and hand back.
class SharedBlock {
  public:
    explicit SharedBlock(HGLOBAL block = nullptr) : block_(block) {}
    explicit SharedBlock(std::size_t bytes)
        : block_(::GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes)) {
        if (block_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    SharedBlock(SharedBlock&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedBlock& operator=(SharedBlock&& other) noexcept {
        std::swap(block_, other.block_);
        return *this;
    }
    ~SharedBlock() {
        if (block_ != nullptr) {
            ::GlobalFree(block_);
        }
    }

    HGLOBAL release() { return std::exchange(block_, nullptr); }
    explicit operator bool() const { return block_ != nullptr; }

    // Calls use(address of the bytes); not for an empty block.
    template <typename Use>
    void use(Use&& use) const {
        use(::GlobalLock(block_));
        ::GlobalUnlock(block_);
    }

  private:
    HGLOBAL block_;
};

// A driver's settings: its own bytes follow the system's.
class DriverSettings {
  public:
    // Throws Error when there are none.
    explicit DriverSettings(const SharedBlock& block) {
        if (!block) {
            throw Error("The printer's driver has no settings.");
        }
        block.use([this](const void* locked) {
            const auto* set = static_cast<const DEVMODEW*>(locked);
            bytes_.resize(std::size_t{set->dmSize} + set->dmDriverExtra);
            std::memcpy(bytes_.data(), set, bytes_.size());
        });
    }

    // The driver's own defaults; nothing when the printer is not there.
    static std::optional<DriverSettings> defaultsOf(const std::wstring& printer) {
        HANDLE handle = nullptr;
        std::wstring name = printer; // the system's functions take names that they could change
        if (::OpenPrinterW(name.data(), &handle, nullptr) == FALSE) {
            return std::nullopt;
        }
        const std::unique_ptr<void, ClosePrinterHandle> open(handle);
        const LONG bytes = ::DocumentPropertiesW(nullptr, handle, name.data(), nullptr, nullptr, 0);
        if (bytes < static_cast<LONG>(sizeof(DEVMODEW))) {
            return std::nullopt;
        }
        DriverSettings settings;
        settings.bytes_.resize(static_cast<std::size_t>(bytes));
        if (::DocumentPropertiesW(nullptr, handle, name.data(), &settings.mode(), nullptr,
                                  DM_OUT_BUFFER) != IDOK) {
            return std::nullopt;
        }
        return settings;
    }

    SharedBlock block() const {
        SharedBlock copy(bytes_.size());
        copy.use([this](void* locked) { std::memcpy(locked, bytes_.data(), bytes_.size()); });
        return copy;
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
    struct ClosePrinterHandle {
        void operator()(HANDLE printer) const { ::ClosePrinter(printer); }
    };
    DriverSettings() = default;

    std::vector<unsigned char> bytes_;
};

// How the dialog gets and returns a printer: a header, and three names behind it.
SharedBlock namesOf(const std::wstring& printer) {
    constexpr std::size_t header = sizeof(DEVNAMES) / sizeof(wchar_t);
    const std::wstring driver = L"winspool";
    const std::size_t device = header + driver.size() + 1;
    const std::size_t output = device + printer.size() + 1;
    SharedBlock block((output + 1) * sizeof(wchar_t)); // no name of an output
    block.use([&](void* locked) {
        auto* names = static_cast<DEVNAMES*>(locked);
        names->wDriverOffset = static_cast<WORD>(header);
        names->wDeviceOffset = static_cast<WORD>(device);
        names->wOutputOffset = static_cast<WORD>(output);
        auto* text = static_cast<wchar_t*>(locked);
        std::copy(driver.begin(), driver.end(), text + header);
        std::copy(printer.begin(), printer.end(), text + device);
    });
    return block;
}

std::wstring printerOf(const SharedBlock& names) {
    std::wstring printer;
    if (names) {
        names.use([&](const void* locked) {
            const auto* header = static_cast<const DEVNAMES*>(locked);
            printer = static_cast<const wchar_t*>(locked) + header->wDeviceOffset;
        });
    }
    return printer;
}

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

// Which of the printer's papers has that size; the one that was chosen in the driver's settings
// where several have, for one may be there twice, with margins and borderless.
std::optional<std::size_t> paperFor(const Described& printer, DriverSettings& settings,
                                    double width, double height) {
    const PrinterPaper* found = findPrinterPaper(printer.facts, width, height);
    if (found == nullptr) {
        return std::nullopt;
    }
    const std::vector<PrinterPaper>& papers = printer.facts.papers;
    for (std::size_t i = 0; i < papers.size(); ++i) {
        if (printer.papers[i] == static_cast<WORD>(settings.mode().dmPaperSize) &&
            papers[i].width == found->width && papers[i].height == found->height) {
            return i;
        }
    }
    return static_cast<std::size_t>(found - papers.data());
}

Described describe(const std::wstring& printer, const DriverSettings& driver, double width,
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
    DriverSettings settings(driver);
    if (!described.papers.empty()) {
        const std::size_t index = paperFor(described, settings, width, height).value_or(0);
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
    static bool hasPrinter(const std::wstring& name);
    void beginWith(const std::string& printer);
    std::optional<PRINTDLGW> showDialog(const PrintRequest& request);

    std::function<wxWindow*()> parent_;
    // As the last dialog left them.
    SharedBlock settings_;
    SharedBlock names_;
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

bool WindowsPrintSystem::hasPrinter(const std::wstring& name) {
    const std::vector<std::wstring> names = printerNames();
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The dialog begins with that printer; where it is not there, with the system's default.
void WindowsPrintSystem::beginWith(const std::string& printer) {
    settings_ = SharedBlock();
    names_ = SharedBlock();
    const std::wstring name = nativeText(printer).ToStdWstring();
    if (!hasPrinter(name)) {
        return;
    }
    if (const std::optional<DriverSettings> defaults = DriverSettings::defaultsOf(name)) {
        settings_ = defaults->block();
        names_ = namesOf(name);
    }
}

// Copies are the driver's work.
std::optional<PRINTDLGW> WindowsPrintSystem::showDialog(const PrintRequest& request) {
    wxWindow* parent = parent_();
    PRINTDLGW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = parent == nullptr ? nullptr : static_cast<HWND>(parent->GetHandle());
    dialog.Flags =
        PD_ALLPAGES | PD_NOSELECTION | PD_HIDEPRINTTOFILE | PD_USEDEVMODECOPIESANDCOLLATE;
    dialog.nMinPage = static_cast<WORD>(request.lowestSheet);
    dialog.nMaxPage = static_cast<WORD>(request.highestSheet);
    dialog.nFromPage = dialog.nMinPage;
    dialog.nToPage = dialog.nMaxPage;
    dialog.hDevMode = settings_.release();
    dialog.hDevNames = names_.release();
    const bool answered = ::PrintDlgW(&dialog) != FALSE;
    settings_ = SharedBlock(dialog.hDevMode);
    names_ = SharedBlock(dialog.hDevNames);
    const DWORD failure = answered ? 0 : ::CommDlgExtendedError();
    if (failure != 0) {
        settings_ = SharedBlock();
        names_ = SharedBlock();
        throw Error("The print dialog of the system could not be opened (" +
                    std::to_string(failure) + ").");
    }
    return answered ? std::optional(dialog) : std::nullopt;
}

std::optional<PrintChoice> WindowsPrintSystem::choosePrinter(const PrintRequest& request) {
    if (!hasPrinter(printerOf(names_))) {
        beginWith(request.printer);
    }
    const std::optional<PRINTDLGW> answered = showDialog(request);
    if (!answered) {
        return std::nullopt;
    }
    described_ = describe(printerOf(names_), DriverSettings(settings_), request.paperWidth,
                          request.paperHeight);
    PrintChoice choice{described_.facts, {}};
    if ((answered->Flags & PD_PAGENUMS) != 0) {
        choice.ranges = {{answered->nFromPage, answered->nToPage}};
    }
    return choice;
}

void WindowsPrintSystem::print(PrintSource& source) {
    const std::wstring printer = printerOf(names_);
    DriverSettings settings(settings_);
    const std::optional<std::size_t> paper =
        paperFor(described_, settings, source.pageWidth(), source.pageHeight());
    settings.setPaper(paper ? static_cast<short>(described_.papers[*paper]) : short{0},
                      source.pageWidth(), source.pageHeight());
    HDC context = ::CreateDCW(L"WINSPOOL", printer.c_str(), nullptr, &settings.mode());
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
