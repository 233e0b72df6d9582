#include "helpformat.h"

#include <CLI/App.hpp>

#include <sstream>
#include <utility>
#include <vector>

namespace dotweave {

namespace {

constexpr char GROUP_OWN[] = "Options"; // what a command has for itself; help shows it first
constexpr std::size_t NAME_COLUMN = 2;
constexpr std::size_t TEXT_COLUMN = 32;

/// A name on the left, a wrapped text on the right; below each other when the name is long.
std::string Entry(const std::string& name, const std::string& text)
{
    std::string entry = std::string(NAME_COLUMN, ' ') + name;
    if (entry.size() + 2 > TEXT_COLUMN)
        entry += '\n' + std::string(TEXT_COLUMN, ' ');
    else
        entry.append(TEXT_COLUMN - entry.size(), ' ');
    return entry + Text_Wrap(text, HELP_WIDTH - TEXT_COLUMN, TEXT_COLUMN) + '\n';
}

} // namespace

std::string Text_Wrap(const std::string& text, std::size_t width, std::size_t indent)
{
    std::istringstream words(text);
    std::string wrapped;
    std::size_t used = 0;
    for (std::string word; words >> word; used += word.size()) {
        if (used > 0 && used + 1 + word.size() > width) {
            wrapped += '\n' + std::string(indent, ' ');
            used = 0;
        } else if (used > 0) {
            wrapped += ' ';
            ++used;
        }
        wrapped += word;
    }
    return wrapped;
}

std::string CHelpFormat::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const
{
    std::string text = Text_Wrap(app->get_description(), HELP_WIDTH, 0) + "\n\n" +
                       make_usage(app, std::move(name)) + make_positionals(app);
    std::string others;
    std::string general;
    for (const std::string& group : app->get_groups()) {
        const auto isShown = [&group](const CLI::Option* option) {
            return option->get_group() == group && option->nonpositional();
        };
        const std::vector<const CLI::Option*> options = app->get_options(isShown);
        if (!group.empty() && !options.empty())
            (group == GROUP_GENERAL ? general
             : group == GROUP_OWN   ? text
                                    : others) += make_group(group, false, options);
    }
    return text + others + make_subcommands(app, mode) + general + '\n' + make_footer(app);
}

std::string CHelpFormat::make_option(const CLI::Option* option, bool isPositional) const
{
    return Entry(make_option_name(option, isPositional) + make_option_opts(option), make_option_desc(option));
}

std::string CHelpFormat::make_option_opts(const CLI::Option* option) const
{
    const bool hasType = option->get_type_size() != 0 && !option->get_type_name().empty();
    const std::string type = hasType ? ' ' + option->get_type_name() : "";
    return type + (option->get_required() ? " (required)" : "");
}

std::string CHelpFormat::make_subcommand(const CLI::App* command) const
{
    return Entry(command->get_name(), command->get_description());
}

} // namespace dotweave
