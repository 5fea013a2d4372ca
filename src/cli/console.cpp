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

// A signal reaches the process, not an object, so this flag has to be static.
std::atomic<bool>& interruptFlag() {
    static std::atomic<bool> flag{false};
    return flag;
}

extern "C" void takeSignal(int) {
    interruptFlag() = true;
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

// The code page before, 0 without a console. Wine gives a test no console of its own: what a window
// shows is on the list in docs/windows-check.md.
unsigned showUtf8() {
    const UINT before = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    return before;
}

void restoreCodePage(unsigned before) {
    if (before != 0) {
        SetConsoleOutputCP(before);
    }
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

unsigned showUtf8() {
    return 0;
}

void restoreCodePage(unsigned) {}

// Waits until there is input or the user wants to stop: a signal that arrives just before a read
// would not interrupt it.
void waitForInput() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!interruptFlag() && poll(&input, 1, 50) <= 0) {
    }
}

#endif

// False if not everything was written.
bool write(std::FILE* stream, const std::string& text) {
    const bool taken = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    return std::fflush(stream) == 0 && taken;
}

} // namespace

SystemConsole::SystemConsole() : codePageBefore_(showUtf8()) {
    interruptFlag() = false; // initialised before the first signal can arrive
    catchSignals();
}

SystemConsole::~SystemConsole() {
    restoreCodePage(codePageBefore_);
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
    return interruptFlag();
}

} // namespace veldara
