#pragma once

#include "src/signature/CairoCanvas.h"

#include <norvane/signature/NVMSignatureDrawView.h>

#include <vector>

namespace norvane {

void strokePath(CairoCanvas& canvas, const StrokePath& path, const Color& color);

/// White ground, the image fitted into the bounds, then the finished strokes in their own colours.
void drawSurface(CairoCanvas& canvas, Size bounds, const Image& image,
                 const std::vector<NVMSignatureDrawView::CommittedPath>& paths);

} // namespace norvane
