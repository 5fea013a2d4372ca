// A program that takes libraries from wherever Windows finds them first: shows that a planted one
// is found at all.
#include <windows.h>

int main(int count, char** names) {
    for (int i = 1; i < count; ++i) {
        LoadLibraryA(names[i]);
    }
    return 0;
}
