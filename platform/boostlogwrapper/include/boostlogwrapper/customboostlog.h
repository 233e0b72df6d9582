#pragma once

#include <boost/log/sources/severity_logger.hpp>

#include <boostlogwrapper/boostlogwrapperexport.h>

/// How much a log line matters. The numbers are what a sink or filter of the host sees.
enum ESeverityLevel {
    SeverityLevel_Debug = 0,   ///< of use while developing only
    SeverityLevel_Info = 1,    ///< a value worth knowing; nothing has gone wrong in the press
    SeverityLevel_Failure = 2, ///< an operation has failed
};

/// The process-wide logger that every module of the host writes through.
/// Sinks, filters and formats are the business of the process that owns the log: this class adds none, so a
/// process that sets up no sink gets Boost.Log's own default.
class BOOSTLOGWRAPPER_API CCustomBoostLog {
public:
    /// The one logger, the same object in every module and thread. It is made at the first call, so a static
    /// object may log from its constructor, and is never destroyed, so a late thread may log until the end
    /// of the process. A record opened without a severity is SeverityLevel_Debug.
    /// Thread-safety: any thread, at any time after the library is loaded; the logger locks itself.
    /// @throws std::bad_alloc or a Boost.Log set-up error on the first call alone
    static boost::log::sources::severity_logger_mt<ESeverityLevel>& BoostLog_Get();
};
