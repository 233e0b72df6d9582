#include "checkcommand.h"

#include "orderedtasks.h"
#include "progress.h"
#include "record/recordjson.h"
#include "sheet/builtcheck.h"
#include "sheet/uniformcheck.h"
#include "view/maskdifference.h"
#include "view/maskview.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <ostream>
#include <span>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

constexpr int PART_LINES = 256; // of the sheet, so that memory does not grow with it

struct SVerdicts {
    SBuiltCheck built;
    int faultyColor = -1; ///< of the first fault
    bool isSameAgain = false;
    SUniformCheck uniform;
    int times = 1;

    bool IsAsBuilt() const { return built.IsGood() && isSameAgain; }
};

std::span<const std::uint8_t> Bytes_All(const CMaskData_Base& mask)
{
    const CMaskView view(mask);
    return {view.Lines(0, 0).bytes, static_cast<std::size_t>(view.ByteCount())};
}

bool IsSameAgain(const CMaskData_Base& mask)
{
    CMaskData_Base again;
    if (!again.Create(mask.MaskParam_Input()))
        throw CModeNotBuilt("the mode was built once, but not a second time");
    return MaskShape_Of(again) == MaskShape_Of(mask) &&
           MaskDifference(Bytes_All(mask), Bytes_All(again), MaskShape_Of(mask)).byteCount == 0;
}

SVerdicts Verdicts(CMaskData_Base& mask, CConsole& console)
{
    const CMaskLaw law(mask);
    const int colorCount = law.Shape().colorCount;
    const std::int64_t cycle = law.Layout().CycleLines();
    const auto parts = static_cast<int>((cycle + PART_LINES - 1) / PART_LINES);
    SVerdicts verdicts;
    verdicts.times = mask.MaskParam_Current().colorTimes;
    CProgress progress(console, "checking", colorCount * (1 + parts));
    int color = 0;
    OrderedTasks_Run(
        colorCount, [&](int one) { return Built_Check(mask, law, one); },
        [&](const SBuiltCheck& check) {
            if (verdicts.built.position < 0 && check.position >= 0)
                verdicts.faultyColor = color;
            verdicts.built.Add(check);
            ++color;
            progress.Done_Add();
        });
    OrderedTasks_Run(
        colorCount * parts,
        [&](int task) {
            const std::int64_t first = std::int64_t{task % parts} * PART_LINES;
            return Uniform_Check(mask, law, task / parts, law.Layout().SteadyLine_First() + first,
                                 static_cast<int>(std::min<std::int64_t>(PART_LINES, cycle - first)));
        },
        [&](const SUniformCheck& check) {
            verdicts.uniform.Add(check);
            progress.Done_Add();
        });
    verdicts.isSameAgain = IsSameAgain(mask);
    return verdicts;
}

double Share(std::int64_t part, std::int64_t whole)
{
    return static_cast<double>(part) / static_cast<double>(whole);
}

ordered_json Share_Json(const SSheetShare& share, const SSheetShare& all)
{
    return {{"pixels", share.pixelCount},
            {"lines", share.lineCount},
            {"pixelShare", Share(share.pixelCount, all.pixelCount)},
            {"lineShare", Share(share.lineCount, all.lineCount)}};
}

ordered_json Verdicts_Json(const SVerdicts& verdicts)
{
    const SBuiltCheck& built = verdicts.built;
    ordered_json asBuilt = {{"good", verdicts.IsAsBuilt()},
                            {"pixels", built.pixelCount},
                            {"wrongPixels", built.wrongPixelCount},
                            {"paddingBits", built.paddingBitCount},
                            {"wrapsWithoutSeam", built.wrapsWithoutSeam},
                            {"sameOnSecondBuild", verdicts.isSameAgain}};
    if (built.position >= 0)
        asBuilt["firstFault"] = {{"color", verdicts.faultyColor},
                                 {"position", built.position},
                                 {"line", built.line},
                                 {"column", built.column}};
    const SUniformCheck& uniform = verdicts.uniform;
    ordered_json causes = ordered_json::array();
    for (std::size_t i = 0; i < UNEVEN_CAUSE_COUNT; ++i) {
        const auto cause = static_cast<EUnevenCause>(i);
        if (uniform.Cause(cause).pixelCount == 0)
            continue;
        ordered_json entry = {{"name", UnevenCause_Name(cause)}, {"text", UnevenCause_Text(cause)}};
        entry.update(Share_Json(uniform.Cause(cause), uniform.all));
        causes.push_back(entry);
    }
    return {{"asBuilt", asBuilt},
            {"uniform",
             {{"good", uniform.IsUniform()},
              {"times", verdicts.times},
              {"pixels", uniform.all.pixelCount},
              {"lines", uniform.all.lineCount},
              {"uneven", Share_Json(uniform.uneven, uniform.all)},
              {"causes", causes}}}};
}

void Built_Print(const SVerdicts& verdicts, std::ostream& out)
{
    const SBuiltCheck& built = verdicts.built;
    out << "as built  " << (verdicts.IsAsBuilt() ? "yes" : "no") << '\n'
        << "  pixels against the cut table  " << built.wrongPixelCount << " of " << built.pixelCount << '\n'
        << "  padding bits that are set     " << built.paddingBitCount << '\n'
        << "  positions wrap                " << (built.wrapsWithoutSeam ? "without a seam" : "with a seam")
        << '\n'
        << "  second build                  " << (verdicts.isSameAgain ? "the same bytes" : "other bytes")
        << '\n';
    if (built.position < 0)
        return;
    out << "  first fault                   colour " << verdicts.faultyColor << ", position "
        << built.position << ", line " << built.line << ", "
        << (built.column < 0 ? "padding" : "column " + std::to_string(built.column)) << '\n';
}

void Share_Print(const std::string& name, const SSheetShare& share, const SSheetShare& all, std::ostream& out)
{
    out << "  " << std::left << std::setw(52) << name << std::right << std::setw(9)
        << Share(share.pixelCount, all.pixelCount) * 100.0 << " % of pixels" << std::setw(9)
        << Share(share.lineCount, all.lineCount) * 100.0 << " % of lines\n";
}

void Uniform_Print(const SVerdicts& verdicts, std::ostream& out)
{
    const SUniformCheck& uniform = verdicts.uniform;
    const std::string times = std::to_string(verdicts.times) + (verdicts.times == 1 ? " time" : " times");
    out << "uniform   " << (uniform.IsUniform() ? "yes" : "no") << '\n';
    out << std::fixed << std::setprecision(4);
    Share_Print("not printed " + times, uniform.uneven, uniform.all, out);
    for (std::size_t i = 0; i < UNEVEN_CAUSE_COUNT; ++i) {
        const auto cause = static_cast<EUnevenCause>(i);
        if (uniform.Cause(cause).pixelCount > 0)
            Share_Print(std::string("- ") + UnevenCause_Text(cause), uniform.Cause(cause), uniform.all, out);
    }
}

} // namespace

CCheckCommand::CCheckCommand(CLI::App& app)
    : CCommand(app, "check", "Check that the masks are as their cut table says, and that they print evenly",
               "dotweave check --preset production-smooth-3\n"
               "dotweave check --preset backlit-hard --uniform --json"),
      m_creation(Options())
{
    Options().add_flag(
        "--uniform", m_isUniformWanted,
        "the exit status is that of \"uniform\": 1 unless every pixel but those of threshold 0 "
        "is printed colorTimes times; without it the status is that of \"as built\"");
    Json_Add("an object with mode, asBuilt and uniform");
}

EExitStatus CCheckCommand::Run(CConsole& console) const
{
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    const SVerdicts verdicts = Verdicts(*mask, console);
    if (IsJson()) {
        ordered_json object = {{"mode", Record_Json(mask->MaskParam_Input())}};
        object.update(Verdicts_Json(verdicts));
        console.Out() << object.dump(4) << '\n';
    } else {
        Built_Print(verdicts, console.Out());
        Uniform_Print(verdicts, console.Out());
    }
    const bool isGood = m_isUniformWanted ? verdicts.uniform.IsUniform() : verdicts.IsAsBuilt();
    return isGood ? ExitStatus_Good : ExitStatus_CheckFailed;
}

} // namespace dotweave
