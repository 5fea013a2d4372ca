#include "platform/linux/desktop_launcher.h"

#include "platform/error.h"
#include "platform/files/descriptor.h"
#include "platform/files/file_error.h"
#include "platform/text/file_name.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace veldara {

namespace {

constexpr const char* opener = "xdg-open";

// What the process that stands between the program and the started one reports back.
struct Report {
    int startError = 0; // errno of the exec
    int exitStatus = 0; // of a program that has ended already
};

bool isProgram(const std::string& path) {
    std::error_code code;
    return std::filesystem::is_regular_file(path, code) && ::access(path.c_str(), X_OK) == 0;
}

// The first program of that name in PATH's absolute folders; empty when there is none.
std::string findProgram(const std::string& name, std::string_view folders) {
    while (!folders.empty()) {
        const std::size_t end = std::min(folders.find(':'), folders.size());
        std::string path = std::string(folders.substr(0, end)) + "/" + name;
        folders.remove_prefix(std::min(end + 1, folders.size()));
        if (path.front() == '/' && isProgram(path)) {
            return path;
        }
    }
    return {};
}

// The four functions below run between fork and exec, in a copy of a program that may have had
// other threads: only calls that are safe there, no memory taken.

void letGo(int reports) {
    const int nothing = ::open("/dev/null", O_RDWR);
    for (int standard = 0; standard < 3 && nothing >= 0; ++standard) {
        ::dup2(nothing, standard);
    }
    ::close_range(3, static_cast<unsigned>(reports) - 1, 0);
    ::close_range(static_cast<unsigned>(reports) + 1, ~0U, 0);
}

[[noreturn]] void becomeProgram(const char* const* arguments, int reports) {
    ::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execv(arguments[0], const_cast<char* const*>(arguments));
    const Report report{errno, 0};
    [[maybe_unused]] const ssize_t written = ::write(reports, &report, sizeof report);
    ::_exit(127);
}

[[noreturn]] void watchOver(const char* const* arguments, int reports) {
    ::setsid();
    // It lives as long as the started program does, which may be longer than we do: it must not
    // keep our windows, locks or pipes open.
    letGo(reports);
    const pid_t program = ::fork();
    if (program == 0) {
        becomeProgram(arguments, reports);
    }
    Report report;
    if (program < 0) {
        report.startError = errno;
    } else {
        int status = 0;
        while (::waitpid(program, &status, 0) < 0 && errno == EINTR) {
        }
        report.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    }
    [[maybe_unused]] const ssize_t written = ::write(reports, &report, sizeof report);
    ::_exit(0);
}

// Starts the watcher as nobody's child, so that it leaves no dead process behind.
int startWatcher(const char* const* arguments, int reports) {
    const pid_t parent = ::fork();
    if (parent < 0) {
        return errno;
    }
    if (parent == 0) {
        const pid_t watcher = ::fork();
        if (watcher == 0) {
            watchOver(arguments, reports);
        }
        ::_exit(watcher < 0 ? errno : 0);
    }
    int status = 0;
    while (::waitpid(parent, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

// Runs a program and gives it a short while to fail. Empty: it runs, or has done its work.
std::string start(const char* const* arguments) {
    constexpr int patience = 300; // milliseconds
    std::array<int, 2> ends = {};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return reasonOf(errno);
    }
    const Descriptor reader(ends[0]);
    Descriptor writer(ends[1]);
    if (const int code = startWatcher(arguments, writer.number()); code != 0) {
        return reasonOf(code);
    }
    writer.close();
    Report report;
    struct pollfd waiting = {reader.number(), POLLIN, 0};
    if (::poll(&waiting, 1, patience) == 1 &&
        ::read(reader.number(), &report, sizeof report) == sizeof report) {
        if (report.startError != 0) {
            return reasonOf(report.startError);
        }
        if (report.exitStatus != 0) {
            return "it ended with status " + std::to_string(report.exitStatus);
        }
    }
    return {};
}

bool isAddress(const std::string& target) {
    return target.rfind("http://", 0) == 0 || target.rfind("https://", 0) == 0 ||
           target.rfind("mailto:", 0) == 0;
}

} // namespace

DesktopLauncher::DesktopLauncher(Environment environment) : environment_(std::move(environment)) {}

void DesktopLauncher::open(const std::string& target) const {
    const std::string program = findProgram(opener, environment_("PATH"));
    if (program.empty()) {
        throw Error("\"" + target + "\" cannot be opened: the desktop's opener (" + opener +
                    ") is not installed.");
    }
    const std::array<const char*, 3> arguments = {program.c_str(), target.c_str(), nullptr};
    if (const std::string reason = start(arguments.data()); !reason.empty()) {
        throw Error("\"" + target + "\" cannot be opened: " + reason + ".");
    }
}

void DesktopLauncher::openHelp(const std::string& file) {
    std::error_code code;
    const std::filesystem::path page = std::filesystem::absolute(file, code);
    if (code || !std::filesystem::is_regular_file(page, code)) {
        throw Error("The help page \"" + file + "\" is not there.");
    }
    open(page.string());
}

void DesktopLauncher::openTarget(const std::string& target) {
    if (isAddress(target)) {
        open(target);
        return;
    }
    const bool document = isPdfName(target);
    std::error_code code;
    const std::filesystem::path path = std::filesystem::absolute(target, code);
    if (code || !(document ? std::filesystem::is_regular_file(path, code)
                           : std::filesystem::is_directory(path, code))) {
        throw Error((document ? "The file \"" : "The folder \"") + target + "\" is not there.");
    }
    open(path.string());
}

std::optional<std::string> DesktopLauncher::systemInformationProgram() {
    for (const char* name : {"kinfocenter", "hardinfo2", "hardinfo"}) {
        if (std::string program = findProgram(name, environment_("PATH")); !program.empty()) {
            return program;
        }
    }
    return std::string();
}

void DesktopLauncher::startProgram(const std::string& path) {
    std::error_code code;
    const std::string program = std::filesystem::absolute(path, code).string();
    if (code || !isProgram(program)) {
        throw Error("\"" + path + "\" is not a program that can be started.");
    }
    const std::array<const char*, 2> arguments = {program.c_str(), nullptr};
    if (const std::string reason = start(arguments.data()); !reason.empty()) {
        throw Error("\"" + path + "\" cannot be started: " + reason + ".");
    }
}

} // namespace veldara
