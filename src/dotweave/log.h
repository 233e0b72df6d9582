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

/// Pushes the scope, asks the logging core, and only then opens a record that takes what is streamed behind
/// it:
///     DOTWEAVE_LOG(UNIT, SCOPE, 941, SeverityLevel_Info) << "m_maskHeight = " << m_maskHeight;
#define DOTWEAVE_LOG(unit, scope, line, severity)                                                            \
    switch (const ::boost::log::attributes::named_scope::sentry dotweaveScope(scope, unit, line); 0)         \
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
