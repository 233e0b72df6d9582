#include "logcase.h"
#include "logscopes.h"

#include "dotweave/maskdata_base.h"
#include "generatorthread.h"
#include "maskparams.h"
#include "peek.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

namespace {

using Records = std::vector<SLogRecord>;

/// A mask object whose layout is done, and whose parameters then become what no layout lets through: the only
/// way to a cut table that fails after a layout that did not.
class CChangedMask : public CMaskData_Base {
public:
    explicit CChangedMask(std::function<void(SMaskParam&)> change) : m_change(std::move(change)) {}

protected:
    bool InitResParam() override
    {
        const bool isDone = CMaskData_Base::InitResParam();
        m_change(SMaskData_Base_Peek{*this}.Current());
        return isDone;
    }

private:
    std::function<void(SMaskParam&)> m_change;
};

/// A mask object with its geometry and no bytes yet.
struct SLaidOut {
    explicit SLaidOut(const SMaskParam& param)
    {
        peek.Current() = param;
        peek.BaseMaskHeight() = 544;
        peek.BaseMaskWidth() = 544;
        isDone = peek.InitNoneRes() && peek.InitResParam() && peek.InitMaskSize();
    }
    CMaskData_Base mask;
    SMaskData_Base_Peek peek{mask};
    bool isDone = false;
};

/// A cut table that cannot be built, in a creation and in both assemblies on their own.
void AddTableFailure(std::vector<SLogCase>& cases, const std::string& name,
                     const std::function<void(SMaskParam&)>& change, const Records& table)
{
    const Records assembly = Chain(table, {Failure(UNIT_MASK, SCOPE_MASK_DATA)});
    cases.push_back({name + "Create",
                     [change] {
                         CChangedMask mask(change);
                         return mask.Create(MaskParam_Feathered(FeatherNozzle_Smooth_3, 100, 2, 50.0F));
                     },
                     Chain(assembly, {MaskCreateFailure(120)})});
    cases.push_back({name + "Assembly",
                     [change] {
                         SLaidOut laidOut(MaskParam_Plain());
                         change(laidOut.peek.Current());
                         return !laidOut.isDone || laidOut.peek.CreateMaskData();
                     },
                     assembly});
    cases.push_back({name + "LegacyAssembly",
                     [change] {
                         SLaidOut laidOut(MaskParam_Plain());
                         change(laidOut.peek.Current());
                         return !laidOut.isDone || laidOut.peek.CreateMaskData_Old();
                     },
                     Chain(table, {Failure(UNIT_MASK, SCOPE_MASK_DATA_OLD)})});
}

/// Far more work than the generator does while the caller asks whether it has ended.
SMaskParam Mode_Large()
{
    SMaskParam param = MaskParam_Plain();
    param.basePass = 16;
    param.colorCount = 8;
    param.xResPass = 2;
    param.yResPass = 4;
    return param;
}

} // namespace

std::vector<SLogCase> LogCases_Assembly()
{
    std::vector<SLogCase> cases;
    AddTableFailure(cases, "TableOfUnknownMode", [](SMaskParam& param) { param.featherMode = 9; },
                    {FailureValue(UNIT_MASK, SCOPE_CUT_TABLE, "m_maskParam_Current.featherMode = 9")});
    AddTableFailure(cases, "TableOfUnknownProfile",
                    [](SMaskParam& param) {
                        param.featherMode = FeatherMode_Nozzle;
                        param.featherNozzleType = -3;
                    },
                    {FailureValue(UNIT_MASK, SCOPE_CUT_TABLE, "m_maskParam_Current.featherNozzleType = -3")});
    AddTableFailure(cases, "TableOfReservedProfile",
                    [](SMaskParam& param) {
                        param.featherMode = FeatherMode_Nozzle;
                        param.featherNozzleType = FeatherNozzle_Reserved;
                    },
                    {});
    AddTableFailure(cases, "TablePrintedNoTimes",
                    [](SMaskParam& param) {
                        param.featherMode = FeatherMode_None;
                        param.colorTimes = 0;
                    },
                    {Failure(UNIT_MASK, SCOPE_TABLE_NONE_TIMES)});
    cases.push_back({"GeneratorNotDoneInTime",
                     [] {
                         SLaidOut laidOut(Mode_Large());
                         return !laidOut.isDone || laidOut.peek.CreateMaskData_Within(0);
                     },
                     {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT), Failure(UNIT_MASK, SCOPE_MASK_DATA)}});
    cases.push_back({"GeneratorNotDoneInTimeCreate",
                     [] {
                         const CThreadFaults faults(
                             Faults_GeneratorWait([](unsigned int /*milliseconds*/) { return true; }));
                         CMaskData_Base mask;
                         return mask.Create(MaskParam_Plain());
                     },
                     {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_WAIT), Failure(UNIT_MASK, SCOPE_MASK_DATA),
                      MaskCreateFailure(120)}});
    cases.push_back({"CutInADepthWithoutADotValue",
                     [] {
                         SLaidOut laidOut(MaskParam_Plain());
                         laidOut.peek.Current().bitsPerPixel = 3;
                         return !laidOut.isDone || laidOut.peek.CreateMaskData_Old();
                     },
                     {Failure(UNIT_MASK, SCOPE_MASK_CUT), Failure(UNIT_MASK, SCOPE_MASK_DATA_OLD)}});
    cases.push_back({"OutputNotComplete",
                     [] {
                         const CThreadFaults faults(Faults_Prepare(&IsProducer));
                         CMaskData_Base mask;
                         return mask.Create(MaskParam_Plain());
                     },
                     {Failure(UNIT_GENERATOR, SCOPE_GENERATOR_PREPARE), Failure(UNIT_MASK, SCOPE_MASK_DATA),
                      MaskCreateFailure(120)}});
    cases.push_back({"DumpIntoAFolderThatIsNotThere",
                     [] {
                         const std::filesystem::path path = std::filesystem::path(testing::TempDir()) /
                                                            "dotweave_no_such_folder" / "table.txt";
                         const SCutTable table[] = {{65535, 0}};
                         return CMaskData_Base::OutputCutTable(table, 1, path.string());
                     },
                     {Failure(UNIT_MASK, SCOPE_OUTPUT)}});
    return cases;
}
