// Any bytes as a mode file of the dotweave command: either they are a record, or the user is told on one line
// what is wrong with them. What was read comes back byte for byte from what is written.

#include "fuzzing.h"
#include "maskparams.h"
#include "record/recorderror.h"
#include "record/recordfields.h"
#include "record/recordjson.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <variant>

using namespace dotweave;

namespace {

constexpr char SOURCE[] = "mode.json";

SMaskParam Read(const std::string& text)
{
    SMaskParam param = RECORD_DEFAULT;
    std::istringstream stream(text);
    Record_ReadJson(stream, SOURCE, param);
    return param;
}

void ExpectInRange(const SMaskParam& param)
{
    for (const SRecordField& field : RecordFields()) {
        const double number =
            std::visit([&](auto member) { return static_cast<double>(param.*member); }, field.member);
        EXPECT_GE(number, field.lowest) << field.name;
        EXPECT_LE(number, field.highest) << field.name;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(data, data + size);
    SMaskParam param = {};
    try {
        param = Read(text);
    } catch (const CRecordError& error) { // anything else ends the process
        const std::string message = error.what();
        EXPECT_EQ(message.rfind(std::string(SOURCE) + ": ", 0), 0U) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos) << message;
        return 0;
    }
    ExpectInRange(param);
    const std::string written = Record_Json(param).dump();
    EXPECT_EQ(MaskParam_Bytes(Read(written)), MaskParam_Bytes(param)) << written;
    return 0;
}
