#pragma once

#include "dotweave/export.h"
#include "dotweave/maskdata_base.h"
#include "dotweave/maskparam.h"

#include <cstdint>
#include <list>

namespace boost {
class recursive_mutex;
}

/// Where a host gets its mask objects: keeps the last five that were made, keyed by their records byte for
/// byte, and one of them as the current one.
///
/// Ownership:     the storage owns every object it lists. The pointers it hands out are borrowed and good
///                only until the storage evicts or releases the object.
/// Order:         the object made current or added last is at the back; the front is evicted first.
///                MaskData_Apply does not move an object that it finds.
/// Copies:        shallow; storages are not meant to be copied.
/// Thread-safety: the public operations lock the storage for their whole run, a creation included. The host
///                serialises its use of the objects with its calls of the storage, and stops all calls before
///                it destroys the storage.
class DOTWEAVE_API CMaskDataStorage {
public:
    CMaskDataStorage();
    CMaskDataStorage(const CMaskDataStorage&) = default;
    CMaskDataStorage& operator=(const CMaskDataStorage&) = default;
    ~CMaskDataStorage();

    /// Makes the mask object of a print mode the current one, building it when it is not listed.
    /// @return false, with a log record, when it cannot be built; there is no current object then
    /// @throws std::bad_alloc and boost's lock errors; the lock is released
    bool MaskData_Current_Init(const SMaskParam& param);

    /// The current object; null before the first successful MaskData_Current_Init and after a failed one.
    CMaskData_Base* MaskData_Current_Get() const;

    /// The mask object of another print mode whose paper step equals that of the current object.
    /// Needs a current object and a record that can be built: neither is checked (deliberate, see
    /// docs/deliberate-behaviour.md). Never changes which object is current, but may evict it.
    /// @return null, with a log record, when the step heights differ; the object stays listed
    CMaskData_Base* MaskData_Apply(const SMaskParam& param);

private:
    CMaskData_Base* MaskData_Find(const SMaskParam& param);
    bool Release_One_FromFront_If_OutOfRange();
    bool Release_ListMaskData();
    bool Release_ListMaskData_Content();

    boost::recursive_mutex* m_pMutex = nullptr;
    std::int32_t m_listMaskData_MaxCount;
    std::list<CMaskData_Base*>* m_pListMaskData = nullptr;
    CMaskData_Base* m_pMaskData_Current = nullptr;

    friend struct SMaskDataStorage_Peek; // the tests' only key to private members; defined in tests/support
};
