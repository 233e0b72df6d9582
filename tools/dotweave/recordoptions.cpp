#include "recordoptions.h"

#include "presets.h"
#include "record/recordfields.h"
#include "record/textquote.h"
#include "recordfile.h"
#include "usageerror.h"

#include <algorithm>
#include <cstddef>

namespace dotweave {

/// "N", or the words that the field takes: "none|nozzle".
static std::string Value_Name(const SRecordField& field)
{
    std::string words;
    for (const SRecordChoice& choice : field.choices)
        words.append(words.empty() ? "" : "|").append(choice.name);
    return words.empty() ? "N" : words;
}

CRecordOptions::CRecordOptions(CLI::App& command) : m_texts(RecordFields().size())
{
    m_presetOption =
        command.add_option("--preset", m_presetName,
                           "a mode that comes with dotweave, as \"dotweave presets\" lists them; "
                           "options given beside it override its fields");
    m_presetOption->type_name("NAME")->group(GROUP_MODE);
    m_paramOption =
        command.add_option("--param", m_paramFile,
                           "JSON file with fields of the mode by their names (nozzleCount, basePass, ...); "
                           "options given beside it override its fields");
    m_paramOption->type_name("FILE")->group(GROUP_MODE)->excludes(m_presetOption);
    for (std::size_t i = 0; i < m_texts.size(); ++i) {
        const SRecordField& field = RecordFields()[i];
        const std::string help = std::string(field.help) + "; " + RecordField_RangeText(field) +
                                 "; default " + RecordField_ValueText(field, RECORD_DEFAULT);
        m_options.push_back(command.add_option(RecordField_Option(field), m_texts[i], help)
                                ->type_name(Value_Name(field))
                                ->group(GROUP_MODE));
    }
}

bool CRecordOptions::IsGiven() const
{
    const auto isGiven = [](const CLI::Option* option) { return option->count() > 0; };
    return isGiven(m_presetOption) || isGiven(m_paramOption) ||
           std::any_of(m_options.begin(), m_options.end(), isGiven);
}

SMaskParam CRecordOptions::Record() const
{
    SMaskParam param = RECORD_DEFAULT;
    if (m_presetOption->count() > 0)
        param = Preset_Find(m_presetName, "--preset: ", "not a preset").param;
    if (m_paramOption->count() > 0)
        Record_ReadFile(m_paramFile, param);
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        const SRecordField& field = RecordFields()[i];
        if (m_options[i]->count() > 0 && !RecordField_SetText(field, m_texts[i], param))
            throw CUsageError(RecordField_RefusalText(field, RecordField_Option(field),
                                                      '"' + Text_Quote(m_texts[i]) + '"'));
    }
    return param;
}

} // namespace dotweave
