#pragma once

#include "record/textquote.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace dotweave {

/// A file that cannot be read or written. The text is one line for the user: the file and the reason.
class CFileError : public std::runtime_error {
public:
    CFileError(const std::filesystem::path& path, const std::string& reason)
        : std::runtime_error(Text_Quote(path.string()) + ": " + reason), m_reason(reason)
    {}
    /// @param error  the system's error number; 0 when it gave none
    CFileError(const std::filesystem::path& path, int error)
        : CFileError(path, error != 0 ? std::generic_category().message(error) : "cannot be read or written")
    {}
    const std::string& Reason() const { return m_reason; }

private:
    std::string m_reason;
};

} // namespace dotweave
