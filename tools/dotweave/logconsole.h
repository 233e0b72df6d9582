#pragma once

#include <iosfwd>
#include <memory>

/// Shows what the library logs while it lives: one line per record with scope, unit and line, severity and
/// message. The library itself adds no sink; this is the part that a host plays. One at a time.
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
