#pragma once

#include <norvane/model/NVMTabFrame.h>
#include <norvane/platform/Geometry.h>
#include <norvane/record/Kinds.h>

#include <cstdint>
#include <memory>

namespace norvane {

/// The side of an image tab: the stored one, or the kind's default, times the scale, cut to whole points;
/// unscaled where that gives 0.
std::int64_t scaledSide(field::Number stored, double defaultSide, double scale);

/// Cut to a whole number, far within 64 bits; 0 when absent.
std::int64_t wholePoints(field::Number number);

} // namespace norvane
