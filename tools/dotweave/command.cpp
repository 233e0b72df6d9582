#include "command.h"

#include "commandline.h"
#include "helpformat.h"

namespace dotweave {

namespace {

std::string Example_Text(const std::string& example)
{
    std::string text = example.find('\n') == std::string::npos ? "Example:\n  " : "Examples:\n  ";
    for (const char c : example)
        text += c == '\n' ? std::string("\n  ") : std::string{c};
    return text;
}

} // namespace

CCommand::CCommand(CLI::App& app, const std::string& name, const std::string& summary,
                   const std::string& example)
    : m_app(app.add_subcommand(name, summary))
{
    m_app->footer(Example_Text(example));
    m_app->group("Commands");
    m_app->allow_extras(); // CommandLine_Parse refuses them, with a suggestion
    CommandLine_AddVersion(*m_app);
    m_app->add_flag("--quiet", m_isQuiet, "no summary, no warnings and no progress; errors only")
        ->group(GROUP_GENERAL);
}

void CCommand::Json_Add(const std::string& help)
{
    m_app->add_flag("--json", m_isJson, help);
}

} // namespace dotweave
