#include "bashcompletion.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace dotweave {

namespace {

constexpr char HEAD[] = R"(# bash completion for dotweave; made by the build from the table of options

_dotweave()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
)";

constexpr char TAIL[] = R"(}
complete -F _dotweave dotweave
)";

/// A reply of words; of file names, the shell itself knows how to quote them.
std::string Reply(const std::string& arguments)
{
    return "mapfile -t COMPREPLY < <(compgen " + arguments + " -- \"$current\")";
}

std::string Files_Reply(const char* kind)
{
    return "compopt -o filenames; " + Reply(kind);
}

/// What completes the value of an option; "" for a number, which nothing completes.
std::string Value_Reply(const CLI::Option& option)
{
    const std::string type = option.get_type_name();
    if (type == "FILE")
        return Files_Reply("-f");
    if (type == "DIR")
        return Files_Reply("-d");
    if (option.check_lname("preset"))
        return Reply("-W \"$(\"${COMP_WORDS[0]}\" presets 2>/dev/null | cut -d ' ' -f 1)\"");
    if (type.find('|') == std::string::npos)
        return "";
    std::string words = type;
    std::replace(words.begin(), words.end(), '|', ' ');
    return Reply("-W \"" + words + "\"");
}

/// All long options of an application or a command.
std::string Option_Words(const CLI::App& app)
{
    std::string words;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            words += (words.empty() ? "--" : " --") + name;
    return words;
}

bool HasPositional(const CLI::App& command)
{
    return !command.get_options([](const CLI::Option* option) { return option->get_positional(); }).empty();
}

void Command_Add(std::ostream& script, const CLI::App& command)
{
    script << "    " << command.get_name() << ")\n        case $previous in\n";
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_type_size() == 0 || option->get_lnames().empty())
            continue;
        const std::string reply = Value_Reply(*option);
        script << "        --" << option->get_lnames().front() << ") " << (reply.empty() ? "" : reply + "; ")
               << "return ;;\n";
    }
    script << "        esac\n";
    if (HasPositional(command))
        script << "        [[ $current == -* ]] || { " << Files_Reply("-f") << "; return; }\n";
    script << "        " << Reply("-W \"" + Option_Words(command) + "\"") << "\n        ;;\n";
}

} // namespace

std::string BashCompletion_Make(const CLI::App& app)
{
    const std::vector<const CLI::App*> commands = app.get_subcommands([](const CLI::App*) { return true; });
    std::string names = Option_Words(app);
    for (const CLI::App* command : commands)
        names += ' ' + command->get_name();
    std::ostringstream script;
    script << HEAD << "    if ((COMP_CWORD == 1)); then\n        " << Reply("-W \"" + names + "\"")
           << "\n        return\n    fi\n    case $command in\n";
    for (const CLI::App* command : commands)
        Command_Add(script, *command);
    script << "    esac\n" << TAIL;
    return script.str();
}

} // namespace dotweave
