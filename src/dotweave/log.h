#pragma once

#include <boost/log/attributes/named_scope.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <boost/log/utility/string_literal.hpp>
#include <boostlogwrapper/customboostlog.h>

/// @file
/// The only way into the host's logger. A record is written on the path that needs it and never on a good
/// one. Scope, unit and line are what the host sees: the operation's signature as literal text, the same on
/// every compiler; the source unit named after the class; the agreed line number, or __LINE__ where none is
/// agreed.

namespace dotweave {

/// A scope of the calling thread while it lives.
/// @throws std::bad_alloc when this is the thread's first one and there is no memory for its list of scopes.
///         Boost's sentry alone would end the process then, and the thread that logs may be a worker that has
///         just run out of memory.
class CLogScope {
public:
    CLogScope(const boost::log::string_literal& scope, const boost::log::string_literal& unit,
              unsigned int line)
        : m_scopes(boost::log::attributes::named_scope::get_scopes()), m_sentry(scope, unit, line)
    {}

private:
    const boost::log::attributes::named_scope::value_type& m_scopes; // made here, before the sentry needs it
    boost::log::attributes::named_scope::sentry m_sentry;
};

/// Pushes the scope, asks the logging core, and only then opens a record of what is streamed into the macro:
///
///     DOTWEAVE_LOG(UNIT, SCOPE, 941, SeverityLevel_Info) << "m_maskHeight = " << m_maskHeight;
#define DOTWEAVE_LOG(unit, scope, line, severity)                                                            \
    switch (const ::dotweave::CLogScope dotweaveScope(scope, unit, line); 0)                                 \
    case 0:                                                                                                  \
    default:                                                                                                 \
        BOOST_LOG_SEV(::CCustomBoostLog::BoostLog_Get(), severity)

/// Logs "failure" at SeverityLevel_Failure.
/// @return always false, so that a failing path is one statement
bool Log_Failure(const boost::log::string_literal& unit, const boost::log::string_literal& scope,
                 unsigned int line);

/// Logs "<name> = " and a number at SeverityLevel_Failure.
/// @param text  the member's name with the equals sign and its blanks
/// @return always false
bool Log_FailureValue(const boost::log::string_literal& unit, const boost::log::string_literal& scope,
                      unsigned int line, const boost::log::string_literal& text, int value);

} // namespace dotweave
