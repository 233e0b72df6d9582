#include "dotweave/maskparam_refusal.h"

// The interface alone, for those who build on it; the conditions move here from the mask object next.

std::string MaskParam_Refusal(const SMaskParam& /*param*/)
{
    return {};
}

SMaskSize MaskParam_Size(const SMaskParam& /*param*/)
{
    return {0, 0};
}

std::vector<std::string> MaskParam_Warnings(const SMaskParam& /*param*/)
{
    return {};
}
