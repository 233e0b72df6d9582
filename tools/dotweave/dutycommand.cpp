#include "dutycommand.h"

#include "orderedtasks.h"
#include "outputtexts.h"
#include "picture/dutyplot.h"
#include "progress.h"
#include "usageerror.h"
#include "view/duty.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <locale>
#include <ostream>
#include <sstream>
#include <vector>

namespace dotweave {

namespace {

std::string Table_Csv(const std::vector<SColorDuty>& colors)
{
    std::ostringstream csv;
    csv.imbue(std::locale::classic());
    csv << "color,row,dots,share,longestRun,together\n";
    for (std::size_t color = 0; color < colors.size(); ++color)
        for (std::size_t row = 0; row < colors[color].rows.size(); ++row) {
            const SRowDuty& duty = colors[color].rows[row];
            csv << color << ',' << row << ',' << duty.dotCount << ',' << colors[color].Share(duty) << ','
                << duty.longestRun << ',' << duty.togetherCount << '\n';
        }
    return csv.str();
}

nlohmann::ordered_json Duty_Json(const std::vector<SColorDuty>& colors)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (std::size_t color = 0; color < colors.size(); ++color)
        list.push_back({{"color", color},
                        {"rows", colors[color].rows.size()},
                        {"meanShare", colors[color].MeanShare()},
                        {"evenness", colors[color].Evenness()},
                        {"idleRows", colors[color].IdleCount()},
                        {"longestRun", colors[color].LongestRun()},
                        {"togetherShare", colors[color].TogetherShare()}});
    return list;
}

void Duty_Print(const std::vector<SColorDuty>& colors, std::ostream& out)
{
    out << "colour   rows  mean share  evenness  idle rows  longest run  with the next row\n"
        << std::fixed << std::setprecision(1);
    for (std::size_t color = 0; color < colors.size(); ++color) {
        const SColorDuty& duty = colors[color];
        out << std::setw(6) << color << std::setw(7) << duty.rows.size() << std::setw(10)
            << duty.MeanShare() * 100.0 << " %" << std::setw(8) << duty.Evenness() * 100.0 << " %"
            << std::setw(11) << duty.IdleCount() << std::setw(13) << duty.LongestRun() << std::setw(17)
            << duty.TogetherShare() * 100.0 << " %\n";
    }
}

} // namespace

CDutyCommand::CDutyCommand(CLI::App& app)
    : CCommand(app, "duty", "Show how much each nozzle row works in a full tone",
               "dotweave duty --preset production-smooth-3 --svg duty.svg --csv duty.csv"),
      m_creation(Options())
{
    Options()
        .add_option(
            "--csv", m_tableFile,
            "table: for each colour and nozzle row the dots, their share of the pixels under the row, "
            "the longest run of dots in one pass and the dots that the next row fires at the same "
            "time; - is standard output")
        ->type_name("FILE");
    Options()
        .add_option("--svg", m_plotFile,
                    "plot: nozzle rows downwards, a panel for each colour; - is standard output")
        ->type_name("FILE");
    Json_Add("a list with the figures of each colour");
}

EExitStatus CDutyCommand::Run(CConsole& console) const
{
    const bool isDataTaken = m_tableFile == "-" || m_plotFile == "-";
    if (IsJson() && isDataTaken)
        throw CUsageError("--json: standard output takes one thing at a time; allowed with it: files");
    OutputNames_Check({{"--csv", m_tableFile}, {"--svg", m_plotFile}});
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    const int colorCount = mask->MaskParam_Current().colorCount;
    std::vector<SColorDuty> colors;
    {
        CProgress progress(console, "colours", colorCount);
        OrderedTasks_Run(
            colorCount, [&mask](int color) { return Duty_Count(*mask, color); },
            [&](SColorDuty duty) {
                colors.push_back(std::move(duty));
                progress.Done_Add();
            });
    }
    std::vector<SOutputText> outputs;
    if (!m_tableFile.empty())
        outputs.push_back({m_tableFile, Table_Csv(colors)});
    if (!m_plotFile.empty())
        outputs.push_back({m_plotFile, DutyPlot_Svg(colors)});
    OutputTexts_Write(outputs);
    if (isDataTaken)
        return ExitStatus_Good;
    if (IsJson())
        console.Out() << Duty_Json(colors).dump(4) << '\n';
    else
        Duty_Print(colors, console.Out());
    return ExitStatus_Good;
}

} // namespace dotweave
