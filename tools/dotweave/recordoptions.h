#pragma once

#include <dotweave/maskparam.h>

#include <CLI/App.hpp>

#include <string>
#include <vector>

namespace dotweave {

/// The group of these options in help.
inline constexpr char GROUP_MODE[] = "Print mode";

/// The options that describe a print mode: one per field, --param for a mode file, --preset for a mode that
/// comes with the command.
/// Lifetime: the command keeps pointers into this object, which therefore stays where it is.
class CRecordOptions {
public:
    /// Adds the options to a command.
    explicit CRecordOptions(CLI::App& command);
    CRecordOptions(const CRecordOptions&) = delete;
    CRecordOptions& operator=(const CRecordOptions&) = delete;
    ~CRecordOptions() = default;

    /// The mode that the parsed command line asks for: the default mode or the preset, overridden by the
    /// fields of the mode file, overridden by the options.
    /// @throws CUsageError for a refused value or an unknown preset, CRecordError for a refused mode file, CFileError for one that
    ///         cannot be read
    SMaskParam Record() const;

    /// Whether any of them is given.
    bool IsGiven() const;

private:
    std::string m_presetName;
    CLI::Option* m_presetOption; // owned by the command
    std::string m_paramFile;
    CLI::Option* m_paramOption;          // owned by the command
    std::vector<std::string> m_texts;    // one per field, as given
    std::vector<CLI::Option*> m_options; // one per field, owned by the command
};

} // namespace dotweave
