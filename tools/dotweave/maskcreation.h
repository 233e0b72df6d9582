#pragma once

#include "recordoptions.h"

#include <dotweave/maskdata_base.h>

#include <CLI/App.hpp>

#include <iosfwd>
#include <memory>
#include <stdexcept>

namespace dotweave {

/// The library did not build a mode. The text is one line: the reason.
class CModeNotBuilt : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The options of a command that builds masks, and the building itself.
class CMaskCreation {
public:
    /// Adds the options of the print mode, and --log.
    explicit CMaskCreation(CLI::App& command);

    /// Builds the mask object of the mode that the parsed command line asks for.
    /// @param errors  takes the library's warnings, a line each, and what it logs. A refused mode is logged
    ///                only with --log: the reason says more.
    /// @throws CModeNotBuilt, CUsageError, CRecordError, CFileError, std::bad_alloc
    std::unique_ptr<CMaskData_Base> Create(std::ostream& errors) const;

private:
    CRecordOptions m_recordOptions;
    bool m_isLogShown = false;
};

} // namespace dotweave
