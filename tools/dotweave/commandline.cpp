#include "commandline.h"

#include "helpformat.h"
#include "record/textquote.h"
#include "suggestion.h"
#include "usageerror.h"

#include <dotweave/version.h>

#include <CLI/CLI.hpp>

namespace dotweave {

namespace {

/// The long names of an application's options, and the names of its sub-commands.
std::vector<std::string> OptionNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

std::vector<std::string> CommandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

/// Refuses the first argument that nothing takes.
void Extras_Refuse(const CLI::App& app, const std::string& help)
{
    const std::vector<std::string> extras = app.remaining();
    if (extras.empty())
        return;
    const std::string extra = extras.front().substr(0, extras.front().find('='));
    const std::string quoted = '"' + Text_Quote(extra) + '"';
    if (extra.rfind('-', 0) == 0)
        throw CUsageError(quoted + " is not an option" + Suggestion_Text(extra, OptionNames(app)) + help);
    const std::vector<std::string> commands = CommandNames(app);
    if (!commands.empty())
        throw CUsageError(quoted + " is not a command" + Suggestion_Text(extra, commands) + help);
    throw CUsageError('"' + Text_Quote(extras.front()) + "\" is one argument too many" + help);
}

/// The application itself, or the sub-command that was chosen.
const CLI::App& Chosen(const CLI::App& app)
{
    const std::vector<CLI::App*> chosen = app.get_subcommands();
    return chosen.empty() ? app : *chosen.front();
}

} // namespace

void CommandLine_AddVersion(CLI::App& app)
{
    app.set_version_flag("--version", std::string("dotweave ") + dotweave_version(),
                         "print the version and exit")
        ->group(GROUP_GENERAL);
    app.set_help_flag("-h,--help", "print this help and exit")->group(GROUP_GENERAL);
}

CCommandLine::CCommandLine() : m_app("Builds pass masks for multi-pass inkjet printing, and looks at them.")
{
    m_app.name("dotweave");
    m_app.formatter(std::make_shared<CHelpFormat>());
    m_app.allow_extras();           // Parse refuses them
    m_app.require_subcommand(0, 1); // none is refused below, with our own message
    m_app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    m_app.get_formatter()->label("Positionals", "Arguments");
    m_app.footer(
        "\"dotweave COMMAND --help\" tells more about a command.\n\n"
        "Exit status: 0 good, 1 a check failed, 2 a wrong option, value or mode file, 3 the mode was\n"
        "not built, 4 something cannot be read or written.");
    CommandLine_AddVersion(m_app);
    m_commands = CommandList_Make(m_app);
}

const CCommand* CCommandLine::Parse(int argc, const char* const* argv, CConsole& console)
{
    std::string failure;
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::Success& success) { // --help, --version
        m_app.exit(success, console.Out(), console.Out());
        return nullptr;
    } catch (const CLI::ParseError& error) {
        failure = Text_Quote(error.what());
    }
    const CLI::App& chosen = Chosen(m_app);
    const std::string help =
        "; dotweave " + (&chosen == &m_app ? "" : chosen.get_name() + ' ') + "--help tells more";
    for (const CLI::App* app : {&std::as_const(m_app), &chosen}) // a mistyped option explains a missing one
        Extras_Refuse(*app, help);
    if (!failure.empty())
        throw CUsageError(failure + help);
    for (const std::unique_ptr<CCommand>& command : m_commands)
        if (command->IsChosen())
            return command.get();
    throw CUsageError("a command is needed" + help);
}

} // namespace dotweave
