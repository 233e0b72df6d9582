#include "presetscommand.h"

#include "presets.h"
#include "record/recordjson.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iomanip>

namespace dotweave {

CPresetsCommand::CPresetsCommand(CLI::App& app)
    : CCommand(app, "presets", "List the print modes that come with dotweave, a line each",
               "dotweave presets")
{
    Json_Add("a list of objects with name, description and all fields of the mode");
}

EExitStatus CPresetsCommand::Run(CConsole& console) const
{
    const std::vector<SPreset> presets = Presets_Read();
    if (IsJson()) {
        nlohmann::ordered_json list = nlohmann::ordered_json::array();
        for (const SPreset& preset : presets)
            list.push_back({{"name", preset.name},
                            {"description", preset.description},
                            {"mode", Record_Json(preset.param)}});
        console.Out() << list.dump(4) << '\n';
        return ExitStatus_Good;
    }
    std::size_t width = 0;
    for (const SPreset& preset : presets)
        width = std::max(width, preset.name.size());
    for (const SPreset& preset : presets)
        console.Out() << std::left << std::setw(static_cast<int>(width) + 2) << preset.name
                      << preset.description << '\n';
    return ExitStatus_Good;
}

} // namespace dotweave
