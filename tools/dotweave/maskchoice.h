#pragma once

#include "valueoption.h"
#include "view/maskview.h"

#include <string>
#include <vector>

namespace dotweave {

/// One mask of a mode.
struct SMaskPlace {
    int color;
    int position;
};

/// The options --color and --position: which masks of a mode a command takes.
class CMaskChoice {
public:
    /// @param without  what happens without the option, for its help
    CMaskChoice(CLI::App& command, const std::string& without);

    bool IsColorGiven() const { return m_color.IsGiven(); }
    bool IsPositionGiven() const { return m_position.IsGiven(); }
    /// The first chosen mask: colour 0 and position 0 where nothing is given.
    /// @throws CUsageError for a colour or position that the mode does not have
    SMaskPlace First(const CMaskView& view) const;
    /// All chosen masks, colour by colour: every colour and every position where nothing is given.
    /// @throws CUsageError
    std::vector<SMaskPlace> All(const CMaskView& view) const;

private:
    CNumberOption<int> m_color;
    CNumberOption<int> m_position;
};

} // namespace dotweave
