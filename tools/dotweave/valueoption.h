#pragma once

#include <CLI/App.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace dotweave {

/// An option that takes a number. Help, range and messages come from one place.
/// TNumber is int or double.
/// Lifetime: the command keeps a pointer into this object, which therefore stays where it is.
template <typename TNumber>
class CNumberOption {
public:
    /// Adds the option to a command.
    /// @param help     meaning and unit; the range and the initial value are appended
    /// @param initial  value when the option is not given; none for the highest, which help then explains
    CNumberOption(CLI::App& command, const std::string& name, const std::string& help, TNumber lowest,
                  TNumber highest, std::optional<TNumber> initial = std::nullopt);
    CNumberOption(const CNumberOption&) = delete;
    CNumberOption& operator=(const CNumberOption&) = delete;
    ~CNumberOption() = default;

    bool IsGiven() const { return m_option->count() > 0; }
    /// @throws CUsageError for a text that is no number of the range
    TNumber Value() const { return Value(m_highest); }
    /// The same with a lower upper limit, which depends on something else.
    TNumber Value(TNumber highest) const;

private:
    std::string m_name;
    TNumber m_lowest;
    TNumber m_highest;
    std::optional<TNumber> m_initial;
    std::string m_text;
    CLI::Option* m_option; // owned by the command
};

/// An option that takes one of some words.
/// Lifetime: as CNumberOption.
class CChoiceOption {
public:
    /// @param choices  words in the order of their numbers
    /// @param initial  number of the word that counts when the option is not given
    CChoiceOption(CLI::App& command, const std::string& name, const std::string& help,
                  std::vector<std::string> choices, std::size_t initial = 0);
    CChoiceOption(const CChoiceOption&) = delete;
    CChoiceOption& operator=(const CChoiceOption&) = delete;
    ~CChoiceOption() = default;

    /// The number of the word, from 0.
    /// @throws CUsageError for any other word
    int Value() const;
    const std::string& Word() const { return m_text; }

private:
    std::string m_name;
    std::vector<std::string> m_choices;
    std::string m_text;
};

} // namespace dotweave
