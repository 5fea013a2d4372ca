// The views of the program's windows, one source file each.
#pragma once

#include "gui/view.h"

namespace veldara {

std::unique_ptr<View> makeMainView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeAboutView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeSaveTilesView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeSheetsView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeProgressView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeResultView(Window& model, wxWindow* parent);
std::unique_ptr<View> makePaperView(Window& model, wxWindow* parent);
std::unique_ptr<View> makeCalibrationView(Window& model, wxWindow* parent);
std::unique_ptr<View> makePosterSizeView(Window& model, wxWindow* parent);
std::unique_ptr<View> makePreviewView(Window& model, wxWindow* parent);

} // namespace veldara
