#include "cuttablecommand.h"

#include "outputtexts.h"
#include "picture/cuttableplot.h"
#include "usageerror.h"
#include "view/cuttableview.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <vector>

namespace dotweave {

static nlohmann::ordered_json Table_Json(const SCutTableView& view)
{
    nlohmann::ordered_json ranges = nlohmann::ordered_json::array();
    for (const SCutTable& range : view.rows)
        ranges.push_back({range.lowerLimit, range.upperLimit});
    return {{"stepRows", view.stepRows}, {"ranges", ranges}};
}

CCutTableCommand::CCutTableCommand(CLI::App& app)
    : CCommand(app, "cuttable", "Write the cut table of a print mode as text and as a plot",
               "dotweave cuttable --preset production-smooth-3 --svg ranges.svg --out ranges.txt"),
      m_creation(Options())
{
    Options()
        .add_option("--out", m_textFile,
                    "text file: a line per nozzle row with the lower (exclusive) and the upper (inclusive) "
                    "threshold; - is standard output")
        ->type_name("FILE");
    Options()
        .add_option("--svg", m_plotFile,
                    "plot: nozzle rows downwards, the threshold scale 0 to 65535 across, steps marked; - is "
                    "standard output")
        ->type_name("FILE");
    Json_Add("an object with stepRows and ranges: lower and upper threshold of each nozzle row");
}

EExitStatus CCutTableCommand::Run(CConsole& console) const
{
    Files_Check();
    const SCutTableView view = CutTable_View(*m_creation.Create(console));
    std::vector<SOutputText> outputs;
    if (!m_textFile.empty())
        outputs.push_back({m_textFile, CutTable_Text(view)});
    if (!m_plotFile.empty())
        outputs.push_back({m_plotFile, CutTablePlot_Svg(view)});
    OutputTexts_Write(outputs);
    if (IsJson())
        console.Out() << Table_Json(view).dump(4) << '\n';
    else if (m_textFile != "-" && m_plotFile != "-")
        console.Summary() << view.rows.size() << " nozzle rows, step " << view.stepRows
                          << " rows: " << m_textFile << (m_textFile.empty() || m_plotFile.empty() ? "" : ", ")
                          << m_plotFile << '\n';
    return ExitStatus_Good;
}

void CCutTableCommand::Files_Check() const
{
    if (m_textFile.empty() && m_plotFile.empty() && !IsJson())
        throw CUsageError("nothing to write: --out FILE, --svg FILE or --json is needed");
    if (IsJson() && (m_textFile == "-" || m_plotFile == "-"))
        throw CUsageError("--json: standard output takes one thing at a time; allowed with it: files");
    OutputNames_Check({{"--out", m_textFile}, {"--svg", m_plotFile}});
}

} // namespace dotweave
