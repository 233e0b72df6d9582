#pragma once

#include <iosfwd>
#include <memory>

namespace dotweave {

/// Shows what the library logs while it lives: one line per record with scope, unit and line, severity and
/// message. The library adds no sink itself; that is the host's part. One at a time.
class CLogConsole {
public:
    /// @param stream  takes the lines and outlives this object
    explicit CLogConsole(std::ostream& stream);
    CLogConsole(const CLogConsole&) = delete;
    CLogConsole& operator=(const CLogConsole&) = delete;
    ~CLogConsole();

private:
    struct SState;
    std::unique_ptr<SState> m_state;
};

} // namespace dotweave
