#include "logconsole.h"

#include <boost/core/null_deleter.hpp>
#include <boost/log/attributes/named_scope.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/log/sinks/text_ostream_backend.hpp>
#include <boost/log/utility/formatting_ostream.hpp>
#include <boost/make_shared.hpp>
#include <boostlogwrapper/customboostlog.h>

#include <ostream>
#include <string>

namespace dotweave {

namespace logging = boost::log;

namespace {

using CConsoleSink = logging::sinks::synchronous_sink<logging::sinks::text_ostream_backend>;

/// "bool __cdecl CMaskData_Base::Create(const struct SMaskParam &), maskdata_base:85, severity 2: failure"
void Record_Format(const logging::record_view& record, logging::formatting_ostream& stream)
{
    const auto scopes = logging::extract<logging::attributes::named_scope::value_type>("Scope", record);
    if (scopes && !scopes->empty()) {
        const logging::attributes::named_scope_entry& innermost = scopes->back();
        stream << innermost.scope_name.c_str() << ", " << innermost.file_name.c_str() << ':' << innermost.line
               << ", ";
    }
    if (const auto severity = logging::extract<ESeverityLevel>("Severity", record))
        stream << "severity " << static_cast<int>(*severity) << ": ";
    if (const auto message = logging::extract<std::string>("Message", record))
        stream << *message;
}

} // namespace

struct CLogConsole::SState {
    boost::shared_ptr<CConsoleSink> sink;
    logging::attribute_set::iterator scopeAttribute;
    bool isScopeAdded = false;
};

CLogConsole::CLogConsole(std::ostream& stream) : m_state(std::make_unique<SState>())
{
    const auto backend = boost::make_shared<logging::sinks::text_ostream_backend>();
    backend->add_stream(boost::shared_ptr<std::ostream>(&stream, boost::null_deleter()));
    backend->auto_flush(true);
    m_state->sink = boost::make_shared<CConsoleSink>(backend);
    m_state->sink->set_formatter(&Record_Format);
    const boost::shared_ptr<logging::core> core = logging::core::get();
    const auto added = core->add_global_attribute("Scope", logging::attributes::named_scope());
    m_state->scopeAttribute = added.first;
    m_state->isScopeAdded = added.second;
    core->add_sink(m_state->sink);
}

CLogConsole::~CLogConsole()
{
    const boost::shared_ptr<logging::core> core = logging::core::get();
    core->remove_sink(m_state->sink);
    if (m_state->isScopeAdded)
        core->remove_global_attribute(m_state->scopeAttribute);
}

} // namespace dotweave
