#pragma once

#include <boost/log/sinks/sink.hpp>
#include <boost/shared_ptr.hpp>

#include <stdexcept>

/// What a CThrowingSink throws.
class CSinkError : public std::runtime_error {
public:
    CSinkError() : std::runtime_error("the sink's disk is full") {}
};

/// A host's sink that cannot take a record: throws CSinkError out of every log statement while it lives,
/// after the sinks that were added before it.
class CThrowingSink {
public:
    CThrowingSink();
    CThrowingSink(const CThrowingSink&) = delete;
    CThrowingSink& operator=(const CThrowingSink&) = delete;
    ~CThrowingSink();

private:
    boost::shared_ptr<boost::log::sinks::sink> m_sink;
};
