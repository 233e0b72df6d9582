#include "dotweave/maskdatastorage.h"

#include "dotweave/maskdatafactory.h"
#include "log.h"

#include <boost/thread/locks.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include <cstring>
#include <memory>

using namespace dotweave;

namespace {

constexpr char UNIT[] = "maskdatastorage";

/// Mask objects that a storage keeps. Each carries all its mask bytes, so the limit bounds memory.
constexpr int LIST_COUNT_MAX = 5;

using CStorageLock = boost::unique_lock<boost::recursive_mutex>;

/// A list entry made before the object that goes into it, so that no object is built that the list then has
/// no memory for.
using CListEntry = std::list<CMaskData_Base*>;

} // namespace

CMaskDataStorage::CMaskDataStorage() : m_listMaskData_MaxCount(LIST_COUNT_MAX)
{
    auto mutex = std::make_unique<boost::recursive_mutex>();
    m_pListMaskData = new std::list<CMaskData_Base*>;
    m_pMutex = mutex.release();
}

CMaskDataStorage::~CMaskDataStorage()
{
    delete m_pMutex;
    m_pMutex = nullptr;
    Release_ListMaskData();
}

bool CMaskDataStorage::MaskData_Current_Init(const SMaskParam& param)
{
    static constexpr char SCOPE[] =
        "bool __cdecl CMaskDataStorage::MaskData_Current_Init(const struct SMaskParam &)";
    const CStorageLock lock(*m_pMutex);
    CListEntry entry(1, nullptr);
    if (CMaskData_Base* found = MaskData_Find(param); found != nullptr) {
        m_pMaskData_Current = found;
        m_pListMaskData->remove(found);
    } else {
        m_pMaskData_Current = CMaskDataFactory::MaskData_Create(param);
    }
    if (m_pMaskData_Current == nullptr)
        return Log_Failure(UNIT, SCOPE, __LINE__);
    entry.front() = m_pMaskData_Current;
    m_pListMaskData->splice(m_pListMaskData->end(), entry);
    if (!Release_One_FromFront_If_OutOfRange())
        return Log_Failure(UNIT, SCOPE, __LINE__);
    return true;
}

CMaskData_Base* CMaskDataStorage::MaskData_Current_Get() const
{
    const CStorageLock lock(*m_pMutex);
    return m_pMaskData_Current;
}

CMaskData_Base* CMaskDataStorage::MaskData_Apply(const SMaskParam& param)
{
    static constexpr char SCOPE[] =
        "class CMaskData_Base *__cdecl CMaskDataStorage::MaskData_Apply(const struct SMaskParam &)";
    const CStorageLock lock(*m_pMutex);
    CMaskData_Base* mask = MaskData_Find(param);
    if (mask == nullptr) {
        CListEntry entry(1, nullptr);
        mask = CMaskDataFactory::MaskData_Create(param);
        entry.front() = mask;
        m_pListMaskData->splice(m_pListMaskData->end(), entry);
        if (!Release_One_FromFront_If_OutOfRange())
            Log_Failure(UNIT, SCOPE, __LINE__);
    }
    // Deliberate: neither the new object nor the current one is tested for null.
    if (mask->StepHeight_IncludeRes() == m_pMaskData_Current->StepHeight_IncludeRes())
        return mask;
    Log_Failure(UNIT, SCOPE, __LINE__);
    return nullptr;
}

CMaskData_Base* CMaskDataStorage::MaskData_Find(const SMaskParam& param)
{
    static constexpr char SCOPE[] =
        "class CMaskData_Base *__cdecl CMaskDataStorage::MaskData_Find(const struct SMaskParam &)";
    for (CMaskData_Base* mask : *m_pListMaskData) {
        if (mask == nullptr)
            Log_Failure(UNIT, SCOPE, __LINE__);
        // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison,cert-exp42-c,cert-flp37-c): bit for bit
        if (std::memcmp(&mask->MaskParam_Input(), &param, sizeof(SMaskParam)) == 0)
            return mask;
    }
    return nullptr;
}

bool CMaskDataStorage::Release_One_FromFront_If_OutOfRange()
{
    if (static_cast<std::int32_t>(m_pListMaskData->size()) <= m_listMaskData_MaxCount)
        return true;
    const CMaskData_Base* oldest = m_pListMaskData->front();
    m_pListMaskData->pop_front();
    delete oldest;
    return true;
}

bool CMaskDataStorage::Release_ListMaskData_Content()
{
    for (CMaskData_Base*& mask : *m_pListMaskData) {
        delete mask;
        mask = nullptr;
    }
    m_pListMaskData->clear();
    return true;
}

bool CMaskDataStorage::Release_ListMaskData()
{
    if (!Release_ListMaskData_Content())
        return Log_Failure(UNIT, "bool __cdecl CMaskDataStorage::Release_ListMaskData(void)", __LINE__);
    delete m_pListMaskData;
    m_pListMaskData = nullptr;
    return true;
}
