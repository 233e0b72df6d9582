#include "dotweave/maskdatafactory.h"

#include "log.h"

#include <memory>

using namespace dotweave;

CMaskData_Base* CMaskDataFactory::MaskData_Create(const SMaskParam& param)
{
    auto mask = std::make_unique<CMaskData_Base>();
    if (mask->Create(param))
        return mask.release();
    // Deliberate: the rejected object stays allocated (docs/deliberate-behaviour.md).
    static_cast<void>(mask.release());
    Log_Failure("maskdatafactory",
                "class CMaskData_Base *__cdecl CMaskDataFactory::MaskData_Create(const struct SMaskParam &)",
                __LINE__);
    return nullptr;
}
