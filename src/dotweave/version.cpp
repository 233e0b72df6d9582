#include "dotweave/version.h"

const char* dotweave_version() noexcept
{
    return DOTWEAVE_VERSION_STRING;
}
