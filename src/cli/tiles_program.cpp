#include "cli/tiles_program.h"

#include "calibration/test_target.h"
#include "cli/job_plan.h"
#include "cli/listings.h"
#include "cli/options.h"
#include "cli/pdf_poster.h"
#include "cli/plan_json.h"
#include "cli/poster_size.h"
#include "cli/progress_line.h"
#include "layout/tile_size.h"
#include "output/save_messages.h"
#include "output/tile_files.h"
#include "output/tile_folder.h"
#include "output/tile_pool.h"
#include "output/tile_run.h"
#include "output/tile_stream.h"
#include "platform/error.h"
#include "platform/files/whole_file.h"
#include "platform/image/tile_format.h"
#include "platform/text/characters.h"
#include "platform/text/file_name.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <exception>
#include <system_error>

namespace veldara {
namespace {

using Profiles = std::function<std::vector<EdgeProfile>()>;

// Thrown when the user stops the run.
class Stopped {};

std::optional<ClipCounts> chosenClip(const Options& options, const Profiles& profiles) {
    if (options.profile.empty()) {
        return options.clip;
    }
    for (const EdgeProfile& profile : profiles()) {
        if (profile.name == options.profile) {
            return profile.clipCounts;
        }
    }
    throw WrongOption("--profile \"" + options.profile +
                      "\": there is no such profile; --list-profiles prints them all.");
}

// True if the user answers yes; anything else, including no answer, is a no.
bool ask(Console& console, const std::string& question) {
    console.complain(question + " [y/N] ");
    const std::optional<std::string> answer = console.readLine();
    if (console.interrupted()) {
        throw Stopped();
    }
    const std::string word = lowerCase(trimmed(answer.value_or("")));
    return word == "y" || word == "yes";
}

// False if the user answers no.
bool mayUseExisting(const Options& options, Console& console, const std::string& question,
                    const std::string& refusal) {
    if (options.yes) {
        return true;
    }
    if (!console.canAsk()) {
        throw Error(refusal + "  Use --yes to do it anyway.");
    }
    return ask(console, question);
}

// A file that is not there may always be written.
bool mayReplaceFile(const Options& options, Console& console, const std::string& file) {
    std::error_code error;
    return !std::filesystem::exists(textPath(file), error) ||
           mayUseExisting(options, console,
                          "The file \"" + file + "\" already exists.  Do you want to replace it?",
                          "The file \"" + file + "\" already exists.");
}

// --yes allows overwriting tiles of an earlier run, but never the photo.
void refuseTilesOverThePhoto(const JobPlan& plan, const Options& options) {
    const std::string problem = photoOverwriteProblem(plan.poster.files(), textPath(options.photo));
    if (!problem.empty()) {
        throw Error(problem + ": give another --base or --out.");
    }
}

bool makeFolder(const JobPlan& plan, const Options& options, Console& console) {
    const std::string name = pathText(plan.folder);
    std::error_code error;
    if (std::filesystem::create_directory(plan.folder, error)) {
        return true;
    }
    if (!std::filesystem::is_directory(plan.folder, error)) {
        throw Error(folderNotCreatedMessage(name).text);
    }
    return mayUseExisting(options, console, folderExistsQuestion(name).text,
                          "The folder \"" + name +
                              "\" already exists.  Some files could be overwritten.");
}

std::string failureText(const TileStep& step) {
    switch (step.outcome) {
    case TileOutcome::compensationFailed:
        return compensationFailedMessage().text + ".  " + step.reason;
    case TileOutcome::turnFailed:
        return "A tile could not be turned.  " + step.reason;
    case TileOutcome::outOfSpace:
        return outOfDiskSpaceMessage().text;
    case TileOutcome::encodeFailed:
        return "A tile could not be encoded.  " + step.reason;
    case TileOutcome::saveFailed:
        return tileNotSavedMessage().text + "  " + step.reason;
    case TileOutcome::sourceFailed:
    case TileOutcome::written:
        break;
    }
    return step.reason;
}

void writeAll(const JobPlan& plan, std::unique_ptr<EncodedTiles> tiles, Console& console,
              bool quiet) {
    TileRun run(std::move(tiles), plan.poster.tiles.size(),
                std::make_unique<TileFolder>(plan.poster.files()));
    ProgressLine progress(console, !quiet);
    progress.show(0, run.count());
    while (!run.done()) {
        while (!run.waitReady(std::chrono::milliseconds(50))) {
            if (console.interrupted()) {
                throw Stopped();
            }
        }
        const TileStep step = run.next(freeSpaceIn(plan.folder));
        if (step.outcome != TileOutcome::written) {
            throw Error(failureText(step));
        }
        progress.show(run.written(), run.count());
        if (console.interrupted()) {
            throw Stopped();
        }
    }
}

// Only on a terminal: a script needs only the status.
void reportEnd(const Options& options, Console& console, const std::string& text) {
    if (!options.quiet && console.canDraw()) {
        console.complain(text + "\n");
    }
}

void refuseChangedPhoto(int width, int height, const JobPlan& plan) {
    if (width != plan.poster.layout.photoWidth || height != plan.poster.layout.photoHeight) {
        throw Error("The photo \"" + plan.photoFile + "\" was changed while it was read.");
    }
}

// A turned photo has to be decoded completely before its first row is known.
void writeTurnedPoster(const JobPlan& plan, const Options& options, Console& console) {
    Image photo = loadImage(textPath(options.photo));
    ColourProfile profile = std::move(photo.colourProfile);
    photo = turned(photo.view(), options.rotation);
    photo.colourProfile = std::move(profile);
    const PosterPlan& poster = plan.poster;
    refuseChangedPhoto(photo.width(), photo.height(), plan);
    WholePhotoSource source(photo, poster.rects());
    writeAll(
        plan,
        std::make_unique<TilePool>(source, poster.tiles.size(), poster.treatment, poster.type, 0),
        console, options.quiet);
}

void writePoster(const JobPlan& plan, const Options& options, Console& console) {
    if (options.rotation != Turn::none) {
        writeTurnedPoster(plan, options, console);
        return;
    }
    std::unique_ptr<RowReader> photo = openRowReader(textPath(options.photo));
    const PosterPlan& poster = plan.poster;
    refuseChangedPhoto(photo->header().width, photo->header().height, plan);
    writeAll(plan,
             std::make_unique<TileStream>(std::move(photo), poster.rects(), poster.layout.tilesWide,
                                          poster.treatment, poster.type, 0),
             console, options.quiet);
}

int runDocument(const JobPlan& plan, const Options& options, Console& console) {
    const PdfPlan pdf = planPdf(plan, options);
    noteOverlapProblem(pdf, options, console);
    if (options.plan) {
        console.print(planJson(plan, &pdf));
        return statusDone;
    }
    if (isSameFile(textPath(options.photo), pdf.file)) {
        throw Error("The document \"" + options.pdf +
                    "\" would take the photo's place: give it another name.");
    }
    if (!mayReplaceFile(options, console, options.pdf)) {
        return statusFailed;
    }
    if (!writePdfPoster(pdf, options, console)) {
        throw Stopped();
    }
    const std::size_t pages = pdf.pages.size();
    reportEnd(options, console,
              std::to_string(pages) + (pages == 1 ? " page" : " pages") + " written to " +
                  options.pdf);
    return statusDone;
}

// On standard error even without a terminal: the counts were not stated by whoever runs it.
void reportChoice(const SizeChoices& choices, const Options& options, Console& console) {
    if (!options.quiet) {
        console.complain(
            "veldara-tiles: " +
            choiceLine(choices.found.best.front(), choices.limits, choices.papers, options.units) +
            "\n");
    }
}

int runPoster(Options options, Console& console, const Profiles& profiles) {
    const std::optional<ClipCounts> clip = chosenClip(options, profiles);
    chosenPaper(options); // report a wrong option before opening the photo
    const ImageHeader header = readImageHeader(textPath(options.photo));
    if (choosesBySize(options)) {
        const SizeChoices choices = chooseBySize(options, header, clip);
        if (options.choices) {
            console.print(options.plan ? choicesJson(options, choices)
                                       : choicesText(options, choices));
            return statusDone;
        }
        reportChoice(choices, options, console);
        options = withChoice(options, choices);
    }
    const JobPlan plan = planJob(options, header, clip);
    if (!options.pdf.empty()) {
        return runDocument(plan, options, console);
    }
    if (options.plan) {
        console.print(planJson(plan));
        return statusDone;
    }
    refuseTilesOverThePhoto(plan, options);
    if (!makeFolder(plan, options, console)) {
        return statusFailed;
    }
    writePoster(plan, options, console);
    reportEnd(options, console,
              std::to_string(plan.poster.tiles.size()) +
                  (plan.poster.tiles.size() == 1 ? " tile" : " tiles") + " written to " +
                  pathText(plan.folder));
    return statusDone;
}

int runTestTarget(const Options& options, Console& console) {
    const std::optional<TileFormat> type = tileFormatByName(options.testTarget);
    if (!type) {
        throw WrongOption("--test-target \"" + options.testTarget +
                          "\": " + testTargetFileTypeMessage().text + ".");
    }
    const PaperRecord paper = chosenPaper(options);
    const std::filesystem::path file = textPath(options.testTarget);
    if (const std::string problem = fileNameProblem(pathText(file.filename())); !problem.empty()) {
        throw Error(problem + ": give another --test-target.");
    }
    if (!mayReplaceFile(options, console, options.testTarget)) {
        return statusFailed;
    }
    const Image image = createTestImage(ToInches(paper.tileHeight(), options.units),
                                        ToInches(paper.tileWidth(), options.units));
    writeWholeFile(file, encodeImage(image.view(), *type, testTargetDotsPerInch, {}));
    reportEnd(options, console, "test image written to " + options.testTarget);
    return statusDone;
}

int run(const std::vector<std::string>& arguments, Console& console, const Profiles& profiles) {
    const CommandLine line = readCommandLine(arguments);
    const Options& options = line.options;
    if (!line.text.empty()) {
        console.print(line.text);
        return statusDone;
    }
    if (options.listPapers || options.listProfiles) {
        console.print((options.listPapers ? paperListing() : "") +
                      (options.listProfiles ? profileListing(profiles()) : ""));
        return statusDone;
    }
    return options.testTarget.empty() ? runPoster(options, console, profiles)
                                      : runTestTarget(options, console);
}

} // namespace

int runTilesProgram(const std::vector<std::string>& arguments, Console& console,
                    const Profiles& profiles) {
    try {
        return run(arguments, console, profiles);
    } catch (const WrongOption& error) {
        console.complain("veldara-tiles: " + std::string(error.what()) +
                         "\nveldara-tiles --help lists all options.\n");
        return statusWrongOption;
    } catch (const Stopped&) {
        console.complain("veldara-tiles: " + canceledMessage().text + "\n");
        return statusInterrupted;
    } catch (const std::bad_alloc&) {
        console.complain("veldara-tiles: There is not enough memory.\n");
    } catch (const std::exception& error) {
        console.complain("veldara-tiles: " + std::string(error.what()) + "\n");
    }
    return statusFailed;
}

} // namespace veldara
