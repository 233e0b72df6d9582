#include "commandlist.h"

#include "buildcommand.h"
#include "cuttablecommand.h"
#include "presetscommand.h"

namespace dotweave {

namespace {

template <typename... TCommands>
std::vector<std::unique_ptr<CCommand>> Made(CLI::App& app)
{
    std::vector<std::unique_ptr<CCommand>> commands;
    (commands.push_back(std::make_unique<TCommands>(app)), ...);
    return commands;
}

} // namespace

std::vector<std::unique_ptr<CCommand>> CommandList_Make(CLI::App& app)
{
    return Made<          // in the order of help
        CBuildCommand,    //
        CCutTableCommand, //
        CPresetsCommand>(app);
}

} // namespace dotweave
