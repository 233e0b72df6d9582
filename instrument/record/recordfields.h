#pragma once

#include <dotweave/maskparam.h>

#include <cstdint>
#include <span>
#include <string>
#include <variant>

/// @file
/// The fields of a print mode as options, mode files and messages know them. One table serves all of them.

namespace dotweave {

/// A value of an enumeration field that can be given by name.
struct SRecordChoice {
    const char* name;
    std::int32_t value;
};

/// One field of SMaskParam.
struct SRecordField {
    const char* name; ///< as in SMaskParam and in mode files
    const char* help; ///< meaning and unit, one line
    std::variant<std::int32_t SMaskParam::*, float SMaskParam::*> member;
    std::int32_t lowest;                    ///< limits of the field alone; the library checks what
    std::int32_t highest;                   ///< depends on several fields
    std::span<const SRecordChoice> choices; ///< the names of an enumeration; empty for a number
};

/// A common production mode: 544 nozzle rows, 4 passes, 4 colours at 1 bit, hard band edges.
inline constexpr SMaskParam RECORD_DEFAULT = {
    .nozzleCount = 544,
    .basePass = 4,
    .xResPass = 1,
    .yResPass = 1,
    .colorCount = 4,
    .bitsPerPixel = 1,
    .featherMode = FeatherMode_None,
    .featherPercent = 50.0F,
    .featherNozzleType = FeatherNozzle_Smooth_2,
    .colorTimes = 1,
    .featherLevelPercent = 100,
    .resSplitType = ResSplit_None,
};

/// All twelve fields, in the order of SMaskParam.
std::span<const SRecordField> RecordFields();

/// The option on the command line for a name in a record: "--x-res-pass" for xResPass.
std::string OptionName(const char* fieldName);

/// The field's option on the command line: "--x-res-pass" for xResPass.
std::string RecordField_Option(const SRecordField& field);

/// The allowed values in words: "a whole number from 1 to 2", "none (0), nozzle (1)".
std::string RecordField_RangeText(const SRecordField& field);

/// The field's value as a user would give it: the name of an enumeration's value, else the number.
std::string RecordField_ValueText(const SRecordField& field, const SMaskParam& param);

/// The message for a value that a field does not take.
/// @param where  what the user calls the field: an option, or a file with the field's name
/// @param value  the value as the user wrote it, quoted by Text_Quote
std::string RecordField_RefusalText(const SRecordField& field, const std::string& where,
                                    const std::string& value);

/// Takes a value from the command line: a number, or a name where the field has names.
/// @return false, param being unchanged, for anything outside the field's range
bool RecordField_SetText(const SRecordField& field, const std::string& text, SMaskParam& param);

/// Takes a name.
/// @return false, param being unchanged, when the field has no such name
bool RecordField_SetName(const SRecordField& field, const std::string& name, SMaskParam& param);

/// Takes a number that may be too large for the field.
/// @return false, param being unchanged, for a number outside the field's range and for a NaN
bool RecordField_SetNumber(const SRecordField& field, double number, SMaskParam& param);

} // namespace dotweave
