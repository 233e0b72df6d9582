#include "fuzzing.h"

#include <boost/log/core.hpp>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {

/// Ends the process at the first failed expectation, which the framework has printed already.
class CAbortOnFailure : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override
    {
        if (result.failed())
            std::abort();
    }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    boost::log::core::get()->set_logging_enabled(false);
    testing::UnitTest::GetInstance()->listeners().Append(new CAbortOnFailure); // owned by the list
    return 0;
}

int Fuzz_Number(std::int32_t value, int lowest, int highest)
{
    if (value >= lowest && value <= highest)
        return value;
    const std::int64_t count = std::int64_t{highest} - lowest + 1;
    return static_cast<int>(lowest + static_cast<std::uint32_t>(value) % count);
}
