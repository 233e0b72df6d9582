#include "figuretexts.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <ostream>

namespace dotweave {

namespace {

using nlohmann::ordered_json;

ordered_json Banding_Json(const SBanding& banding, const char* worst)
{
    return {{"rms", banding.rms},
            {"plainRms", banding.plainRms},
            {"peakAmplitude", banding.peakAmplitude},
            {"peakPeriodMm", banding.peakPeriodMm},
            {"peakPeriodSteps", banding.peakPeriodSteps},
            {worst, banding.worstLine},
            {"worstDifference", banding.worstDifference}};
}

std::ostream& Name_Print(std::ostream& out, const char* name)
{
    return out << std::left << std::setw(14) << name << std::right;
}

void Banding_Print(std::ostream& out, const char* name, const char* worst, const SBanding& banding)
{
    Name_Print(out, name) << std::setw(8) << banding.rms << " L* as the eye sees it, " << banding.plainRms
                          << " without the eye";
    if (banding.peakPeriodMm > 0)
        out << "; peak " << banding.peakAmplitude << " every " << banding.peakPeriodMm << " mm, "
            << banding.peakPeriodSteps << " steps";
    out << '\n';
    Name_Print(out, worst) << std::setw(8) << banding.worstDifference << " L* from the mean, "
                           << (banding.worstLine < 0 ? "none" : "number " + std::to_string(banding.worstLine))
                           << '\n';
}

} // namespace

ordered_json Figures_Json(const SPatchFigures& figures)
{
    return {{"meanReflectance", figures.meanReflectance},
            {"meanLightness", figures.meanLightness},
            {"banding", Banding_Json(figures.banding, "worstLine")},
            {"streaks", Banding_Json(figures.streaks, "worstColumn")},
            {"graininess", figures.graininess},
            {"wrongPixels", figures.printShare.WrongShare()},
            {"wrongLines", figures.printShare.WrongLineShare()}};
}

ordered_json Errors_Json(const SSheetErrors& errors)
{
    ordered_json object = ordered_json::object();
    for (const SErrorField& field : ErrorFields())
        object[field.name] = errors.*field.member;
    object["deadRows"] = errors.deadRows;
    object["weakRows"] = ordered_json::array();
    for (const SWeakRow& weak : errors.weakRows)
        object["weakRows"].push_back({{"row", weak.row}, {"volume", weak.volume}});
    object["seed"] = errors.seed;
    return object;
}

void Figures_Print(const SPatchFigures& figures, std::ostream& out)
{
    out << std::fixed << std::setprecision(3);
    Name_Print(out, "mean") << std::setw(8) << figures.meanLightness << " L*\n";
    Banding_Print(out, "banding", "worst line", figures.banding);
    Banding_Print(out, "streaks", "worst column", figures.streaks);
    Name_Print(out, "graininess") << std::setw(8) << figures.graininess << " L*\n";
    Name_Print(out, "dead rows") << std::setw(8) << figures.printShare.WrongShare() * 100
                                 << " % of pixels lose prints, in "
                                 << figures.printShare.WrongLineShare() * 100 << " % of lines\n";
}

} // namespace dotweave
