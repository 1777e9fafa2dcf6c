#pragma once

/// EBU R 103, in percent of the nominal range, where 0 is black and 100 is white: the tolerance,
/// beyond which a picture is rejected, and the preferred minimum and maximum.
namespace vantroque::EbuR103 {

constexpr float rejectLow = -5;
constexpr float rejectHigh = 105;
constexpr float strictLow = -1;
constexpr float strictHigh = 103;

} // namespace vantroque::EbuR103
