#include "suggestion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace dotweave;

TEST(Suggestion, IsTheNearestName)
{
    const std::vector<std::string> names = {"build",       "cuttable",    "diff",
                                            "--base-pass", "--base-path", "--out"};
    const struct {
        const char* given;
        const char* name;
    } CASES[] = {
        {"buld", "build"},             // one left out
        {"buiild", "build"},           // one added
        {"bulid", "build"},            // two swapped: one mistake, not two
        {"BUILD", "build"},            // capitals do not count
        {"--basePass", "--base-pass"}, // dashes neither
        {"--bas-pas", "--base-pass"},  // two mistakes in seven letters
        {"--base-pat", "--base-path"}, // one from each of two names: the first; here one is nearer
        {"--ot", "--out"},             // one mistake in two letters
        {"dff", "diff"},
        {"bu", ""},                   // three mistakes
        {"cuttablefile", "cuttable"}, // four in twelve
        {"cuttablefiles", ""},        // five in thirteen
        {"passes", ""},
        {"", ""},
    };
    for (const auto& [given, name] : CASES)
        EXPECT_EQ(Suggestion_Find(given, names), name) << given;
    EXPECT_EQ(Suggestion_Find(std::string(100000, 'x'), names), "");
}

TEST(Suggestion, IsAQuestionOrNothing)
{
    const std::vector<std::string> names = {"build"};
    EXPECT_EQ(Suggestion_Text("bild", names), "; did you mean build?");
    EXPECT_EQ(Suggestion_Text("print", names), "");
    EXPECT_EQ(Suggestion_Text("bild", {}), "");
}
