#include "cli/console.h"

#include "platform/error.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <iostream>

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace veldara {
namespace {

// A signal reaches the process, not an object: the one mark that has to be the process's.
std::atomic<bool>& interruptMark() {
    static std::atomic<bool> mark{false};
    return mark;
}

extern "C" void takeSignal(int) {
    interruptMark() = true;
}

#ifdef _WIN32

void catchSignals() {
    std::signal(SIGINT, takeSignal);
    std::signal(SIGTERM, takeSignal);
}

bool isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

int terminalColumns() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0 ? info.dwSize.X
                                                                                  : 80;
}

// A read of the console ends by itself when Ctrl-C is pressed.
void waitForInput() {}

#else

void catchSignals() {
    struct sigaction action {};
    action.sa_handler = takeSignal;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}

int terminalColumns() {
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// Until there is something to read or the user wants to stop. A signal that comes just before a
// read would not end it.
void waitForInput() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!interruptMark() && poll(&input, 1, 50) <= 0) {
    }
}

#endif

// False when not all of it went out.
bool write(std::FILE* stream, const std::string& text) {
    const bool taken = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    return std::fflush(stream) == 0 && taken;
}

} // namespace

SystemConsole::SystemConsole() {
    interruptMark() = false; // made before the first signal can come
    catchSignals();
}

void SystemConsole::print(const std::string& text) {
    if (!write(stdout, text)) {
        throw Error("Could not write to the standard output.");
    }
}

void SystemConsole::complain(const std::string& text) {
    write(stderr, text);
}

bool SystemConsole::canAsk() const {
    return isTerminal(stdin) && isTerminal(stderr);
}

bool SystemConsole::canDraw() const {
    return isTerminal(stderr);
}

int SystemConsole::columns() const {
    return terminalColumns();
}

std::optional<std::string> SystemConsole::readLine() {
    waitForInput();
    std::string line;
    if (interrupted() || !std::getline(std::cin, line)) {
        return std::nullopt;
    }
    return line;
}

bool SystemConsole::interrupted() const {
    return interruptMark();
}

} // namespace veldara
