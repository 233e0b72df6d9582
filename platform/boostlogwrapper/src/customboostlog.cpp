#include <boostlogwrapper/customboostlog.h>

boost::log::sources::severity_logger_mt<ESeverityLevel>& CCustomBoostLog::BoostLog_Get()
{
    using CLogger = boost::log::sources::severity_logger_mt<ESeverityLevel>;

    // Deliberate: never deleted. A print thread that outlives main may still log while static objects die.
    static CLogger& logger = *new CLogger;
    return logger;
}
