#include "rowlist.h"

#include "record/textquote.h"
#include "usageerror.h"

#include <charconv>
#include <sstream>
#include <system_error>

namespace dotweave {

namespace {

constexpr double VOLUME_MAX = 2;

/// Takes a number from the start of a text. @return false, the text being unchanged, when there is none
template <typename TNumber>
bool Number_Take(std::string& text, TNumber& number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return false;
    text.erase(0, static_cast<std::size_t>(end - text.data()));
    return true;
}

bool Letter_Take(std::string& text, char letter)
{
    if (text.empty() || text.front() != letter)
        return false;
    text.erase(0, 1);
    return true;
}

/// One entry, such as "200-204:0.5".
struct SEntry {
    int first = 0;
    int last = 0;
    double volume = 0;

    bool Parse(std::string text, bool wantsVolume)
    {
        if (!Number_Take(text, first))
            return false;
        last = first;
        if (Letter_Take(text, '-') && !Number_Take(text, last))
            return false;
        if (wantsVolume && !(Letter_Take(text, ':') && Number_Take(text, volume)))
            return false;
        return text.empty() && first <= last && volume >= 0 && volume <= VOLUME_MAX;
    }
};

} // namespace

std::vector<SWeakRow> RowList_Parse(const std::string& option, const std::string& text, bool wantsVolume,
                                    int rowCount)
{
    std::vector<SWeakRow> rows;
    std::istringstream entries(text);
    for (std::string one; std::getline(entries, one, ',');) {
        SEntry entry;
        if (!entry.Parse(one, wantsVolume) || entry.first < 0 || entry.last >= rowCount)
            throw CUsageError(option + ": \"" + Text_Quote(one) +
                              "\" is not allowed; allowed: nozzle rows from 0 to " +
                              std::to_string(rowCount - 1) +
                              (wantsVolume ? ", each with a volume from 0 to 2, such as 17:0.5,200-204:0"
                                           : ", such as 17,200-204"));
        for (int row = entry.first; row <= entry.last; ++row)
            rows.push_back({row, entry.volume});
    }
    return rows;
}

} // namespace dotweave
