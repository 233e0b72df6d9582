#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdata_base.h"
#include "dotweave/maskdatafactory.h"
#include "dotweave/maskdatastorage.h"
#include "maskparams.h"

#include <initializer_list>
#include <limits>
#include <utility>

namespace {

using Records = std::vector<SLogRecord>;

/// A record that no mask object can be made of, and what its creation logs.
struct SRefusedRecord {
    std::string name;
    SMaskParam param;
    Records records;
};

struct SFields {
    std::string name;
    std::function<void(SMaskParam&)> set;
};

void AddAll(std::vector<SRefusedRecord>& refused, const SMaskParam& start,
            std::initializer_list<SFields> changes, const Records& records)
{
    for (const SFields& change : changes) {
        SMaskParam param = start;
        change.set(param);
        refused.push_back({change.name, param, records});
    }
}

SMaskParam Feathered(int type)
{
    return MaskParam_Feathered(type, 544, 4, 50.0F);
}

/// Records that fail before any geometry is computed.
void AddRefusedAtOnce(std::vector<SRefusedRecord>& refused)
{
    const Records atOnce = {MaskCreateFailure(85)};
    AddAll(refused, MaskParam_Plain(),
           {{"ColorTimesZero", [](SMaskParam& param) { param.colorTimes = 0; }},
            {"ColorTimesNegative", [](SMaskParam& param) { param.colorTimes = -1; }},
            {"ColorTimesAbovePasses", [](SMaskParam& param) { param.colorTimes = 2; }},
            {"PassesZero", [](SMaskParam& param) { param.basePass = 0; }},
            {"XPassesZero", [](SMaskParam& param) { param.xResPass = 0; }},
            {"XPassesLostInTheSplit", [](SMaskParam& param) { param.resSplitType = ResSplit_X2; }},
            {"YPassesZero", [](SMaskParam& param) { param.yResPass = 0; }},
            {"YPassesLostInTheSplit",
             [](SMaskParam& param) {
                 param.yResPass = 2;
                 param.resSplitType = ResSplit_Y3;
             }},
            {"ColorsZero", [](SMaskParam& param) { param.colorCount = 0; }},
            {"BitsZero", [](SMaskParam& param) { param.bitsPerPixel = 0; }},
            {"BitsThree", [](SMaskParam& param) { param.bitsPerPixel = 3; }},
            {"LineTooLong",
             [](SMaskParam& param) { param.xResPass = std::numeric_limits<std::int32_t>::max(); }}},
           atOnce);
    AddAll(refused, Feathered(FeatherNozzle_Smooth_2),
           {{"Smooth2PercentNotANumber",
             [](SMaskParam& param) { param.featherPercent = std::numeric_limits<float>::quiet_NaN(); }},
            {"Smooth2PercentAboveAll", [](SMaskParam& param) { param.featherPercent = 100.5F; }}},
           atOnce);
    AddAll(refused, Feathered(FeatherNozzle_Smooth_3),
           {{"Smooth3PercentNegative", [](SMaskParam& param) { param.featherPercent = -1.0F; }},
            {"Smooth3LevelAboveAll", [](SMaskParam& param) { param.featherLevelPercent = 101; }},
            {"Smooth3LevelNegative", [](SMaskParam& param) { param.featherLevelPercent = -1; }}},
           atOnce);
}

/// Records that the set-up in nozzle rows refuses.
void AddRefusedByLayout(std::vector<SRefusedRecord>& refused)
{
    const auto refusedBy = [](const char* scope, unsigned int line) {
        return Records{Failure(UNIT_MASK, scope, line), MaskCreateFailure(117)};
    };
    AddAll(refused, MaskParam_Plain(),
           {{"FeatherModeTwo", [](SMaskParam& param) { param.featherMode = 2; }},
            {"FeatherModeNegative", [](SMaskParam& param) { param.featherMode = -1; }}},
           refusedBy(SCOPE_INIT_NONE_RES, 163));
    AddAll(refused, Feathered(FeatherNozzle_Smooth_2),
           {{"ProfileReserved", [](SMaskParam& param) { param.featherNozzleType = FeatherNozzle_Reserved; }},
            {"ProfileZero", [](SMaskParam& param) { param.featherNozzleType = 0; }},
            {"ProfileFive", [](SMaskParam& param) { param.featherNozzleType = 5; }},
            {"ProfileNegative", [](SMaskParam& param) { param.featherNozzleType = -2; }}},
           refusedBy(SCOPE_FEATHER_NOZZLE, 182));
    AddAll(refused, MaskParam_Plain(),
           {{"HardEdgesMorePassesThanRows", [](SMaskParam& param) { param.basePass = 545; }},
            {"HardEdgesMoreResolutionThanRows",
             [](SMaskParam& param) {
                 param.basePass = 100; // 5 rows per pass, rounded down to whole 2 x 3
                 param.xResPass = 2;
                 param.yResPass = 3;
             }},
            {"HardEdgesNoRows", [](SMaskParam& param) { param.nozzleCount = 0; }},
            {"HardEdgesNegativeRows", [](SMaskParam& param) { param.nozzleCount = -544; }}},
           refusedBy(SCOPE_FEATHER_NONE, 237));
    AddAll(refused, Feathered(FeatherNozzle_Smooth_2),
           {{"Smooth2NoStep", [](SMaskParam& param) { param.nozzleCount = 3; }},
            {"Smooth2NoRows", [](SMaskParam& param) { param.nozzleCount = 0; }}},
           refusedBy(SCOPE_SMOOTH_2, 205));
    for (const int type : {FeatherNozzle_Smooth_3, FeatherNozzle_Smooth_3_Sine}) {
        const std::string name = type == FeatherNozzle_Smooth_3 ? "Smooth3" : "Sine";
        AddAll(refused, Feathered(type),
               {{name + "NoStep", [](SMaskParam& param) { param.nozzleCount = 3; }},
                {name + "NoRows", [](SMaskParam& param) { param.nozzleCount = 0; }}},
               refusedBy(SCOPE_SMOOTH_3, LINE_ANY));
    }
}

/// Records that fail after the layout: no pass zone beside the lead blank, or masks that 32 bits do not
/// count.
void AddRefusedBySize(std::vector<SRefusedRecord>& refused)
{
    const SLogRecord noBand = {SCOPE_RES_PARAM, UNIT_MASK, 941, 1,
                               "m_maskHeight = 544, m_leadBlankHeight = 544"};
    refused.push_back({"Smooth2WithoutFeatherZones",
                       MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F),
                       {noBand, MaskCreateFailure(118)}});
    SMaskParam doubled = MaskParam_Feathered(FeatherNozzle_Smooth_2, 544, 4, 0.0F);
    doubled.yResPass = 2; // the message counts mask lines, not nozzle rows
    SLogRecord noBandDoubled = noBand;
    noBandDoubled.text = "m_maskHeight = 1088, m_leadBlankHeight = 1088";
    refused.push_back(
        {"Smooth2WithoutFeatherZonesInTwoYPasses", doubled, {noBandDoubled, MaskCreateFailure(118)}});

    SMaskParam longHead = MaskParam_Plain();
    longHead.nozzleCount = 31580642; // of 68 bytes each: one position is beyond 32 bits
    refused.push_back({"OnePositionTooLong", longHead, {MaskCreateFailure(117)}});
    longHead.nozzleCount = 31580641; // one position fits, all of them do not
    refused.push_back({"AllPositionsTooLong", longHead, {MaskCreateFailure(119)}});
    SMaskParam manyColors = MaskParam_Plain();
    manyColors.nozzleCount = 5440; // one position of 5440 * 272 bytes
    manyColors.xResPass = 2;
    manyColors.bitsPerPixel = 2;
    manyColors.colorCount = 1452; // 2148495360 bytes
    refused.push_back({"TooManyColors", manyColors, {MaskCreateFailure(119)}});
}

std::vector<SRefusedRecord> RefusedRecords()
{
    std::vector<SRefusedRecord> refused;
    AddRefusedAtOnce(refused);
    AddRefusedByLayout(refused);
    AddRefusedBySize(refused);
    return refused;
}

bool StorageInit(const SMaskParam& param)
{
    CMaskDataStorage storage;
    return storage.MaskData_Current_Init(param);
}

} // namespace

/// Every refused record three times: at the mask object, through the factory, through the storage.
std::vector<SLogCase> LogCases_Records()
{
    std::vector<SLogCase> cases;
    for (const SRefusedRecord& refused : RefusedRecords()) {
        const SMaskParam param = refused.param;
        cases.push_back({refused.name + "Create",
                         [param] {
                             CMaskData_Base mask;
                             return mask.Create(param);
                         },
                         refused.records});
        const Records factory = Chain(refused.records, {Failure(UNIT_FACTORY, SCOPE_FACTORY)});
        cases.push_back({refused.name + "Factory",
                         [param] { return CMaskDataFactory::MaskData_Create(param) != nullptr; }, factory});
        cases.push_back({refused.name + "Storage", [param] { return StorageInit(param); },
                         Chain(factory, {Failure(UNIT_STORAGE, SCOPE_STORAGE_INIT)})});
    }
    return cases;
}
