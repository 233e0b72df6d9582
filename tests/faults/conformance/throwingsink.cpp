#include "throwingsink.h"

#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/make_shared.hpp>

namespace logging = boost::log;

namespace {

class CThrowingBackend : public logging::sinks::basic_sink_backend<logging::sinks::concurrent_feeding> {
public:
    [[noreturn]] static void consume(const logging::record_view& /*record*/) { throw CSinkError(); }
};

} // namespace

CThrowingSink::CThrowingSink()
    : m_sink(boost::make_shared<logging::sinks::synchronous_sink<CThrowingBackend>>(
          boost::make_shared<CThrowingBackend>()))
{
    logging::core::get()->add_sink(m_sink);
}

CThrowingSink::~CThrowingSink()
{
    logging::core::get()->remove_sink(m_sink);
}
