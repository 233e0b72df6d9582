#pragma once

#include "sheet/idealsheet.h"
#include "view/pixelpicture.h"

#include <array>
#include <cstdint>

namespace dotweave {

using CMapColor = std::array<std::uint8_t, 3>; ///< red, green, blue

inline constexpr CMapColor MAP_UNWANTED = {255, 255, 255}; ///< nothing is wanted and nothing printed
inline constexpr CMapColor MAP_MISSING = {200, 30, 40};    ///< wanted and never printed
inline constexpr CMapColor MAP_FEWER = {240, 160, 60};     ///< printed, but too seldom
inline constexpr CMapColor MAP_RIGHT = {200, 205, 210};    ///< printed as often as wanted
inline constexpr CMapColor MAP_MORE = {40, 70, 150};       ///< printed too often

/// The colour of a pass in a pass map, by its turn over the line; repeats after MAP_TURN_COUNT turns.
inline constexpr int MAP_TURN_COUNT = 12;
CMapColor MapColor_Turn(int turn);

/// How often each pixel of a sheet is printed, as a picture in red, green and blue.
/// @param image  what the sheet was printed with; null asks for all pixels
/// @param times  wanted prints of a pixel
SPixelPicture CoverageMap_Make(const CIdealSheet& sheet, const CBitImage* image, int times);

/// Which pass prints each pixel first, as a picture: the colour is that of the pass's turn over the line.
/// White pixels are never printed.
SPixelPicture PassMap_Make(const CIdealSheet& sheet);

/// Turns that a pass map of this sheet shows: passes over the busiest line.
int PassMap_TurnCount(const CIdealSheet& sheet);

} // namespace dotweave
