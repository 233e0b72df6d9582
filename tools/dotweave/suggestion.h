#pragma once

#include <span>
#include <string>

namespace dotweave {

/// The name that somebody meant who mistyped one.
/// Two names are as far apart as the characters that were left out, added, exchanged or swapped with their
/// neighbour (optimal string alignment, as in Damerau, Commun. ACM 7, 1964). Dashes and capitals do not
/// count, so "--basePass" is "--base-pass".
/// @return the nearest name, or "" when none is near: one character, or at most a third of them, may be
///         wrong
std::string Suggestion_Find(const std::string& given, std::span<const std::string> names);

/// "; did you mean ...?" with the nearest name, or "" when none is near.
std::string Suggestion_Text(const std::string& given, std::span<const std::string> names);

} // namespace dotweave
