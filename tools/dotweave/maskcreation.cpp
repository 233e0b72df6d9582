#include "maskcreation.h"

#include "helpformat.h"
#include "logconsole.h"
#include "progress.h"

#include <dotweave/maskparam_refusal.h>

namespace dotweave {

CMaskCreation::CMaskCreation(CLI::App& command) : m_recordOptions(command)
{
    command.add_flag("--log", m_isLogShown, "show the library's log records on standard error")
        ->group(GROUP_GENERAL);
}

std::unique_ptr<CMaskData_Base> CMaskCreation::Create(CConsole& console) const
{
    const SMaskParam param = Record();
    std::unique_ptr<CMaskData_Base> mask = Mask_Create(param, m_isLogShown, console);
    for (const std::string& warning : MaskParam_Warnings(param))
        console.Warning_Print(warning);
    return mask;
}

std::unique_ptr<CMaskData_Base> Mask_Create(const SMaskParam& param, bool isLogShown, CConsole& console)
{
    const std::string reason = MaskParam_Refusal(param);
    if (!reason.empty() && !isLogShown)
        throw CModeNotBuilt(reason);
    const CLogConsole log(console.Errors()); // on a good path the library logs nothing
    auto mask = std::make_unique<CMaskData_Base>();
    bool isCreated = false;
    {
        const CProgress progress(console, "building the masks");
        isCreated = mask->Create(param);
    }
    if (!isCreated)
        throw CModeNotBuilt(reason.empty() ? "the library could not build this mode; its log is above"
                                           : reason);
    return mask;
}

} // namespace dotweave
