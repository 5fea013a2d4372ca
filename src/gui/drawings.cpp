#include "gui/drawings.h"

#include "art/drawings.h"

#include <string>
#include <string_view>

namespace veldara {

namespace {

constexpr std::string_view closedFolderSvg =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">
<path fill="#b98a3c" d="M1.5 3.6a1 1 0 0 1 1-1h3.6l1.5 1.6h5.9a1 1 0 0 1 1 1v7.2a1 1 0 0 1-1 1h-11a1 1 0 0 1-1-1z"/>
<path fill="#e9bd6b" d="M1.5 6.2h13v6.2a1 1 0 0 1-1 1h-11a1 1 0 0 1-1-1z"/></svg>)";

constexpr std::string_view openFolderSvg =
    R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">
<path fill="#b98a3c" d="M1.2 3.6a1 1 0 0 1 1-1h3.6l1.5 1.6h5.2a1 1 0 0 1 1 1v7.2h-12.3z"/>
<path fill="#f3d08a" d="M3.6 6.6h11.2a.6.6 0 0 1 .58.76l-1.5 5.4a.9.9 0 0 1-.86.64H1.6a.5.5 0 0 1-.48-.64z"/></svg>)";

wxBitmapBundle bundleOf(std::string_view svg, int side) {
    if (svg.empty()) {
        return {};
    }
    const std::string text(svg); // the renderer wants a closing NUL
    return wxBitmapBundle::FromSVG(text.c_str(), wxSize(side, side));
}

} // namespace

wxBitmapBundle drawingBundle(Drawing drawing, int side) {
    return bundleOf(drawingSvg(drawing), side);
}

wxBitmapBundle folderBundle(bool open, int side) {
    return bundleOf(open ? openFolderSvg : closedFolderSvg, side);
}

wxBitmapBundle iconBundle(int side) {
    return bundleOf(iconSvg(side), side);
}

wxIconBundle programIcons() {
    wxIconBundle icons;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icons.AddIcon(iconBundle(side).GetIcon(wxSize(side, side)));
    }
    return icons;
}

} // namespace veldara
