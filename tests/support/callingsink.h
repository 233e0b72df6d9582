#pragma once

#include <boost/log/core.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/make_shared.hpp>

#include <functional>
#include <utility>

/// A host's sink that calls back: for every record that is written while it lives, on the thread that writes
/// it, after the sinks that were there before it. Keeps the records from the console.
class CCallingSink {
public:
    explicit CCallingSink(std::function<void()> callback)
        : m_sink(boost::make_shared<CSink>(boost::make_shared<CBackend>(std::move(callback))))
    {
        boost::log::core::get()->add_sink(m_sink);
    }
    CCallingSink(const CCallingSink&) = delete;
    CCallingSink& operator=(const CCallingSink&) = delete;
    ~CCallingSink() { boost::log::core::get()->remove_sink(m_sink); }

private:
    class CBackend : public boost::log::sinks::basic_sink_backend<boost::log::sinks::concurrent_feeding> {
    public:
        explicit CBackend(std::function<void()> callback) : m_callback(std::move(callback)) {}
        void consume(const boost::log::record_view& /*record*/) const { m_callback(); }

    private:
        std::function<void()> m_callback;
    };
    using CSink = boost::log::sinks::synchronous_sink<CBackend>;

    boost::shared_ptr<CSink> m_sink;
};
