#include "logcapture.h"

#include <boost/log/attributes/named_scope.hpp>
#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core.hpp>
#include <boost/log/expressions/message.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/unlocked_frontend.hpp>
#include <boost/make_shared.hpp>
#include <boostlogwrapper/customboostlog.h>

#include <mutex>

namespace logging = boost::log;

namespace {

class CCollectingBackend : public logging::sinks::basic_sink_backend<logging::sinks::concurrent_feeding> {
public:
    void consume(const logging::record_view& record)
    {
        SLogRecord entry;
        const auto scopes = logging::extract<logging::attributes::named_scope::value_type>("Scope", record);
        if (scopes && !scopes->empty()) {
            const logging::attributes::named_scope_entry& innermost = scopes->back();
            entry.scope = innermost.scope_name.c_str();
            entry.unit = innermost.file_name.c_str();
            entry.line = innermost.line;
        }
        const auto severity = logging::extract<ESeverityLevel>("Severity", record);
        entry.severity = severity ? static_cast<int>(*severity) : -1;
        if (const auto message = logging::extract<std::string>("Message", record))
            entry.text = *message;
        const std::lock_guard lock(m_mutex);
        m_records.push_back(entry);
    }

    std::vector<SLogRecord> Records() const
    {
        const std::lock_guard lock(m_mutex);
        return m_records;
    }

    void Clear()
    {
        const std::lock_guard lock(m_mutex);
        m_records.clear();
    }

private:
    mutable std::mutex m_mutex;
    std::vector<SLogRecord> m_records;
};

/// Has no lock of its own. The core skips a locked sink and comes back to it last; when a later sink throws
/// before that, the record is lost.
using CCollectingSink = logging::sinks::unlocked_sink<CCollectingBackend>;

} // namespace

struct CLogCapture::SState {
    boost::shared_ptr<CCollectingSink> sink;
    logging::attribute_set::iterator scopeAttribute;
    bool isScopeAdded = false;
};

CLogCapture::CLogCapture() : m_state(std::make_unique<SState>())
{
    m_state->sink = boost::make_shared<CCollectingSink>(boost::make_shared<CCollectingBackend>());
    const boost::shared_ptr<logging::core> core = logging::core::get();
    const auto added = core->add_global_attribute("Scope", logging::attributes::named_scope());
    m_state->scopeAttribute = added.first;
    m_state->isScopeAdded = added.second;
    core->add_sink(m_state->sink);
}

CLogCapture::~CLogCapture()
{
    const boost::shared_ptr<logging::core> core = logging::core::get();
    core->remove_sink(m_state->sink);
    if (m_state->isScopeAdded)
        core->remove_global_attribute(m_state->scopeAttribute);
}

std::vector<SLogRecord> CLogCapture::Records() const
{
    return m_state->sink->locked_backend()->Records();
}

void CLogCapture::Clear()
{
    m_state->sink->locked_backend()->Clear();
}

bool operator==(const SLogRecord& a, const SLogRecord& b)
{
    const bool isLineEqual = a.line == b.line ? a.line != LINE_ANY : a.line == LINE_ANY || b.line == LINE_ANY;
    return isLineEqual && a.scope == b.scope && a.unit == b.unit && a.severity == b.severity &&
           a.text == b.text;
}

std::ostream& operator<<(std::ostream& stream, const SLogRecord& record)
{
    return stream << record.unit << ':' << record.line << " [" << record.severity << "] " << record.scope
                  << ": \"" << record.text << '"';
}

SLogRecord Failure(const std::string& unit, const std::string& scope, unsigned int line)
{
    return {scope, unit, line, 2, "failure"};
}
