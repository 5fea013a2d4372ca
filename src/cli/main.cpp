#include "cli/console.h"
#include "cli/profile_place.h"
#include "cli/tiles_program.h"

#include <string>
#include <vector>

int main(int count, char** arguments) {
    veldara::SystemConsole console;
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    return veldara::runTilesProgram(words, console, veldara::savedProfiles);
}
