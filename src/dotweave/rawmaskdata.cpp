#include "dotweave/rawmaskdata.h"

#include "constants.h"
#include "rawmaskdata_table.h"

#include <cstddef>

using namespace dotweave;

int CRawMaskData::Width()
{
    return THRESHOLD_MATRIX_SIZE;
}

int CRawMaskData::Height()
{
    return THRESHOLD_MATRIX_SIZE;
}

const std::uint16_t* CRawMaskData::RawData(int index)
{
    return s_rawMaskData +
           static_cast<std::ptrdiff_t>(index % THRESHOLD_MATRIX_COUNT) * THRESHOLD_MATRIX_CELLS;
}
