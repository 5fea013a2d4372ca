// Printing on Linux: the desktop's print dialog, and our PDF as it is to the print server. Nothing
// is drawn here, so what arrives does not depend on a printer's resolution.
#include "gui/native_print_system.h"

#ifdef __WXGTK__

#include "gui/native_text.h"
#include "platform/error.h"
#include "platform/text/path_text.h"
#include "printing/print_check.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include <gtk/gtk.h>
#include <gtk/gtkunixprint.h>

namespace veldara {

namespace {

struct Unref {
    template <typename T>
    void operator()(T* object) const {
        g_object_unref(object);
    }
};
template <typename T>
using Owned = std::unique_ptr<T, Unref>;

template <typename T>
Owned<T> shared(T* object) {
    g_object_ref(object);
    return Owned<T>(object);
}

std::string textOf(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

// A folder that nobody else can look into: the photo is in the document.
class PrivateFolder {
  public:
    PrivateFolder() {
        std::string name =
            pathText(std::filesystem::temp_directory_path() / "veldara-print-XXXXXX");
        if (mkdtemp(name.data()) == nullptr) {
            throw Error("No folder for the sheets can be made in \"" +
                        pathText(std::filesystem::temp_directory_path()) + "\".");
        }
        path_ = textPath(name);
    }
    ~PrivateFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// "Print to File" is no printer: the program saves PDFs itself.
void leaveOutFiles() {
    g_object_set(gtk_settings_get_default(), "gtk-print-backends", "cups", nullptr);
}

bool isPrinter(GtkPrinter* printer) {
    return gtk_printer_is_virtual(printer) == FALSE && gtk_printer_accepts_pdf(printer) == TRUE;
}

// How drivers call a paper of any size, among the papers that they list.
bool standsForCustomSizes(GtkPaperSize* paper) {
    const std::string name = textOf(gtk_paper_size_get_name(paper));
    return textOf(gtk_paper_size_get_ppd_name(paper)) == "Custom" ||
           name.rfind("custom_min", 0) == 0 || name.rfind("custom_max", 0) == 0;
}

PrinterPaper paperOf(GtkPageSetup* setup) {
    GtkPaperSize* paper = gtk_page_setup_get_paper_size(setup);
    constexpr GtkUnit points = GTK_UNIT_POINTS;
    return {textOf(gtk_paper_size_get_display_name(paper)),
            gtk_paper_size_get_width(paper, points),
            gtk_paper_size_get_height(paper, points),
            {gtk_page_setup_get_top_margin(setup, points),
             gtk_page_setup_get_right_margin(setup, points),
             gtk_page_setup_get_bottom_margin(setup, points),
             gtk_page_setup_get_left_margin(setup, points)}};
}

// What the printer takes, and for each of its papers the name that the driver knows it by.
struct Described {
    PrinterFacts facts;
    std::vector<Owned<GtkPageSetup>> setups; // as long as facts.papers
};

Described describe(GtkPrinter* printer) {
    Described described;
    described.facts.name = textOf(gtk_printer_get_name(printer));
    if (gtk_printer_has_details(printer) == FALSE) {
        throw Error("The printer \"" + described.facts.name + "\" does not answer.");
    }
    GList* papers = gtk_printer_list_papers(printer);
    for (GList* one = papers; one != nullptr; one = one->next) {
        Owned<GtkPageSetup> setup(GTK_PAGE_SETUP(one->data));
        PrinterPaper paper = paperOf(setup.get());
        if (standsForCustomSizes(gtk_page_setup_get_paper_size(setup.get()))) {
            described.facts.takesCustomSizes = true;
        } else if (paper.width > 0 && paper.height > 0) {
            described.facts.papers.push_back(std::move(paper));
            described.setups.push_back(std::move(setup));
        }
    }
    g_list_free(papers);
    return described;
}

Owned<GtkPageSetup> customSetup(const std::string& name, double width, double height) {
    Owned<GtkPageSetup> setup(gtk_page_setup_new());
    GtkPaperSize* paper =
        gtk_paper_size_new_custom("custom_poster", name.c_str(), std::min(width, height),
                                  std::max(width, height), GTK_UNIT_POINTS);
    gtk_page_setup_set_paper_size(setup.get(), paper);
    gtk_paper_size_free(paper);
    return setup;
}

// A page that is wider than high is turned by the printer, whose papers are all upright.
Owned<GtkPageSetup> setupFor(const Described& printer, const std::string& name, double width,
                             double height) {
    const PrinterPaper* found = findPrinterPaper(printer.facts, width, height);
    if (found == nullptr) {
        return customSetup(name, width, height);
    }
    return shared(
        printer.setups[static_cast<std::size_t>(found - printer.facts.papers.data())].get());
}

std::vector<SheetRange> rangesOf(GtkPrintSettings* settings) {
    std::vector<SheetRange> ranges;
    if (gtk_print_settings_get_print_pages(settings) != GTK_PRINT_PAGES_RANGES) {
        return ranges;
    }
    int count = 0;
    GtkPageRange* found = gtk_print_settings_get_page_ranges(settings, &count);
    for (int i = 0; i < count; ++i) {
        ranges.push_back({found[i].start + 1, found[i].end + 1});
    }
    g_free(found);
    return ranges;
}

// The sheets are chosen before the document is made; the settings of one job are not those of the
// next in this.
void forgetRanges(GtkPrintSettings* settings) {
    gtk_print_settings_set_print_pages(settings, GTK_PRINT_PAGES_ALL);
    gtk_print_settings_unset(settings, GTK_PRINT_SETTINGS_PAGE_RANGES);
}

// Whatever the driver's defaults are: true to size, one page a sheet, on one side.
void keepTrueToSize(GtkPrintSettings* settings) {
    forgetRanges(settings);
    gtk_print_settings_set_page_set(settings, GTK_PAGE_SET_ALL);
    gtk_print_settings_set_scale(settings, 100);
    gtk_print_settings_set_number_up(settings, 1);
    gtk_print_settings_set_duplex(settings, GTK_PRINT_DUPLEX_SIMPLEX);
    for (const char* key : {"cups-Duplex", "cups-EFDuplex", "cups-EFDuplexing", "cups-KD03Duplex",
                            "cups-JCLDuplex", "cups-fit-to-page", "cups-scaling", "cups-number-up",
                            "cups-page-ranges", "cups-page-set"}) {
        gtk_print_settings_unset(settings, key);
    }
    gtk_print_settings_set(settings, "cups-sides", "one-sided");
    gtk_print_settings_set(settings, "cups-print-scaling", "none");
}

// A printer that is looked for by its name.
struct Search {
    std::string name;
    Owned<GtkPrinter> printer;
    std::function<void(const Search&)> done;
};

gboolean lookAt(GtkPrinter* printer, gpointer data) {
    auto* search = static_cast<Search*>(data);
    if (textOf(gtk_printer_get_name(printer)) == search->name) {
        search->printer = shared(printer);
    }
    return FALSE; // its state is known when all have been listed
}

void searchEnds(gpointer data) {
    const std::unique_ptr<Search> search(static_cast<Search*>(data));
    search->done(*search);
}

// Why a printer does not take a job.
std::string refusal(const std::string& name) {
    Search search{name, nullptr, {}};
    gtk_enumerate_printers(lookAt, &search, nullptr, TRUE);
    if (!search.printer) {
        return "the printer \"" + name + "\" is no longer there.";
    }
    const std::string message = textOf(gtk_printer_get_state_message(search.printer.get()));
    return "the printer \"" + name + "\" takes no jobs" +
           (message.empty() ? "." : " (" + message + ").");
}

// A job that the server has taken, until it is printed.
struct TakenJob {
    Owned<GtkPrintJob> job;
    std::string printer;
};

class GtkPrintSystem : public PrintSystem {
  public:
    GtkPrintSystem(std::function<wxWindow*()> parent, WxEventPump& pump)
        : parent_(std::move(parent)), pump_(pump) {
        leaveOutFiles();
    }
    ~GtkPrintSystem() override {
        if (timer_ != 0) {
            g_source_remove(timer_);
        }
    }
    GtkPrintSystem(const GtkPrintSystem&) = delete;
    GtkPrintSystem& operator=(const GtkPrintSystem&) = delete;

    bool hasPrinters() override;
    std::optional<PrintChoice> choosePrinter(const PrintRequest& request) override;
    void print(PrintSource& source) override;

  private:
    Owned<GtkPrintSettings> settingsFor(const PrintRequest& request) const;
    void handOver(PrintSource& source, const std::filesystem::path& file);
    void follow(GtkPrintJob* job);
    static gboolean lookAgain(gpointer data);
    void lookAtJob(const std::shared_ptr<TakenJob>& taken);
    void report(const std::shared_ptr<TakenJob>& taken, const std::string& reason);
    bool forget(const std::shared_ptr<TakenJob>& taken);

    std::function<wxWindow*()> parent_;
    WxEventPump& pump_;
    Owned<GtkPrintSettings> settings_; // as the last dialog left them
    Owned<GtkPrinter> printer_;
    Described described_;
    std::vector<std::shared_ptr<TakenJob>> taken_;
    guint timer_ = 0;                                             // runs while jobs are followed
    const std::shared_ptr<int> alive_ = std::make_shared<int>(0); // for answers that come late
};

bool GtkPrintSystem::hasPrinters() {
    bool found = false;
    const GtkPrinterFunc look = [](GtkPrinter* printer, gpointer data) -> gboolean {
        *static_cast<bool*>(data) = isPrinter(printer);
        return isPrinter(printer) ? TRUE : FALSE;
    };
    gtk_enumerate_printers(look, &found, nullptr, TRUE);
    return found;
}

Owned<GtkPrintSettings> GtkPrintSystem::settingsFor(const PrintRequest& request) const {
    Owned<GtkPrintSettings> settings(settings_ ? gtk_print_settings_copy(settings_.get())
                                               : gtk_print_settings_new());
    forgetRanges(settings.get());
    if (!settings_ && !request.printer.empty()) {
        gtk_print_settings_set_printer(settings.get(), request.printer.c_str());
    }
    return settings;
}

std::optional<PrintChoice> GtkPrintSystem::choosePrinter(const PrintRequest& request) {
    wxWindow* parent = parent_();
    GtkWidget* widget = gtk_print_unix_dialog_new(
        "Print", parent == nullptr ? nullptr : GTK_WINDOW(parent->GetHandle()));
    auto* dialog = GTK_PRINT_UNIX_DIALOG(widget);
    gtk_print_unix_dialog_set_manual_capabilities(dialog, GTK_PRINT_CAPABILITY_GENERATE_PDF);
    gtk_print_unix_dialog_set_settings(dialog, settingsFor(request).get());
    gtk_print_unix_dialog_set_page_setup(
        dialog, customSetup(request.paperName, request.paperWidth, request.paperHeight).get());
    std::optional<PrintChoice> choice;
    std::string failure;
    if (gtk_dialog_run(GTK_DIALOG(widget)) == GTK_RESPONSE_OK) {
        settings_.reset(gtk_print_unix_dialog_get_settings(dialog));
        GtkPrinter* printer = gtk_print_unix_dialog_get_selected_printer(dialog);
        try {
            if (printer == nullptr) {
                throw Error("No printer was chosen.");
            }
            printer_ = shared(printer);
            described_ = describe(printer);
            choice = PrintChoice{described_.facts, rangesOf(settings_.get())};
        } catch (const Error& error) {
            failure = error.what();
        }
    }
    gtk_widget_destroy(widget);
    if (!failure.empty()) {
        throw Error(failure);
    }
    return choice;
}

void GtkPrintSystem::print(PrintSource& source) {
    const PrivateFolder folder;
    const std::filesystem::path file = folder.path() / "sheets.pdf";
    source.writeDocument(file);
    handOver(source, file);
}

void GtkPrintSystem::handOver(PrintSource& source, const std::filesystem::path& file) {
    const Owned<GtkPrintSettings> settings(gtk_print_settings_copy(settings_.get()));
    keepTrueToSize(settings.get());
    const Owned<GtkPageSetup> setup =
        setupFor(described_, source.paperName(), source.pageWidth(), source.pageHeight());
    const Owned<GtkPrintJob> job(
        gtk_print_job_new(source.title().c_str(), printer_.get(), settings.get(), setup.get()));
    gtk_print_job_set_track_print_status(job.get(), TRUE);
    GError* error = nullptr;
    if (gtk_print_job_set_source_file(job.get(), file.c_str(), &error) == FALSE) {
        const std::string reason = textOf(error->message);
        g_error_free(error);
        throw Error(reason);
    }
    struct Answer {
        bool given = false;
        std::string failure;
        bool jobTaken = false;
    } answer;
    const gulong watch = g_signal_connect(
        job.get(), "status-changed", G_CALLBACK(+[](GtkPrintJob* changed, gpointer data) {
            const GtkPrintStatus status = gtk_print_job_get_status(changed);
            if (status == GTK_PRINT_STATUS_PENDING || status == GTK_PRINT_STATUS_PRINTING) {
                static_cast<Answer*>(data)->jobTaken = true;
            }
        }),
        &answer);
    const GtkPrintJobCompleteFunc complete = [](GtkPrintJob*, gpointer data,
                                                const GError* problem) {
        auto* given = static_cast<Answer*>(data);
        given->given = true;
        given->failure = problem == nullptr ? "" : textOf(problem->message);
    };
    gtk_print_job_send(job.get(), complete, &answer, nullptr);
    while (!answer.given) {
        g_main_context_iteration(nullptr, TRUE);
    }
    g_signal_handler_disconnect(job.get(), watch);
    if (!answer.failure.empty()) {
        throw Error(answer.failure);
    }
    // A server's refusal is no failure to the toolkit: it takes the job for finished at once. A
    // short job may be printed by now, too, but was pending before.
    if (!answer.jobTaken && gtk_print_job_get_status(job.get()) == GTK_PRINT_STATUS_FINISHED) {
        throw Error(refusal(described_.facts.name));
    }
    follow(job.get());
}

// A server says nothing by itself of a printer that has stopped.
void GtkPrintSystem::follow(GtkPrintJob* job) {
    constexpr guint seconds = 1;
    taken_.push_back(std::make_shared<TakenJob>(TakenJob{shared(job), described_.facts.name}));
    if (timer_ == 0) {
        timer_ = g_timeout_add_seconds(seconds, &GtkPrintSystem::lookAgain, this);
    }
}

gboolean GtkPrintSystem::lookAgain(gpointer data) {
    auto* system = static_cast<GtkPrintSystem*>(data);
    const std::vector<std::shared_ptr<TakenJob>> jobs = system->taken_; // one may be forgotten
    for (const std::shared_ptr<TakenJob>& taken : jobs) {
        system->lookAtJob(taken);
    }
    if (system->taken_.empty()) {
        system->timer_ = 0;
        return G_SOURCE_REMOVE;
    }
    return G_SOURCE_CONTINUE;
}

void GtkPrintSystem::lookAtJob(const std::shared_ptr<TakenJob>& taken) {
    const GtkPrintStatus status = gtk_print_job_get_status(taken->job.get());
    if (status == GTK_PRINT_STATUS_FINISHED) {
        forget(taken);
        return;
    }
    const bool aborted = status == GTK_PRINT_STATUS_FINISHED_ABORTED;
    auto search = std::make_unique<Search>();
    search->name = taken->printer;
    search->done = [this, taken, aborted, alive = std::weak_ptr<int>(alive_)](const Search& seen) {
        if (alive.expired()) {
            return;
        }
        if (!seen.printer) {
            report(taken, "it is no longer there.");
        } else if (aborted || gtk_printer_is_paused(seen.printer.get()) == TRUE) {
            const std::string message = textOf(gtk_printer_get_state_message(seen.printer.get()));
            report(taken, message.empty() ? "it gives no reason." : message + ".");
        }
    };
    gtk_enumerate_printers(lookAt, search.release(), searchEnds, FALSE);
}

void GtkPrintSystem::report(const std::shared_ptr<TakenJob>& taken, const std::string& reason) {
    if (forget(taken)) { // once, however many questions were on their way
        pump_.afterWork(
            [this, alive = std::weak_ptr<int>(alive_), printer = taken->printer, reason] {
                if (!alive.expired() && onStopped) {
                    onStopped(printer, reason);
                }
            });
    }
}

bool GtkPrintSystem::forget(const std::shared_ptr<TakenJob>& taken) {
    const auto found = std::find(taken_.begin(), taken_.end(), taken);
    if (found == taken_.end()) {
        return false;
    }
    taken_.erase(found);
    return true;
}

} // namespace

std::unique_ptr<PrintSystem> makePrintSystem(std::function<wxWindow*()> parent, WxEventPump& pump) {
    return std::make_unique<GtkPrintSystem>(std::move(parent), pump);
}

} // namespace veldara

#endif
