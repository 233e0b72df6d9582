// Any bytes as the mask.json of a result: either they are one, or the user is told on one line what is wrong with
// them. A result that is taken has a shape whose bytes can be counted, and files that stay in their folder.

#include "fuzzing.h"
#include "record/maskjsonread.h"
#include "record/recorderror.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

using namespace dotweave;

namespace {

constexpr char SOURCE[] = "mask.json";

void Result_Expect(const SResultRecord& result)
{
    const SMaskShape& shape = result.shape;
    EXPECT_GE(shape.ByteCount(), 1);
    EXPECT_EQ(shape.ByteCount() / shape.colorCount / shape.positionCount / shape.height, shape.lineBytes);
    EXPECT_LE(std::int64_t{shape.width} * shape.bitsPerPixel, std::int64_t{shape.lineBytes} * 8);
    for (const std::string& warning : result.warnings)
        EXPECT_EQ(warning.find('\n'), std::string::npos) << warning;
    for (const SResultFile& file : result.files) {
        EXPECT_GE(file.bytes, 0);
        EXPECT_EQ(std::filesystem::path(file.name).filename(), file.name);
        EXPECT_NE(file.name, "..");
        EXPECT_EQ(file.name.find('\0'), std::string::npos);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::istringstream stream(std::string(data, data + size));
    try {
        Result_Expect(MaskJson_Read(stream, SOURCE));
    } catch (const CRecordError& error) { // anything else ends the process
        const std::string message = error.what();
        EXPECT_EQ(message.rfind(std::string(SOURCE) + ": ", 0), 0U) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
    return 0;
}
