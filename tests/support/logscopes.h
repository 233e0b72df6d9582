#pragma once

#include "logcapture.h"

#include <string>
#include <vector>

/// @file
/// What a host reads in its log: the signatures of the operations, as they are agreed, and their units. The
/// library spells its own; these are written down a second time on purpose.

inline constexpr char UNIT_MASK[] = "maskdata_base";
inline constexpr char UNIT_FACTORY[] = "maskdatafactory";
inline constexpr char UNIT_STORAGE[] = "maskdatastorage";
inline constexpr char UNIT_SINE[] = "sinemask";
inline constexpr char UNIT_GENERATOR[] = "maskdatagenerator";
inline constexpr char UNIT_WORKER[] = "maskdatagenerator_sub";

inline constexpr char SCOPE_MASK_CREATE[] = "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &)";
inline constexpr char SCOPE_INIT_NONE_RES[] = "bool __cdecl CMaskData_Base::InitNoneRes(void)";
inline constexpr char SCOPE_FEATHER_NONE[] = "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNone(void)";
inline constexpr char SCOPE_FEATHER_NOZZLE[] = "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle(void)";
inline constexpr char SCOPE_SMOOTH_2[] =
    "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_2(void)";
inline constexpr char SCOPE_SMOOTH_3[] =
    "bool __cdecl CMaskData_Base::InitNoneRes_FeatherNozzle_Smooth_3(void)";
inline constexpr char SCOPE_RES_PARAM[] = "bool __cdecl CMaskData_Base::InitResParam(void)";
inline constexpr char SCOPE_USAGE[] = "bool __cdecl CMaskData_Base::Usage(void)";
inline constexpr char SCOPE_CUT_TABLE[] =
    "bool __cdecl CMaskData_Base::CreateCutTable(struct SCutTable *,int)";
inline constexpr char SCOPE_TABLE_NONE_TIMES[] =
    "bool __cdecl CMaskData_Base::CreateCutTable_FeatherNone_ColorMultipleTimes(struct SCutTable *,int)";
inline constexpr char SCOPE_TABLE_SMOOTH_2[] =
    "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_2(struct SCutTable *,int)";
inline constexpr char SCOPE_TABLE_SMOOTH_3_TIMES_1[] =
    "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_1(struct SCutTable *,int)";
inline constexpr char SCOPE_TABLE_SMOOTH_3_TIMES_2[] =
    "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorMultipleTimes_Style_2(struct SCutTable *,int)";
inline constexpr char SCOPE_TABLE_SMOOTH_3_ONCE_2[] =
    "bool __cdecl CMaskData_Base::CreateCutTable_Smooth_3_ColorOneTimes_Style_2(struct SCutTable *,int,int)";
inline constexpr char SCOPE_MASK_DATA[] = "bool __cdecl CMaskData_Base::CreateMaskData(void)";
inline constexpr char SCOPE_MASK_CUT[] =
    "bool __cdecl CMaskData_Base::GenerateMaskData(struct SParam_GenerateMaskData &)";
inline constexpr char SCOPE_MASK_DATA_OLD[] = "bool __cdecl CMaskData_Base::CreateMaskData_Old(void)";
inline constexpr char SCOPE_OUTPUT[] =
    "bool __cdecl CMaskData_Base::OutputCutTable(const struct SCutTable *,int,class std::basic_string<char,"
    "struct std::char_traits<char>,class std::allocator<char> >)";

inline constexpr char SCOPE_FACTORY[] =
    "class CMaskData_Base *__cdecl CMaskDataFactory::MaskData_Create(const struct SMaskParam &)";
inline constexpr char SCOPE_STORAGE_INIT[] =
    "bool __cdecl CMaskDataStorage::MaskData_Current_Init(const struct SMaskParam &)";
inline constexpr char SCOPE_STORAGE_APPLY[] =
    "class CMaskData_Base *__cdecl CMaskDataStorage::MaskData_Apply(const struct SMaskParam &)";
inline constexpr char SCOPE_STORAGE_FIND[] =
    "class CMaskData_Base *__cdecl CMaskDataStorage::MaskData_Find(const struct SMaskParam &)";
inline constexpr char SCOPE_STORAGE_RELEASE[] = "bool __cdecl CMaskDataStorage::Release_ListMaskData(void)";

inline constexpr char SCOPE_SINE_CREATE[] = "bool __cdecl CSineMask::Create(int,int,int,enum ESinMaskType)";
inline constexpr char SCOPE_SINE_DOWN[] = "bool __cdecl CSineMask::GenerateMaskData_Down(void)";

inline constexpr char SCOPE_GENERATOR_CREATE[] =
    "bool __cdecl CMaskDataGenerator::Create(const struct SMaskDataGenerate_Param &,int)";
inline constexpr char SCOPE_GENERATOR_INIT[] = "bool __cdecl CMaskDataGenerator::Init_Param(void)";
inline constexpr char SCOPE_GENERATOR_SINE[] = "bool __cdecl CMaskDataGenerator::Init_SinMask(void)";
inline constexpr char SCOPE_GENERATOR_WORKERS[] =
    "bool __cdecl CMaskDataGenerator::Create_AllSubThread(void)";
inline constexpr char SCOPE_GENERATOR_PREPARE[] = "bool __cdecl CMaskDataGenerator::Prepare(void)";
inline constexpr char SCOPE_GENERATOR_LOOP[] = "bool __cdecl CMaskDataGenerator::OneLoop(void)";
inline constexpr char SCOPE_GENERATOR_ADD[] = "bool __cdecl CMaskDataGenerator::AddSourceData(void)";
inline constexpr char SCOPE_GENERATOR_WAIT[] = "bool __cdecl CMaskDataGenerator::Wait_Exit(unsigned int)";

inline constexpr char SCOPE_WORKER_CREATE[] =
    "bool __cdecl CMaskDataGenerator_Sub::Create(const struct SMaskDataGenerate_Param *,"
    "class CKelPtrQueueBuffer<struct SMaskDataGenerate_SubParam> *,const class CSineMask *)";
inline constexpr char SCOPE_WORKER_PREPARE[] = "bool __cdecl CMaskDataGenerator_Sub::Prepare(void)";
inline constexpr char SCOPE_WORKER_LOOP[] = "bool __cdecl CMaskDataGenerator_Sub::OneLoop(void)";
inline constexpr char SCOPE_WORKER_GENERATE[] = "bool __cdecl CMaskDataGenerator_Sub::GenerateMaskData(void)";
inline constexpr char SCOPE_WORKER_COMPLETE[] =
    "bool __cdecl CMaskDataGenerator_Sub::CompleteOneSourceData(void)";

/// The record of a failure that names a member and its value.
inline SLogRecord FailureValue(const std::string& unit, const std::string& scope, const std::string& text)
{
    return {scope, unit, LINE_ANY, 2, text};
}

/// The record that ends a failed creation of a mask object.
inline SLogRecord MaskCreateFailure(unsigned int line)
{
    return Failure(UNIT_MASK, SCOPE_MASK_CREATE, line);
}

/// What the steps of a chain log one after the other.
inline std::vector<SLogRecord> Chain(std::vector<SLogRecord> inner, const std::vector<SLogRecord>& outer)
{
    inner.insert(inner.end(), outer.begin(), outer.end());
    return inner;
}
