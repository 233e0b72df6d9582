#include "reportcommand.h"

#include "outputtexts.h"
#include "progress.h"
#include "record/textquote.h"
#include "report/report.h"
#include "usageerror.h"

#include <filesystem>
#include <ostream>

namespace dotweave {

CReportCommand::CReportCommand(CLI::App& app)
    : CCommand(app, "report", "Write everything about a print mode as one HTML page",
               "dotweave report --preset production --out report.html"),
      m_creation(Options())
{
    Options()
        .add_option("--out", m_file,
                    "HTML file, complete in itself: it can be mailed and needs no network; - is "
                    "standard output")
        ->type_name("FILE")
        ->required();
}

EExitStatus CReportCommand::Run(CConsole& console) const
{
    if (m_file != "-" && std::filesystem::path(m_file).filename().empty())
        throw CUsageError("--out: \"" + Text_Quote(m_file) + "\" is not the name of a file");
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    std::string html;
    {
        CProgress progress(console, "the report", REPORT_PART_COUNT);
        html = Report_Html(*mask, {}, [&progress] { progress.Done_Add(); });
    }
    const SOutputText output = {m_file, html};
    OutputTexts_Write({&output, 1});
    if (m_file != "-")
        console.Summary() << "report        " << m_file << ", " << (html.size() + 1023) / 1024 << " KB\n";
    return ExitStatus_Good;
}

} // namespace dotweave
