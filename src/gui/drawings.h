// What the program's own drawings look like, at every size that a display asks for.
#pragma once

#include "controls/picture.h"

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

namespace veldara {

// A square of that side, in units of the toolkit; an empty bundle for no drawing.
wxBitmapBundle drawingBundle(Drawing drawing, int side);

// The icon of an entry of a folder list.
wxBitmapBundle folderBundle(bool open, int side);

// The program's icon, as a picture of that side and as the sign of its windows.
wxBitmapBundle iconBundle(int side);
wxIconBundle programIcons();

} // namespace veldara
