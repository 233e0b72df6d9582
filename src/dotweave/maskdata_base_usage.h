#pragma once

#include "dotweave/maskparam.h"

namespace dotweave {

/// The record that CMaskData_Base::Usage makes its sample mask of: one full pass with hard edges.
SMaskParam Usage_Param();

} // namespace dotweave
