#pragma once

#include "maskdata_base_refusal.h"
#include "maskgeometry.h"

#include <cstdint>
#include <string>
#include <string_view>

/// @file
/// Print modes tried without building them, and the nearest one that can be built.

namespace dotweave {

/// Runs every step of a creation but the last, which builds the bytes; logs nothing and allocates nothing.
/// @param geometry  what the steps computed, as far as they came
/// @return the condition that ends the creation; null for a mode that can be built
const SRefusal* Mode_Try(const SMaskParam& param, SMaskGeometry& geometry);

/// Whether the record with another value in one field can be built.
template <typename TField>
bool Mode_Builds(SMaskParam param, TField SMaskParam::*field, TField value)
{
    param.*field = value;
    SMaskGeometry geometry;
    return Mode_Try(param, geometry) == nullptr;
}

// ---- ends of reasons: "; nearest that builds: <field> <value>", or nothing when no value near by builds

/// The given value alone is tried.
std::string Nearest_Field(const SMaskGeometry& geometry, std::int32_t SMaskParam::*field,
                          std::string_view name, std::int32_t value);
/// The nearest head; a few hundred rows up and down are tried, from the least that the passes need.
std::string Nearest_NozzleCount(const SMaskGeometry& geometry);
/// Whole percents from the given one on, in either direction.
std::string Nearest_Percent(const SMaskGeometry& geometry);

/// The nearest whole featherPercent below or above that of the record.
/// @return -1 when none from 0 to 100 builds
int NearestPercent_Below(const SMaskParam& param);
int NearestPercent_Above(const SMaskParam& param);

} // namespace dotweave
