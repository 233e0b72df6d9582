#include "commandlist.h"

#include "buildcommand.h"
#include "checkcommand.h"
#include "comparecommand.h"
#include "cuttablecommand.h"
#include "diffcommand.h"
#include "dutycommand.h"
#include "exportcommand.h"
#include "infocommand.h"
#include "presetscommand.h"
#include "rendercommand.h"
#include "reportcommand.h"
#include "simulatecommand.h"

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
        CInfoCommand,     //
        CCheckCommand,    //
        CSimulateCommand, //
        CCompareCommand,  //
        CRenderCommand,   //
        CCutTableCommand, //
        CDutyCommand,     //
        CDiffCommand,     //
        CExportCommand,   //
        CReportCommand,   //
        CPresetsCommand>(app);
}

} // namespace dotweave
