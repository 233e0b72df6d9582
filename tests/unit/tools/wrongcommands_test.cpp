// Wrong command lines, each with its one line and its exit status. "@" is the test's folder: it has a mode file
// "mode.json", a refused one "refused.json" and a broken one
// "broken.json".

#include "temporarydirectory.h"
#include "toolprocess.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

struct SWrongCommand {
    const char* words;
    int exitStatus;
    const char* line; ///< after "dotweave: "
};

std::ostream& operator<<(std::ostream& stream, const SWrongCommand& one)
{
    return stream << one.words;
}

const SWrongCommand COMMANDS[] = {
    // no command, or none of ours
    {"", 2, "a command is needed; dotweave --help tells more"},
    {"pritn", 2, R"("pritn" is not a command; dotweave --help tells more)"},
    {"exprot", 2, R"("exprot" is not a command; did you mean export?; dotweave --help tells more)"},
    {"--quiet", 2, R"("--quiet" is not an option; dotweave --help tells more)"},
    // options that no command has, or not this one
    {"build --outt @/x", 2,
     R"("--outt" is not an option; did you mean --out?; dotweave build --help tells more)"},
    {"duty --png all", 2, R"("--png" is not an option; dotweave duty --help tells more)"},
    {"info --magnify 2", 2, R"("--magnify" is not an option; dotweave info --help tells more)"},
    {"render --magnfy=2 --out @/x", 2,
     R"("--magnfy" is not an option; did you mean --magnify?; dotweave render --help tells more)"},
    // missing or left over
    {"build", 2, "--out is required; dotweave build --help tells more"},
    {"export --format pbm", 2, "--out is required; dotweave export --help tells more"},
    {"render --line", 2, "--line: 1 required N missing; dotweave render --help tells more"},
    {"cuttable", 2, "nothing to write: --out FILE, --svg FILE or --json is needed"},
    {"diff speed", 2, "B is required; dotweave diff --help tells more"},
    {"diff speed speed speed", 2, R"("speed" is one argument too many; dotweave diff --help tells more)"},
    {"presets quality", 2, R"("quality" is one argument too many; dotweave presets --help tells more)"},
    // values out of range
    {"export --format xls --out @/x", 2, R"(--format: "xls" is not allowed; allowed: npy, pbm, csv, raw)"},
    {"build --png some --out @/x", 2, R"(--png: "some" is not allowed; allowed: none, first, all)"},
    {"render --magnify 0 --out @/x", 2,
     R"(--magnify: "0" is not allowed; allowed: a whole number from 1 to 64)"},
    {"render --magnify 1.5 --out @/x", 2,
     R"(--magnify: "1.5" is not allowed; allowed: a whole number from 1 to 64)"},
    {"render --color 4 --out @/x", 2, R"(--color: "4" is not allowed; allowed: a whole number from 0 to 3)"},
    {"render --position -1 --out @/x", 2,
     R"(--position: "-1" is not allowed; allowed: a whole number from 0 to 3)"},
    {"render --line 500 --lines 45 --out @/x", 2,
     R"(--lines: "45" is not allowed; allowed: a whole number from 1 to 44)"},
    {"export --preset speed --position 2 --out @/x", 2,
     R"(--position: "2" is not allowed; allowed: a whole number from 0 to 1)"},
    // options that do not go together
    {"render --sheet --line 3 --out @/x", 2, "--sheet shows all masks; allowed with it: --reduce"},
    {"render --reduce 3 --out @/x", 2, "--reduce is for --sheet; allowed without: --magnify"},
    {"info @/masks --base-pass 4", 2, "a folder has a mode of its own; allowed with it: --json"},
    {"build --preset speed --param @/mode.json --out @/x", 2,
     "--preset excludes --param; dotweave build --help tells more"},
    {"duty --json --csv -", 2, "--json: standard output takes one thing at a time; allowed with it: files"},
    {"duty --csv @/a --svg @/./a", 2, R"(--svg: "@/./a" is also the file of --csv; allowed: another one)"},
    {"duty --csv - --svg -", 2, R"(--svg: "-" is also the file of --csv; allowed: another one)"},
    {"export --out @/x/", 2, R"(--out: "@/x/" is not the name of a file)"},
    // names of modes
    {"info --preset speeed", 2,
     R"(--preset: "speeed" is not a preset; did you mean speed?; dotweave presets lists them)"},
    {"diff speed slow", 2, R"("slow" is neither a file nor a preset; dotweave presets lists them)"},
    {"duty --param @/broken.json", 2,
     "@/broken.json: basePass: 0 is not allowed; allowed: a whole number from "
     "1 to 2147483647"},
    // (29 + 544 x 64 + 30) x (38 + 544 x 64 + 8) pixels: the rulers are around the mask
    {"render --magnify 64 --out @/x", 2,
     "the picture would have 1215812250 pixels; allowed: up to 268435456; --lines, --columns and --magnify "
     "make "
     "it smaller"},
    // presses that do not exist
    {"simulate --advance-constant 1.5", 2,
     R"(--advance-constant: "1.5" is not allowed; allowed: a number from -1 to 1)"},
    {"simulate --dead 544", 2,
     R"(--dead: "544" is not allowed; allowed: nozzle rows from 0 to 543, such as 17,200-204)"},
    {"simulate --dead 3,9-5", 2,
     R"(--dead: "9-5" is not allowed; allowed: nozzle rows from 0 to 543, such as 17,200-204)"},
    {"simulate --weak 17", 2,
     R"(--weak: "17" is not allowed; allowed: nozzle rows from 0 to 543, each with a volume from 0 to 2, )"
     "such as 17:0.5,200-204:0"},
    {"simulate --paper 0.5 --ink 0.6", 2,
     R"(--ink: "0.6" is not allowed; allowed: a number from 0.001 to 0.5)"},
    {"simulate --tint 101", 2, R"(--tint: "101" is not allowed; allowed: a number from 0 to 100)"},
    {"simulate --overlap wet", 2, R"(--overlap: "wet" is not allowed; allowed: union, density)"},
    {"simulate --color 4", 2, R"(--color: "4" is not allowed; allowed: a whole number from 0 to 3)"},
    {"simulate --image @/x.png --tint 40", 2,
     "--image: the picture has a tint and a size; allowed without --tint, --lines, --columns"},
    {"simulate --patch @/x --profile @/./x", 2,
     R"(--profile: "@/./x" is also the file of --patch; allowed: another one)"},
    {"simulate --json --patch -", 2,
     "--json: standard output takes one thing at a time; allowed with it: files"},
    {"simulate --image @/nothing.png", 4, "@/nothing.png: No such file or directory"},
    {"compare", 2, "MODE is required; dotweave compare --help tells more"},
    {"compare speed --advances 0,x", 2,
     R"(--advances: "x" is not allowed; allowed: numbers from -1 to 1, such as 0,0.25,0.5,1)"},
    {"compare speed --advances 2", 2,
     R"(--advances: "2" is not allowed; allowed: numbers from -1 to 1, such as 0,0.25,0.5,1)"},
    {"compare speed slow", 2, R"("slow" is neither a file nor a preset; dotweave presets lists them)"},
    {"compare speed --json --sheet -", 2,
     "--json: standard output takes one thing at a time; allowed with it: files"},
    {"check --unifrm", 2,
     R"("--unifrm" is not an option; did you mean --uniform?; dotweave check --help tells more)"},
    // modes that are refused
    {"check --color-times 9", 3, "colorTimes 9 is more than basePass 4; nearest that builds: colorTimes 4"},
    {"duty --param @/refused.json", 3,
     "colorTimes 9 is more than basePass 4; nearest that builds: colorTimes 4"},
    {"diff speed @/refused.json", 3,
     "colorTimes 9 is more than basePass 4; nearest that builds: colorTimes 4"},
    // what cannot be read or written
    {"info @/nothing", 4, "@/nothing/mask.json: No such file or directory"},
    {"build --param @/nothing.json --out @/x", 4, "@/nothing.json: No such file or directory"},
    {"diff speed @/nothing.json", 4, "@/nothing.json: No such file or directory"},
    {"export --preset speed --out /dev/full", 4, "/dev/full: No space left on device"},
    {"render --preset speed --out @/mode.json/x", 4, "@/mode.json: Not a directory"},
};

class WrongCommand : public testing::TestWithParam<SWrongCommand> {
protected:
    void SetUp() override
    {
        File_Write(directory.Sub("mode.json"), R"({"basePass": 2})");
        File_Write(directory.Sub("refused.json"), R"({"colorTimes": 9})");
        File_Write(directory.Sub("broken.json"), R"({"basePass": 0})");
    }
    /// With the folder's name for each "@".
    std::string Full(std::string text) const
    {
        for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at + 1))
            text.replace(at, 1, directory.Path().string());
        return text;
    }

    CTemporaryDirectory directory;
};

} // namespace

TEST_P(WrongCommand, CostsOneLineAndWritesNothing)
{
    const auto& [words, exitStatus, line] = GetParam();
    const SToolResult result = Tool_Run(Full(words));
    EXPECT_EQ(result.err, "dotweave: " + Full(line) + '\n');
    EXPECT_EQ(result.exitStatus, exitStatus);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(Directory_Names(directory.Path()),
              (std::vector<std::string>{"broken.json", "mode.json", "refused.json"}));
}

INSTANTIATE_TEST_SUITE_P(, WrongCommand, testing::ValuesIn(COMMANDS));
