#pragma once

#include "command.h"

namespace dotweave {

/// dotweave presets: lists the print modes that come with the command.
class CPresetsCommand : public CCommand {
public:
    explicit CPresetsCommand(CLI::App& app);
    /// @throws what Presets_Read throws
    EExitStatus Run(CConsole& console) const override;
};

} // namespace dotweave
