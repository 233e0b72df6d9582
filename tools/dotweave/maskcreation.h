#pragma once

#include "console.h"
#include "recordoptions.h"

#include <dotweave/maskdata_base.h>

#include <CLI/App.hpp>

#include <memory>
#include <stdexcept>

namespace dotweave {

/// The library did not build a mode. The text is one line: the reason.
class CModeNotBuilt : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Builds the mask object of a mode. Does not print the library's warnings about it.
/// @param isLogShown  whether the console gets the library's log of a refused mode too
/// @param console     takes the progress and what the library logs
/// @throws CModeNotBuilt, std::bad_alloc
std::unique_ptr<CMaskData_Base> Mask_Create(const SMaskParam& param, bool isLogShown, CConsole& console);

/// The options of a command that builds masks, and the building itself.
class CMaskCreation {
public:
    /// Adds the options of the print mode, and --log.
    explicit CMaskCreation(CLI::App& command);

    /// The mode that the parsed command line asks for.
    /// @throws as CRecordOptions::Record
    SMaskParam Record() const { return m_recordOptions.Record(); }
    /// Whether any option of a mode is given.
    bool IsModeGiven() const { return m_recordOptions.IsGiven(); }

    bool IsLogShown() const { return m_isLogShown; }

    /// Builds the mask object of the mode that the parsed command line asks for.
    /// @param console  takes the progress, the library's warnings, a line each, and what it logs. A refused
    ///                 mode is logged only with --log: the reason says more.
    /// @throws CModeNotBuilt, CUsageError, CRecordError, CFileError, std::bad_alloc
    std::unique_ptr<CMaskData_Base> Create(CConsole& console) const;

private:
    CRecordOptions m_recordOptions;
    bool m_isLogShown = false;
};

} // namespace dotweave
