#include "targets.h"

#include "readfloor.h"

#include <hwy/highway.h>

namespace {

void Target_Choose(std::int64_t targets)
{
    hwy::SetSupportedTargetsForTest(targets);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

} // namespace

std::vector<std::int64_t> Targets_Get()
{
    std::vector<std::int64_t> targets; // the better the set, the lower its bit
    for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
        const CTargetChoice choice(target);
        if (ReadFloor_Target() == target)
            targets.push_back(target);
    }
    return targets;
}

const char* Target_Name(std::int64_t target)
{
    return hwy::TargetName(target);
}

CTargetChoice::CTargetChoice(std::int64_t target)
{
    Target_Choose(target);
}

CTargetChoice::~CTargetChoice()
{
    Target_Choose(0); // back to all that the processor has
}
