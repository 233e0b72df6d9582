#include "buildcommand.h"

#include "record/maskjson.h"
#include "record/textquote.h"
#include "usageerror.h"
#include "view/maskview.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <iomanip>
#include <ostream>

namespace dotweave {

namespace {

constexpr int LABEL_WIDTH = 14;
constexpr int NUMBER_WIDTH = 12;

void Row_Print(std::ostream& out, const char* label, std::int64_t number, const std::string& unit)
{
    out << std::left << std::setw(LABEL_WIDTH) << label << std::right << std::setw(NUMBER_WIDTH) << number
        << ' ' << unit << '\n';
}

std::string Count_Text(int count, const std::string& one, const std::string& many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

void Summary_Print(std::ostream& out, const CMaskData_Base& mask, std::int64_t milliseconds)
{
    const CMaskView view(mask);
    Row_Print(out, "step", mask.StepHeight_IncludeRes(), "lines per pass");
    Row_Print(out, "mask height", mask.MaskHeight_IncludeRes(), "lines");
    Row_Print(out, "mask width", mask.MaskWidth(), "pixels");
    Row_Print(out, "lead blank", mask.LeadBlankHeight_IncludeRes(), "lines");
    Row_Print(out, "positions", view.PositionCount(), "per colour");
    Row_Print(out, "mask bytes", view.ByteCount(),
              "in " + Count_Text(view.ColorCount(), "colour", "colours"));
    Row_Print(out, "time", milliseconds, "ms to build");
}

} // namespace

CBuildCommand::CBuildCommand(CLI::App& app)
    : CCommand(app, "build", "Build the masks of a print mode and write them out",
               "dotweave build --preset production --out masks"),
      m_creation(Options()),
      m_pictures(
          Options(), "--png",
          "pictures: first is position 0 of each colour, all is every position; a pixel is a pixel of the "
          "mask, black where a dot is set",
          {"none", "first", "all"}, MaskPictures_First)
{
    Options()
        .add_option("--out", m_directory,
                    "directory for mask.bin, mask.json and the pictures; made if it is not there, an older "
                    "result in it is replaced")
        ->type_name("DIR")
        ->required();
    Json_Add("an object with directory, milliseconds, pictures and geometry");
}

EExitStatus CBuildCommand::Run(CConsole& console) const
{
    const auto pictures = static_cast<EMaskPictures>(m_pictures.Value());
    if (m_directory.empty())
        throw CUsageError("--out: \"\" is not the name of a directory");
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<CMaskData_Base> mask = m_creation.Create(console);
    const auto time = std::chrono::steady_clock::now() - start;
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
    const int pictureCount = MaskOutput_Write(*mask, m_directory, pictures, console);
    if (IsJson()) {
        const nlohmann::ordered_json object = {{"directory", Text_Quote(m_directory)},
                                               {"milliseconds", milliseconds},
                                               {"pictures", pictureCount},
                                               {"geometry", Geometry_Json(*mask)}};
        console.Out() << object.dump(4) << '\n';
        return ExitStatus_Good;
    }
    std::ostream& out = console.Summary();
    Summary_Print(out, *mask, milliseconds);
    out << std::left << std::setw(LABEL_WIDTH) << "files" << m_directory << ": mask.bin, mask.json, "
        << Count_Text(pictureCount, "picture", "pictures") << '\n';
    return ExitStatus_Good;
}

} // namespace dotweave
