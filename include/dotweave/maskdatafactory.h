#pragma once

#include "dotweave/export.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskparam.h"

/// The one place where mask objects are made from a print mode. Has no state and caches nothing.
class DOTWEAVE_API CMaskDataFactory {
public:
    /// Makes and builds a mask object.
    /// Thread-safety: any number of threads at once.
    /// @return the object, owned by the caller; null, with one log record after those of Create, for a mode
    ///         that cannot be built. The rejected object is deliberately not destroyed
    ///         (docs/deliberate-behaviour.md).
    /// @throws whatever Create throws; the object is destroyed then
    static CMaskData_Base* MaskData_Create(const SMaskParam& param);
};
