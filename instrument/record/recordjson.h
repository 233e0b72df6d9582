#pragma once

#include <dotweave/maskparam.h>

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>
#include <string>

namespace dotweave {

/// The record as an object with the names of SMaskParam; numbers throughout.
nlohmann::ordered_json Record_Json(const SMaskParam& param);

/// Reads a mode file: one object whose members are fields of SMaskParam. Fields that it does not name keep
/// the values of param. Enumerations come as numbers or names. A member "description" says for people what
/// the mode is for.
/// @param source       what messages call the file
/// @param description  takes that text when the file has one; null when nobody wants it
/// @throws CRecordError for a text that is not JSON, an unknown field, a field given twice, a wrong type and
///         a value out of range; param may then be changed in part
void Record_ReadJson(std::istream& stream, const std::string& source, SMaskParam& param,
                     std::string* description = nullptr);

/// Takes a mode from an object that has been parsed. As Record_ReadJson, but of a field that is given twice
/// the last value counts.
void Record_FromJson(const nlohmann::json& object, const std::string& source, SMaskParam& param,
                     std::string* description = nullptr);

} // namespace dotweave
