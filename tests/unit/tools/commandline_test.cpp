#include "commandline.h"

#include "helpformat.h"
#include "temporarydirectory.h"
#include "toolprocess.h"
#include "usageerror.h"

#include <dotweave/version.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

using namespace dotweave;

namespace {

std::vector<const CLI::App*> Commands(const CCommandLine& line)
{
    return line.App().get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> Lines(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// What a parse sends to standard output.
std::string Parsed(std::vector<const char*> arguments)
{
    std::ostringstream out, errors;
    CConsole console(out, errors, false);
    CCommandLine line;
    arguments.insert(arguments.begin(), "dotweave");
    EXPECT_EQ(line.Parse(static_cast<int>(arguments.size()), arguments.data(), console), nullptr);
    EXPECT_EQ(errors.str(), "");
    return out.str();
}

/// The examples that a command's help shows, without the program's name.
std::vector<std::string> Examples(const CLI::App& command)
{
    std::vector<std::string> examples;
    for (const std::string& line : Lines(command.get_footer()))
        if (line.rfind("  dotweave ", 0) == 0)
            examples.push_back(line.substr(std::string("  dotweave ").size()));
    return examples;
}

} // namespace

TEST(CommandLine, HelpOfEveryCommandFits)
{
    const CCommandLine line;
    std::vector<std::string> texts = {Parsed({"--help"})};
    for (const CLI::App* command : Commands(line)) {
        texts.push_back(Parsed({command->get_name().c_str(), "--help"}));
        EXPECT_NE(texts.front().find("\n  " + command->get_name() + ' '), std::string::npos);
        for (const char* part : {"Usage: dotweave ", "--quiet", "--version", "\nExample"})
            EXPECT_NE(texts.back().find(part), std::string::npos) << command->get_name() << ": " << part;
    }
    for (const std::string& text : texts)
        for (const std::string& one : Lines(text))
            EXPECT_LE(one.size(), HELP_WIDTH) << one;
}

TEST(CommandLine, EveryCommandTellsTheVersion)
{
    const CCommandLine line;
    for (const CLI::App* command : Commands(line))
        EXPECT_EQ(Parsed({command->get_name().c_str(), "--version"}),
                  "dotweave " DOTWEAVE_VERSION_STRING "\n");
}

TEST(CommandLine, EveryExampleOfTheHelpRuns)
{
    const CTemporaryDirectory directory;
    const CCommandLine line;
    for (const CLI::App* command : Commands(line)) {
        const std::vector<std::string> examples = Examples(*command);
        EXPECT_FALSE(examples.empty()) << command->get_name();
        for (const std::string& example : examples) {
            const SToolResult result =
                Tool_RunIn("cd " + directory.Path().string() + R"(; exec "$0" "$@")", example);
            EXPECT_TRUE(result.exitStatus == 0 || result.exitStatus == 1) << example << '\n' << result.err;
            EXPECT_EQ(result.err, "") << example;
        }
    }
}

TEST(CommandLine, AMistypedOptionComesBeforeAMissingOne)
{
    const struct {
        const char* words;
        const char* text;
    } CASES[] = {
        {"bild", R"("bild" is not a command; did you mean build?; dotweave --help tells more)"},
        {"print", R"("print" is not a command; dotweave --help tells more)"},
        {"--verson", R"("--verson" is not an option; did you mean --version?; dotweave --help tells more)"},
        {"build --basePass 3",
         R"("--basePass" is not an option; did you mean --base-pass?; dotweave build --help tells more)"},
        {"build --base-pas=3 --out x",
         R"("--base-pas" is not an option; did you mean --base-pass?; dotweave build --help tells more)"},
        {"build -z", R"("-z" is not an option; dotweave build --help tells more)"},
        {"build more --out x", R"("more" is one argument too many; dotweave build --help tells more)"},
        {"build", "--out is required; dotweave build --help tells more"},
        {"", "a command is needed; dotweave --help tells more"},
    };
    for (const auto& [words, text] : CASES) {
        const SToolResult result = Tool_Run(words);
        EXPECT_EQ(result.exitStatus, 2) << words;
        EXPECT_EQ(result.err, std::string("dotweave: ") + text + '\n') << words;
    }
}

TEST(CommandLine, QuietLeavesDataAndErrors)
{
    const CTemporaryDirectory directory;
    const SToolResult built =
        Tool_Run("build --quiet --base-pass 3 --png none --out " + directory.Path().string()); // would warn
    EXPECT_EQ(built.exitStatus, 0);
    EXPECT_EQ(built.out + built.err, "");
    EXPECT_EQ(Directory_Names(directory.Path()), (std::vector<std::string>{"mask.bin", "mask.json"}));
    EXPECT_EQ(Lines(Tool_Run("cuttable --quiet --out -").out).size(), 544U);
    EXPECT_NE(Tool_Run("cuttable --quiet --out - --base-pass 600").err, "");
}

TEST(Terminal, ShowsErrorsInColourUnlessAskedNotTo)
{
    const std::string colored = "\x1B[1;31mdotweave:\x1B[0m \"bild\"";
    const std::string plain = "dotweave: \"bild\"";
    const struct {
        const char* settings;
        const std::string& start;
    } CASES[] = {
        {"TERM=xterm NO_COLOR=", colored}, {"TERM=xterm NO_COLOR=1", plain}, {"TERM=dumb NO_COLOR=", plain}};
    for (const auto& [settings, start] : CASES) { // "script" gives its command a terminal
        const SToolResult result =
            Tool_RunIn(std::string(settings) + R"( script -qec "'$0' $*" /dev/null </dev/null)", "bild");
        EXPECT_EQ(result.exitStatus, 2) << settings;
        EXPECT_EQ(result.out.substr(result.out.find_first_not_of("\r\n"), start.size()), start) << settings;
    }
}
