// What a window needs just before it is shown for the first time, and just after.
#pragma once

class wxTopLevelWindow;

namespace veldara {

// Gives the native window its size before it is created. The toolkit for Linux creates it with a
// width of two pixels otherwise, lays everything out in that, and complains on standard error.
void prepareFirstShow(wxTopLevelWindow& window);

// Brings a window to the front, with the keyboard. On Linux a window that is shown may come up only
// after the window manager has answered; then it is raised as soon as it is there.
void bringToFront(wxTopLevelWindow& window);

} // namespace veldara
