#include "cli/tiles_program.h"

#include "calibration/test_target.h"
#include "cli/job_plan.h"
#include "cli/listings.h"
#include "cli/options.h"
#include "cli/plan_json.h"
#include "cli/progress_bar.h"
#include "output/save_messages.h"
#include "output/tile_files.h"
#include "output/tile_run.h"
#include "output/tile_stream.h"
#include "platform/error.h"
#include "platform/image/file_ending.h"
#include "platform/text/characters.h"
#include "platform/text/path_text.h"

#include <algorithm>
#include <exception>
#include <system_error>

namespace veldara {
namespace {

using Profiles = std::function<std::vector<EdgeProfile>()>;

// The run was stopped by the user; nothing is to be said but that.
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

// True when the user says yes; anything else, also no answer at all, is a no.
bool ask(Console& console, const std::string& question) {
    console.complain(question + " [y/N] ");
    const std::optional<std::string> answer = console.readLine();
    if (console.interrupted()) {
        throw Stopped();
    }
    const std::string word = lowerCase(trimmed(answer.value_or("")));
    return word == "y" || word == "yes";
}

// False: the user does not want it.
bool mayUseExisting(const Options& options, Console& console, const std::string& question,
                    const std::string& refusal) {
    if (options.yes) {
        return true;
    }
    if (!console.canAsk()) {
        throw Error(refusal + "  Give --yes to do it all the same.");
    }
    return ask(console, question);
}

// --yes lets tiles of an earlier run be overwritten, never what they are cut from.
void refuseTilesOverThePhoto(const JobPlan& plan, const Options& options) {
    const std::filesystem::path photo = textPath(options.photo);
    for (const std::filesystem::path& file : plan.files()) {
        if (isSameFile(photo, file)) {
            throw Error("The tile \"" + pathText(file) +
                        "\" would take the photo's place: give another --base or --out.");
        }
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
    case TileOutcome::outOfSpace:
        return outOfDiskSpaceMessage().text;
    case TileOutcome::encodeFailed:
    case TileOutcome::saveFailed:
        return tileNotSavedMessage().text + "  " + step.reason;
    case TileOutcome::sourceFailed:
    case TileOutcome::written:
        break;
    }
    return step.reason;
}

void writeAll(TileRun& run, Console& console, bool quiet) {
    ProgressBar bar(console, !quiet);
    bar.show(0, run.count());
    while (!run.done()) {
        while (!run.waitReady(std::chrono::milliseconds(50))) {
            if (console.interrupted()) {
                throw Stopped();
            }
        }
        const TileStep step = run.next();
        if (step.outcome != TileOutcome::written) {
            throw Error(failureText(step));
        }
        bar.show(run.written(), run.count());
        if (console.interrupted()) {
            throw Stopped();
        }
    }
}

// On a terminal only: what a script wants to know is the status.
void tellEnd(const Options& options, Console& console, const std::string& text) {
    if (!options.quiet && console.canDraw()) {
        console.complain(text + "\n");
    }
}

Error changedPhoto(const Options& options) {
    return Error("The photo \"" + options.photo + "\" was changed while it was read.");
}

// A turned photo has to be had whole before its first row is known.
void writeTurnedPoster(const JobPlan& plan, const Options& options, Console& console) {
    Image photo = loadImage(textPath(options.photo));
    ColourProfile profile = std::move(photo.colourProfile);
    photo = turned(photo.view(), options.rotation);
    photo.colourProfile = std::move(profile);
    if (photo.width() != plan.photoWidth || photo.height() != plan.photoHeight) {
        throw changedPhoto(options);
    }
    WholePhotoSource source(photo, plan.rects());
    TileRun run(source, {plan.files(), plan.treatment, plan.type, 0}, realDisk(plan.folder));
    writeAll(run, console, options.quiet);
}

void writePoster(const JobPlan& plan, const Options& options, Console& console) {
    if (options.rotation != Turn::none) {
        writeTurnedPoster(plan, options, console);
        return;
    }
    std::unique_ptr<RowReader> photo = openRowReader(textPath(options.photo));
    if (photo->header().width != plan.photoWidth || photo->header().height != plan.photoHeight) {
        throw changedPhoto(options);
    }
    auto stream = std::make_unique<TileStream>(std::move(photo), plan.rects(),
                                               plan.layout.tilesWide, plan.treatment, plan.type, 0);
    TileRun run(std::move(stream), plan.files(), realDisk(plan.folder));
    writeAll(run, console, options.quiet);
}

int runPoster(const Options& options, Console& console, const Profiles& profiles) {
    const std::optional<ClipCounts> clip = chosenClip(options, profiles);
    chosenPaper(options); // a wrong option is told before the photo is looked at
    const JobPlan plan = planJob(options, readImageHeader(textPath(options.photo)), clip);
    if (options.plan) {
        console.print(planJson(plan));
        return statusDone;
    }
    refuseTilesOverThePhoto(plan, options);
    if (!makeFolder(plan, options, console)) {
        return statusFailed;
    }
    writePoster(plan, options, console);
    tellEnd(options, console,
            std::to_string(plan.tiles.size()) + (plan.tiles.size() == 1 ? " tile" : " tiles") +
                " written to " + pathText(plan.folder));
    return statusDone;
}

int runTestTarget(const Options& options, Console& console) {
    const std::optional<FileType> type = fileTypeByName(options.testTarget);
    if (!type) {
        throw WrongOption("--test-target \"" + options.testTarget +
                          "\": " + testTargetFileTypeMessage().text + ".");
    }
    const PaperRecord paper = chosenPaper(options);
    const std::filesystem::path file = textPath(options.testTarget);
    std::error_code error;
    if (std::filesystem::exists(file, error) &&
        !mayUseExisting(options, console,
                        "The file \"" + options.testTarget +
                            "\" already exists.  Do you want to replace it?",
                        "The file \"" + options.testTarget + "\" already exists.")) {
        return statusFailed;
    }
    const Image image = createTestImage(ToInches(paper.tileHeight(), options.units),
                                        ToInches(paper.tileWidth(), options.units));
    writeWholeFile(file, encodeImage(image.view(), *type, testTargetDotsPerInch, {}));
    tellEnd(options, console, "test image written to " + options.testTarget);
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
                         "\nveldara-tiles --help tells all options.\n");
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
