#include "manualpage.h"

#include "helpformat.h"
#include "recordoptions.h"

#include <dotweave/version.h>

#include <functional>
#include <sstream>
#include <vector>

namespace dotweave {

namespace {

/// Text as the macros take it: backslashes and dashes are escaped, and no line begins like a macro.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        const bool isLineStart = escaped.empty() || escaped.back() == '\n';
        if (isLineStart && (c == '.' || c == '\''))
            escaped += "\\&";
        if (c == '\\')
            escaped += "\\e";
        else if (c == '-')
            escaped += "\\-";
        else
            escaped += c;
    }
    return escaped;
}

void Option_Add(std::ostream& page, const CLI::Option& option)
{
    const bool isPositional = option.get_positional();
    page << ".TP\n" << (isPositional ? "\\fI" : "\\fB") << Escaped(option.get_name(isPositional)) << "\\fR";
    if (option.get_type_size() != 0 && !isPositional)
        page << " \\fI" << Escaped(option.get_type_name()) << "\\fR";
    page << (option.get_required() ? " (required)\n" : "\n") << Escaped(option.get_description()) << '\n';
}

/// The options of some groups.
void Options_Add(std::ostream& page, const CLI::App& app,
                 const std::function<bool(const std::string&)>& isWanted)
{
    for (const CLI::Option* option : app.get_options())
        if (isWanted(option->get_group()))
            Option_Add(page, *option);
}

bool IsShared(const std::string& group)
{
    return group == GROUP_GENERAL || group == GROUP_MODE;
}

/// The examples in a command's footer; they are indented there.
void Examples_Add(std::ostream& page, const CLI::App& command)
{
    std::istringstream footer(command.get_footer());
    std::string line;
    std::getline(footer, line); // "Example:"
    page << ".PP\n.RS\n.nf\n";
    while (std::getline(footer, line))
        page << Escaped(line.substr(2)) << '\n';
    page << ".fi\n.RE\n";
}

void Command_Add(std::ostream& page, const CLI::App& command)
{
    page << ".SS dotweave " << Escaped(command.get_name()) << '\n'
         << Escaped(command.get_description()) << ".\n";
    Options_Add(page, command, [](const std::string& group) { return !IsShared(group); });
    Examples_Add(page, command);
}

bool HasMode(const CLI::App& command)
{
    return !command.get_options([](const CLI::Option* option) { return option->get_group() == GROUP_MODE; })
                .empty();
}

/// What all commands share, from the first that has it: --log comes with the mode.
void Shared_Add(std::ostream& page, const std::vector<const CLI::App*>& commands)
{
    for (const CLI::App* command : commands) {
        if (!HasMode(*command))
            continue;
        page << ".SH PRINT MODE\nCommands that build masks take a print mode: a preset, a mode file, or one "
                "option "
                "for each field.\n";
        Options_Add(page, *command, [](const std::string& group) { return group == GROUP_MODE; });
        page << ".SH GENERAL OPTIONS\n";
        Options_Add(page, *command, [](const std::string& group) { return group == GROUP_GENERAL; });
        return;
    }
}

constexpr char TAIL[] = R"(.SH EXIT STATUS
.TP
.B 0
success
.TP
.B 1
a check failed
.TP
.B 2
a wrong option, value or mode file
.TP
.B 3
the mode was not built: the library refuses it, or memory or threads ran out
.TP
.B 4
something cannot be read or written
.SH ENVIRONMENT
.TP
.B NO_COLOR
when set and not empty, messages have no colour
.TP
.B TERM
when it is not set or "dumb", messages have no colour, and there is no progress
.SH FILES
.TP
.I share/dotweave/presets/*.json
the presets, beside the folder of the program
.TP
.I share/dotweave/schemas/*.json
JSON schemas of what the command writes
)";

} // namespace

std::string ManualPage_Make(const CLI::App& app)
{
    const std::vector<const CLI::App*> commands = app.get_subcommands([](const CLI::App*) { return true; });
    std::ostringstream page;
    page << R"(.TH DOTWEAVE 1 "" "dotweave )" << DOTWEAVE_VERSION_STRING << R"(" "User Commands")" << '\n'
         << ".SH NAME\ndotweave \\- pass masks for multi\\-pass inkjet presses\n"
         << ".SH SYNOPSIS\n.B dotweave\n.I COMMAND\n[\\fIOPTIONS\\fR]\n"
         << ".SH DESCRIPTION\n"
         << Escaped(app.get_description())
         << "\nData go to standard output, messages and progress to standard error. Files appear whole or "
            "not at "
            "all.\n"
         << ".SH COMMANDS\n";
    for (const CLI::App* command : commands)
        Command_Add(page, *command);
    Shared_Add(page, commands);
    page << TAIL;
    return page.str();
}

} // namespace dotweave
