#include "gui/desktop_app.h"

wxIMPLEMENT_APP(veldara::DesktopApp);
