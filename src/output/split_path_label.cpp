#include "output/split_path_label.h"

#include "platform/text/characters.h"

namespace veldara {

std::string SplitPathLabel(std::string_view path, int insertWinStart, int insertWinEnd,
                           char separator) {
    constexpr const char* lineBreak = "\r\n";
    std::string result;
    int onLine = 0;
    while (!path.empty()) {
        const std::string character = sleft(path, 1);
        path.remove_prefix(character.size());
        onLine = character == " " ? 0 : onLine + 1;
        result += character;
        if (onLine > insertWinStart && character.front() == separator) {
            result += lineBreak;
            onLine = 0;
        }
        if (onLine == insertWinEnd) {
            result += lineBreak;
            onLine = 0;
        }
    }
    return result;
}

} // namespace veldara
