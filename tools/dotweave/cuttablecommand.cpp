#include "cuttablecommand.h"

#include "picture/cuttableplot.h"
#include "dotweave/maskdata_base.h"
#include "interruptguard.h"
#include "logconsole.h"
#include "maskcreation.h"
#include "outputfile.h"
#include "stagedfiles.h"
#include "record/usageerror.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr int EXIT_OK = 0;
constexpr int EXIT_REJECTED = 1;

bool IsEqual(const SCutTable& a, const SCutTable& b)
{
    return a.lowerLimit == b.lowerLimit && a.upperLimit == b.upperLimit;
}

/// The directory that a file named on the command line stands in.
fs::path Directory(const std::string& file)
{
    const fs::path directory = fs::path(file).parent_path();
    return directory.empty() ? fs::path(".") : directory;
}

std::string FileName(const std::string& file)
{
    return fs::path(file).filename().string();
}

/// The dump tells of a file that cannot be opened, and of nothing else: it is read back before it counts.
void TextFile_Write(CStagedFiles& files, const std::string& file, std::span<const SCutTable> table)
{
    const std::string path = files.Add(FileName(file)).string();
    const bool isOpened = CMaskData_Base::OutputCutTable(table.data(), static_cast<int>(table.size()), path);
    const std::vector<SCutTable> written = CutTable_ReadFile(path);
    if (!isOpened || !std::equal(table.begin(), table.end(), written.begin(), written.end(), IsEqual))
        throw fs::filesystem_error("cannot write", file, std::make_error_code(std::errc::io_error));
}

void PlotFile_Write(CStagedFiles& files, const std::string& file, const std::string& svg)
{
    COutputFile output(files.Add(FileName(file)), file);
    output.Write(svg.data(), svg.size());
    output.Close();
}

} // namespace

CCutTableCommand::CCutTableCommand(CLI::App& app)
    : m_command(app.add_subcommand("cuttable", "Write the cut table of a print mode as text and as a plot")),
      m_recordOptions(*m_command)
{
    m_command
        ->add_option("--out", m_textFile,
                     "text file: a line per nozzle row with the lower (exclusive) and the upper (inclusive) "
                     "threshold")
        ->type_name("FILE");
    m_command
        ->add_option("--svg", m_plotFile,
                     "plot: nozzle rows downwards, the threshold scale 0 to 65535 across, steps marked")
        ->type_name("FILE");
}

int CCutTableCommand::Run(std::ostream& out, std::ostream& errors) const
{
    Files_Check();
    const std::unique_ptr<CMaskData_Base> mask = Mask_Create(m_recordOptions.Record(), errors);
    if (!mask)
        return EXIT_REJECTED;
    const CLogConsole log(errors);
    const int rowCount = mask->MaskHeight_IncludeRes() / mask->YResPass();
    const int stepRows = mask->StepHeight_IncludeRes() / mask->YResPass();
    std::vector<SCutTable> table(static_cast<std::size_t>(rowCount));
    if (!mask->CreateCutTable(table.data(), rowCount))
        return EXIT_REJECTED;
    Files_Write(table, stepRows);
    out << rowCount << " nozzle rows, step " << stepRows << " rows: " << m_textFile
        << (m_textFile.empty() || m_plotFile.empty() ? "" : ", ") << m_plotFile << '\n';
    return EXIT_OK;
}

void CCutTableCommand::Files_Check() const
{
    if (m_textFile.empty() && m_plotFile.empty())
        throw CUsageError("nothing to write: --out FILE, --svg FILE or both are needed");
    for (const std::string* file : {&m_textFile, &m_plotFile})
        if (!file->empty() && FileName(*file).empty())
            throw CUsageError('"' + *file + "\" is not the name of a file");
    const auto place = [](const std::string& file) { return fs::weakly_canonical(fs::absolute(file)); };
    if (!m_textFile.empty() && !m_plotFile.empty() && place(m_textFile) == place(m_plotFile))
        throw CUsageError("--svg: \"" + m_plotFile + "\" is also the file of --out; allowed: another one");
}

/// Both files are complete before either of them takes its place.
void CCutTableCommand::Files_Write(std::span<const SCutTable> table, int stepRows) const
{
    const CInterruptGuard interruptGuard;
    std::optional<CStagedFiles> text;
    std::optional<CStagedFiles> plot;
    if (!m_textFile.empty())
        TextFile_Write(text.emplace(Directory(m_textFile)), m_textFile, table);
    if (!m_plotFile.empty())
        PlotFile_Write(plot.emplace(Directory(m_plotFile)), m_plotFile, CutTablePlot_Svg(table, stepRows));
    CInterruptGuard::Check();
    for (std::optional<CStagedFiles>* files : {&text, &plot})
        if (*files)
            (*files)->Place();
    for (std::optional<CStagedFiles>* files : {&text, &plot})
        if (*files)
            (*files)->Keep();
}

std::vector<SCutTable> CutTable_ReadFile(const std::string& path)
{
    std::ifstream stream(path);
    std::vector<SCutTable> table;
    SCutTable range = {};
    char comma = 0;
    while (stream >> range.lowerLimit >> comma >> range.upperLimit && comma == ',')
        table.push_back(range);
    return table;
}
