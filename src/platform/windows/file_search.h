// The handle of a search for files, closed by the system's call for it.
#pragma once

#include <memory>

#include <windows.h>

namespace veldara {

struct EndFileSearch {
    using pointer = HANDLE;
    void operator()(HANDLE search) const { FindClose(search); }
};
using FileSearch = std::unique_ptr<void, EndFileSearch>;

} // namespace veldara
