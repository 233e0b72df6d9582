#pragma once

#include <stdexcept>

namespace dotweave {

/// A wrong option. The text is one line for the user: where, the value, what is allowed.
class CUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace dotweave
