#include "maskcreation.h"

#include "logconsole.h"

#include <dotweave/maskparam_refusal.h>

#include <ostream>

namespace dotweave {

CMaskCreation::CMaskCreation(CLI::App& command) : m_recordOptions(command)
{
    command.add_flag("--log", m_isLogShown, "show the library's log records on standard error");
}

std::unique_ptr<CMaskData_Base> CMaskCreation::Create(std::ostream& errors) const
{
    const SMaskParam param = m_recordOptions.Record();
    const std::string reason = MaskParam_Refusal(param);
    if (!reason.empty() && !m_isLogShown)
        throw CModeNotBuilt(reason);
    const CLogConsole log(errors); // on a good path the library logs nothing
    auto mask = std::make_unique<CMaskData_Base>();
    if (!mask->Create(param))
        throw CModeNotBuilt(reason.empty() ? "the library could not build this mode; its log is above"
                                           : reason);
    for (const std::string& warning : MaskParam_Warnings(param))
        errors << "dotweave: warning: " << warning << '\n';
    return mask;
}

} // namespace dotweave
