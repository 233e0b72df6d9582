#include "dotweave/maskparam_refusal.h"

#include "maskdata_base_refusal.h"
#include "modesearch.h"

using namespace dotweave;

std::string MaskParam_Refusal(const SMaskParam& param)
{
    SMaskGeometry geometry;
    const SRefusal* refusal = Mode_Try(param, geometry);
    return refusal != nullptr ? refusal->reason(geometry) : std::string();
}

// Size and warnings come from the same geometry, next.

SMaskSize MaskParam_Size(const SMaskParam& /*param*/)
{
    return {0, 0};
}

std::vector<std::string> MaskParam_Warnings(const SMaskParam& /*param*/)
{
    return {};
}
