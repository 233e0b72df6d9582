#include "valueoption.h"

#include "record/textquote.h"
#include "usageerror.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <type_traits>
#include <utility>

namespace dotweave {

namespace {

template <typename TNumber>
std::string Number_Text(TNumber number)
{
    std::array<char, 64> digits = {};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), written.ptr};
}

template <typename TNumber>
std::string Range_Text(TNumber lowest, TNumber highest)
{
    return (std::is_integral_v<TNumber> ? "a whole number from " : "a number from ") + Number_Text(lowest) +
           " to " + Number_Text(highest);
}

std::string Words(const std::vector<std::string>& choices, const char* between)
{
    std::string text;
    for (const std::string& choice : choices)
        text += (text.empty() ? "" : between) + choice;
    return text;
}

[[noreturn]] void Refuse(const std::string& name, const std::string& text, const std::string& allowed)
{
    throw CUsageError(name + ": \"" + Text_Quote(text) + "\" is not allowed; allowed: " + allowed);
}

} // namespace

template <typename TNumber>
CNumberOption<TNumber>::CNumberOption(CLI::App& command, const std::string& name, const std::string& help,
                                      TNumber lowest, TNumber highest, std::optional<TNumber> initial)
    : m_name(name), m_lowest(lowest), m_highest(highest), m_initial(initial),
      m_option(command
                   .add_option(name, m_text,
                               help + "; " + Range_Text(lowest, highest) +
                                   (initial ? "; default " + Number_Text(*initial) : ""))
                   ->type_name("N"))
{}

template <typename TNumber>
TNumber CNumberOption<TNumber>::Value(TNumber highest) const
{
    if (!IsGiven())
        return std::min(m_initial.value_or(highest), highest);
    TNumber number = {};
    const char* const end = m_text.data() + m_text.size();
    const auto [last, error] = std::from_chars(m_text.data(), end, number);
    const bool isNumber = error == std::errc() && last == end;
    if (!isNumber || !(number >= m_lowest && number <= highest)) // written so that a NaN is refused too
        Refuse(m_name, m_text, Range_Text(m_lowest, highest));
    return number;
}

template class CNumberOption<int>;
template class CNumberOption<double>;

CChoiceOption::CChoiceOption(CLI::App& command, const std::string& name, const std::string& help,
                             std::vector<std::string> choices, std::size_t initial)
    : m_name(name), m_choices(std::move(choices)), m_text(m_choices[initial])
{
    command.add_option(name, m_text, help + "; default " + m_text)->type_name(Words(m_choices, "|"));
}

int CChoiceOption::Value() const
{
    const auto found = std::find(m_choices.begin(), m_choices.end(), m_text);
    if (found == m_choices.end())
        Refuse(m_name, m_text, Words(m_choices, ", "));
    return static_cast<int>(found - m_choices.begin());
}

} // namespace dotweave
