#include "exportcommand.h"

#include "outputtexts.h"
#include "usageerror.h"
#include "view/maskexport.h"
#include "view/maskview.h"

#include <cstddef>
#include <cstdint>
#include <ostream>

namespace dotweave {

namespace {

enum EExportFormat { ExportFormat_Npy, ExportFormat_Pbm, ExportFormat_Csv, ExportFormat_Raw };

constexpr std::int64_t FILE_BYTES_MAX = std::int64_t{1} << 31;

/// Bytes of a file, a little more for CSV's line heads.
std::int64_t File_Bytes(EExportFormat format, const SMaskLines& lines, std::size_t maskCount)
{
    const std::int64_t pixels = std::int64_t{lines.width} * lines.height;
    const std::int64_t bytes = format == ExportFormat_Npy   ? pixels
                               : format == ExportFormat_Csv ? 2 * pixels
                                                            : std::int64_t{lines.lineBytes} * lines.height;
    return bytes * static_cast<std::int64_t>(maskCount);
}

void Mask_Append(EExportFormat format, const SMaskLines& lines, const SMaskPlace& place, std::string& file)
{
    switch (format) {
    case ExportFormat_Npy:
        MaskValues_Append(lines, file);
        break;
    case ExportFormat_Pbm:
        MaskPbm_Append(lines, file);
        break;
    case ExportFormat_Csv:
        MaskCsv_Append(lines, place.color, place.position, file);
        break;
    case ExportFormat_Raw:
        file.append(lines.bytes, lines.bytes + std::ptrdiff_t{lines.lineBytes} * lines.height);
        break;
    }
}

} // namespace

CExportCommand::CExportCommand(CLI::App& app)
    : CCommand(app, "export", "Write masks in a format that other programs read",
               "dotweave export --preset production --out masks.npy\n"
               "dotweave export --preset speed --format pbm --color 0 --position 1 --out mask.pbm"),
      m_creation(Options()),
      m_format(
          Options(), "--format",
          "npy: NumPy array of colours, positions, lines, columns with 1 for a dot; pbm: portable bitmaps, "
          "one after the other; csv: a row for each mask line, a column for each pixel; raw: the bytes as "
          "in mask.bin",
          {"npy", "pbm", "csv", "raw"}),
      m_choice(Options(), "all of them without this option")
{
    Options()
        .add_option("--out", m_file, "file to write; - is standard output")
        ->type_name("FILE")
        ->required();
}

EExitStatus CExportCommand::Run(CConsole& console) const
{
    const auto format = static_cast<EExportFormat>(m_format.Value());
    OutputNames_Check({{"--out", m_file}});
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    const CMaskView view(*mask);
    const std::vector<SMaskPlace> places = m_choice.All(view);
    const SMaskLines first = view.Lines(0, 0);
    const std::int64_t bytes = File_Bytes(format, first, places.size());
    if (bytes > FILE_BYTES_MAX)
        throw CUsageError("--format " + m_format.Word() + ": the file would have " + std::to_string(bytes) +
                          " bytes; allowed: up to " + std::to_string(FILE_BYTES_MAX) +
                          "; --color and --position choose fewer masks");
    std::string file;
    if (format == ExportFormat_Npy)
        file = Npy_Head({m_choice.IsColorGiven() ? 1 : view.ColorCount(),
                         m_choice.IsPositionGiven() ? 1 : view.PositionCount(), first.height, first.width});
    if (format == ExportFormat_Csv)
        file = MaskCsv_Head(first.width);
    file.reserve(file.size() + static_cast<std::size_t>(bytes));
    for (const SMaskPlace& place : places)
        Mask_Append(format, view.Lines(place.color, place.position), place, file);
    const std::size_t size = file.size();
    OutputTexts_Write(std::vector<SOutputText>{{m_file, std::move(file)}});
    if (m_file != "-")
        console.Summary() << m_file << ": " << places.size()
                          << (places.size() == 1 ? " mask of " : " masks of ") << first.height
                          << " lines and " << first.width << " columns, " << size << " bytes\n";
    return ExitStatus_Good;
}

} // namespace dotweave
