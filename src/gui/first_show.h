// What a window needs just before it is shown for the first time.
#pragma once

class wxTopLevelWindow;

namespace veldara {

// Gives the native window its size before it is created. The toolkit for Linux creates it with a
// width of two pixels otherwise, lays everything out in that, and complains on standard error.
void prepareFirstShow(wxTopLevelWindow& window);

} // namespace veldara
