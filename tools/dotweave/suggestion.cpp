#include "suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace dotweave {

namespace {

constexpr std::size_t GIVEN_MAX = 64; // no name is that long

/// What counts of a name.
std::string Letters(const std::string& name)
{
    std::string letters;
    for (const char c : name)
        if (c != '-' && c != '_')
            letters += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return letters;
}

std::size_t Distance(const std::string& a, const std::string& b)
{
    // rows[i][j]: from the first i letters of a to the first j of b
    std::vector<std::vector<std::size_t>> rows(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i)
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                rows[i][j] = i + j;
                continue;
            }
            const std::size_t exchanged = rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, exchanged});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    return rows[a.size()][b.size()];
}

} // namespace

std::string Suggestion_Find(const std::string& given, std::span<const std::string> names)
{
    const std::string letters = Letters(given);
    if (letters.size() > GIVEN_MAX)
        return "";
    std::string nearest;
    std::size_t most = std::max<std::size_t>(letters.size() / 3, 1);
    for (const std::string& name : names) {
        const std::size_t distance = Distance(letters, Letters(name));
        if (distance > most || (distance == most && !nearest.empty()))
            continue;
        nearest = name;
        most = distance;
    }
    return nearest;
}

std::string Suggestion_Text(const std::string& given, std::span<const std::string> names)
{
    const std::string name = Suggestion_Find(given, names);
    return name.empty() ? "" : "; did you mean " + name + "?";
}

} // namespace dotweave
