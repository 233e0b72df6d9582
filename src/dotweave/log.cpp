#include "log.h"

namespace dotweave {

bool Log_Failure(const boost::log::string_literal& unit, const boost::log::string_literal& scope,
                 unsigned int line)
{
    DOTWEAVE_LOG(unit, scope, line, SeverityLevel_Failure) << "failure";
    return false;
}

bool Log_FailureValue(const boost::log::string_literal& unit, const boost::log::string_literal& scope,
                      unsigned int line, const boost::log::string_literal& text, int value)
{
    DOTWEAVE_LOG(unit, scope, line, SeverityLevel_Failure) << text << value;
    return false;
}

} // namespace dotweave
