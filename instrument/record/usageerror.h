#pragma once

#include <stdexcept>

/// A wrong option or mode file. The text is one line for the user: where, the value, what is allowed.
class CUsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
