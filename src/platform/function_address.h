// A function of a library that was loaded while the program runs.
#pragma once

#include <cstring>

namespace veldara {

// Function: a pointer to a function. Address: the pointer that the system's lookup gives, void* of
// dlsym or FARPROC of GetProcAddress; null stays null. C++ has no cast between the two.
template <typename Function, typename Address>
Function functionAt(Address address) {
    Function function = nullptr;
    static_assert(sizeof function == sizeof address);
    std::memcpy(&function, &address, sizeof function);
    return function;
}

} // namespace veldara
