#pragma once

#include <CLI/Formatter.hpp>

#include <string>

namespace dotweave {

/// Characters of a line of help.
inline constexpr std::size_t HELP_WIDTH = 100;

/// Breaks a text into lines between words.
/// @param width   characters of a line, at most, unless a single word is longer
/// @param indent  blanks before every line but the first
std::string Text_Wrap(const std::string& text, std::size_t width, std::size_t indent);

/// The group of the options that every command has, such as --help. Help shows it last.
inline constexpr char GROUP_GENERAL[] = "General";

/// Help whose lines fit a window of HELP_WIDTH characters.
class CHelpFormat : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
    std::string make_option(const CLI::Option* option, bool isPositional) const override;
    std::string make_option_opts(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* command) const override;
};

} // namespace dotweave
