#include "sheet/sheetmaps.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace dotweave {

namespace {

/// Twelve colours that can be told apart, neighbours most of all.
constexpr CMapColor TURNS[MAP_TURN_COUNT] = {
    {31, 119, 180}, {255, 187, 120}, {44, 160, 44}, {214, 39, 40},   {152, 223, 138}, {148, 103, 189},
    {255, 127, 14}, {23, 190, 207},  {140, 86, 75}, {247, 182, 210}, {127, 127, 127}, {219, 219, 60}};

SPixelPicture Map_Make(const CIdealSheet& sheet)
{
    SPixelPicture map = {sheet.ColumnCount(), sheet.LineCount(), 3, {}};
    map.pixels.reserve(sheet.Counts().size() * std::tuple_size_v<CMapColor>);
    return map;
}

void Pixel_Add(SPixelPicture& map, const CMapColor& color)
{
    map.pixels.insert(map.pixels.end(), color.begin(), color.end());
}

CMapColor CoverageColor(int count, int wanted)
{
    if (count == wanted)
        return wanted == 0 ? MAP_UNWANTED : MAP_RIGHT;
    if (count > wanted)
        return MAP_MORE;
    return count == 0 ? MAP_MISSING : MAP_FEWER;
}

/// Turn of each of the sheet's passes over a line; -1 for passes that have no row there.
void Turns_Find(const CIdealSheet& sheet, int line, std::vector<int>& turns)
{
    turns.clear();
    int turn = 0;
    for (const SHeadPass& pass : sheet.Passes())
        turns.push_back(sheet.Layout().Row(pass, sheet.Window().firstLine + line) >= 0 ? turn++ : -1);
}

} // namespace

CMapColor MapColor_Turn(int turn)
{
    return TURNS[turn % MAP_TURN_COUNT];
}

SPixelPicture CoverageMap_Make(const CIdealSheet& sheet, const CBitImage* image, int times)
{
    SPixelPicture map = Map_Make(sheet);
    std::vector<std::uint8_t> wanted(static_cast<std::size_t>(sheet.ColumnCount()), 1);
    for (int line = 0; line < sheet.LineCount(); ++line) {
        if (image != nullptr)
            image->Line_Unpack(0, line, sheet.ColumnCount(), wanted.data());
        for (int column = 0; column < sheet.ColumnCount(); ++column)
            Pixel_Add(map, CoverageColor(sheet.Count(line, column),
                                         wanted[static_cast<std::size_t>(column)] * times));
    }
    return map;
}

SPixelPicture PassMap_Make(const CIdealSheet& sheet)
{
    SPixelPicture map = Map_Make(sheet);
    std::vector<int> turns;
    for (int line = 0; line < sheet.LineCount(); ++line) {
        Turns_Find(sheet, line, turns);
        for (int column = 0; column < sheet.ColumnCount(); ++column) {
            const int pass = sheet.FirstPass(line, column);
            Pixel_Add(map, pass < 0 ? MAP_UNWANTED : MapColor_Turn(turns[static_cast<std::size_t>(pass)]));
        }
    }
    return map;
}

int PassMap_TurnCount(const CIdealSheet& sheet)
{
    int most = 0;
    std::vector<int> turns;
    for (int line = 0; line < sheet.LineCount(); ++line) {
        Turns_Find(sheet, line, turns);
        most = std::max(most, turns.empty() ? 0 : *std::max_element(turns.begin(), turns.end()) + 1);
    }
    return most;
}

} // namespace dotweave
