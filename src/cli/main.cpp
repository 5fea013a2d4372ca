#include "cli/console.h"
#include "cli/profile_place.h"
#include "cli/tiles_program.h"

#include <string>
#include <vector>

#ifdef _WIN32
#include "platform/text/wide_text.h"

#include <windows.h>
// Needs the declarations of the header above.
#include <shellapi.h>
#endif

namespace {

#ifdef _WIN32

// The arguments of main() are in the system's code page, which holds every name only where it is
// UTF-8 (Windows 10 since version 1903).
std::vector<std::string> wordsOf(int, char**) {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; wide != nullptr && i < count; ++i) {
        words.push_back(veldara::narrowText(wide[i]));
    }
    LocalFree(wide);
    return words;
}

#else

std::vector<std::string> wordsOf(int count, char** arguments) {
    return {arguments + (count > 0 ? 1 : 0), arguments + count};
}

#endif

} // namespace

int main(int count, char** arguments) {
    veldara::SystemConsole console;
    return veldara::runTilesProgram(wordsOf(count, arguments), console, veldara::savedProfiles);
}
