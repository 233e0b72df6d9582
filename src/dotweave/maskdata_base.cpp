#include "dotweave/maskdata_base.h"

#include "constants.h"
#include "int32.h"
#include "log.h"
#include "maskdata_base_refusal.h"
#include "maskdata_base_unit.h"
#include "maskgeometry.h"
#include "maskregion.h"

using namespace dotweave;

namespace {

constexpr char SCOPE_CREATE[] = "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &)";

} // namespace

CMaskData_Base::~CMaskData_Base()
{
    delete[] m_xResStep;
    m_xResStep = nullptr;
    delete[] m_yResStep;
    m_yResStep = nullptr;
    delete m_maskBlock;
    m_maskBlock = nullptr;
}

bool CMaskData_Base::Create(const SMaskParam& param)
{
    m_maskParam_Input = param;
    m_maskParam_Current = param;
    if (IsRefusedAt(ECreationStep::ColorTimes))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 85);
    SMaskGeometry geometry = Geometry_Get();
    Geometry_Split(geometry);
    Geometry_Set(geometry);
    if (IsRefusedAt(ECreationStep::Param))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 85);
    m_baseMaskHeight = THRESHOLD_MATRIX_SIZE;
    m_baseMaskWidth = THRESHOLD_MATRIX_SIZE;
    // A derived mask object can replace the set-up steps, so their results are checked here and not in them.
    if (!InitNoneRes() || IsRefusedAt(ECreationStep::Band))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 117);
    if (!InitResParam())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 118);
    if (!InitMaskSize() || IsRefusedAt(ECreationStep::MaskSize))
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 119);
    if (!CreateMaskData())
        return Log_Failure(MASKDATA_BASE_UNIT, SCOPE_CREATE, 120);
    Log_Data();
    return true;
}

const std::uint8_t* CMaskData_Base::MaskData_Get(int color, int& position) const
{
    if (color >= m_maskParam_Current.colorCount)
        return nullptr;
    if (!IsBlockOfGeometry())
        return nullptr;
    // Callers start at -1 and so get position 0 first.
    position = position < 0 ? 0 : (position % m_positionCount + 1) % m_positionCount;
    return m_maskBlock->MaskData_Const() + MaskRegion_FirstByte(color, MaskBytes_OneColor(), position,
                                                                Int32_Product(m_maskHeight, m_maskLineBytes));
}

/// Whether the block has room for every position of every colour. After a second Create that failed it is
/// still the block of the first, while the geometry may be new in part.
bool CMaskData_Base::IsBlockOfGeometry() const
{
    const std::int64_t onePosition = std::int64_t{m_maskHeight} * m_maskLineBytes;
    const std::int64_t oneColor = MaskBytes_OneColor();
    return m_maskBlock != nullptr && m_positionCount >= 1 && Int32_Holds(onePosition) &&
           onePosition * m_positionCount <= oneColor &&
           oneColor * m_maskParam_Current.colorCount <= m_maskBlock->MaskDataBytesCount();
}

int CMaskData_Base::MaskBytes_OnePosition() const
{
    return Int32_Product(Int32_Product(m_maskHeight_NoneRes, m_maskLineBytes), YResPass());
}

int CMaskData_Base::MaskBytes_OneColor() const
{
    return Int32_Product(Int32_Product(Int32_Product(m_maskHeight_NoneRes, m_positionCount), m_maskLineBytes),
                         YResPass());
}

void CMaskData_Base::Log_Data() {}
