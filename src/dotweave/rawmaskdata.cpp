#include "dotweave/rawmaskdata.h"

#include "constants.h"
#include "rawmaskdata_table.h"

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
    return Matrix_OfPlane(index);
}
