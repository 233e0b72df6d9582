#include "infocommand.h"

#include "fileerror.h"
#include "progress.h"
#include "readyfolder.h"
#include "record/maskjson.h"
#include "record/recordfields.h"
#include "record/recordjson.h"
#include "record/textquote.h"
#include "resultfolder.h"
#include "usageerror.h"

#include <dotweave/maskparam_refusal.h>

#include <nlohmann/json.hpp>

#include <filesystem>
#include <iomanip>
#include <ostream>

namespace fs = std::filesystem;

namespace dotweave {

namespace {

using nlohmann::ordered_json;

constexpr int NAME_WIDTH = 28;

void Row_Print(std::ostream& out, const std::string& name, const std::string& value)
{
    out << "  " << std::left << std::setw(NAME_WIDTH) << name << value << '\n';
}

void Record_Print(std::ostream& out, const SMaskParam& param)
{
    out << "mode\n";
    for (const SRecordField& field : RecordFields())
        Row_Print(out, field.name, RecordField_ValueText(field, param));
}

void Object_Print(std::ostream& out, const char* title, const ordered_json& object)
{
    out << title << '\n';
    for (const auto& [name, value] : object.items())
        Row_Print(out, name, value.dump());
}

void Warnings_Print(std::ostream& out, const std::vector<std::string>& warnings)
{
    if (!warnings.empty())
        out << "warnings\n";
    for (const std::string& warning : warnings)
        out << "  " << warning << '\n';
}

} // namespace

CInfoCommand::CInfoCommand(CLI::App& app)
    : CCommand(app, "info",
               "Show the fields, geometry, size and warnings of a print mode, or check a result folder",
               "dotweave info --preset quality\n"
               "dotweave info masks"),
      m_creation(Options())
{
    Options()
        .add_option("FOLDER", m_folder,
                    "a folder that \"dotweave build\" has written: every file is compared with the size and "
                    "CRC-32 in its mask.json; exit status 1 when one differs")
        ->type_name("");
    Json_Add("an object with mode, geometry, size and warnings; of a folder with mode, warnings and files");
}

EExitStatus CInfoCommand::Mode_Show(CConsole& console) const
{
    const SMaskParam param = m_creation.Record();
    const std::unique_ptr<CMaskData_Base> mask = Mask_Create(param, m_creation.IsLogShown(), console);
    const SMaskSize size = MaskParam_Size(param);
    const ordered_json sizes = {{"maskBytes", size.maskBytes}, {"peakBytes", size.peakBytes}};
    const ordered_json geometry = Geometry_Json(*mask);
    const std::vector<std::string> warnings = MaskParam_Warnings(param);
    if (IsJson()) {
        const ordered_json object = {
            {"mode", Record_Json(param)}, {"geometry", geometry}, {"size", sizes}, {"warnings", warnings}};
        console.Out() << object.dump(4) << '\n';
        return ExitStatus_Good;
    }
    Record_Print(console.Out(), param);
    Object_Print(console.Out(), "geometry, in lines, pixels and bytes", geometry);
    Object_Print(console.Out(), "size in bytes, and the most during creation", sizes);
    Warnings_Print(console.Out(), warnings);
    return ExitStatus_Good;
}

EExitStatus CInfoCommand::Folder_Show(CConsole& console) const
{
    const fs::path ready = fs::path(m_folder) / STAGING_READY;
    if (std::error_code ignored; fs::exists(fs::symlink_status(ready, ignored)))
        console.Warning_Print(Text_Quote(ready.string()) + " holds a complete result; the next run into " +
                              Text_Quote(m_folder) + " moves it");
    const SResultRecord result = ResultFolder_Read(m_folder);
    ordered_json files = ordered_json::array();
    int wrongCount = 0;
    {
        CProgress progress(console, "files", static_cast<int>(result.files.size()));
        for (const SResultFile& file : result.files) {
            const std::string fault = ResultFile_Fault(m_folder, file);
            files.push_back({{"name", file.name}, {"bytes", file.bytes}, {"good", fault.empty()}});
            if (!fault.empty())
                files.back()["fault"] = fault;
            wrongCount += fault.empty() ? 0 : 1;
            progress.Done_Add();
        }
    }
    if (IsJson()) {
        const ordered_json object = {
            {"mode", Record_Json(result.param)}, {"warnings", result.warnings}, {"files", files}};
        console.Out() << object.dump(4) << '\n';
    } else {
        Record_Print(console.Out(), result.param);
        Warnings_Print(console.Out(), result.warnings);
        console.Out() << "files\n";
        for (const ordered_json& file : files)
            Row_Print(console.Out(), file["name"].get<std::string>(),
                      file["good"].get<bool>()
                          ? std::to_string(file["bytes"].get<std::int64_t>()) + " bytes, good"
                          : file["fault"].get<std::string>());
    }
    for (const ordered_json& file : files)
        if (!file["good"].get<bool>())
            console.Error_Print(CFileError(fs::path(m_folder) / file["name"].get<std::string>(),
                                           file["fault"].get<std::string>())
                                    .what());
    return wrongCount == 0 ? ExitStatus_Good : ExitStatus_CheckFailed;
}

EExitStatus CInfoCommand::Run(CConsole& console) const
{
    if (m_folder.empty())
        return Mode_Show(console);
    if (m_creation.IsModeGiven())
        throw CUsageError("a folder has a mode of its own; allowed with it: --json");
    return Folder_Show(console);
}

} // namespace dotweave
