#include "maskcreation.h"

#include "logconsole.h"

#include <ostream>

std::unique_ptr<CMaskData_Base> Mask_Create(const SMaskParam& param, std::ostream& errors)
{
    const CLogConsole log(errors);
    auto mask = std::make_unique<CMaskData_Base>();
    if (mask->Create(param))
        return mask;
    errors << "dotweave: the library does not build this mode; its log stands above\n";
    return nullptr;
}
