#include "log.h"

bool Log_Failure(boost::log::string_literal unit, boost::log::string_literal scope, unsigned int line)
{
    DOTWEAVE_LOG(unit, scope, line, SeverityLevel_Failure) << "failure";
    return false;
}

bool Log_FailureValue(boost::log::string_literal unit, boost::log::string_literal scope, unsigned int line,
                      boost::log::string_literal text, int value)
{
    DOTWEAVE_LOG(unit, scope, line, SeverityLevel_Failure) << text << value;
    return false;
}
