#pragma once

#include <stdexcept>

namespace dotweave {

/// A mode file that cannot be taken as a print mode. The text is one line: where, the value, what is allowed.
class CRecordError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace dotweave
