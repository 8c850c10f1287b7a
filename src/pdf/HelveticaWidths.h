#pragma once

namespace norvane {

inline constexpr int kFirstHelveticaCode = 32;
inline constexpr int kLastHelveticaCode = 255;

/// The advance of a code of WinAnsiEncoding in Helvetica, in thousandths of the font size.
int helveticaWidth(unsigned char code);

} // namespace norvane
