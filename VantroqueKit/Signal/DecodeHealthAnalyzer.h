#pragma once

#include "Records/DecodeHealth.h"
#include "Records/MediaInfo.h"
#include "Signal/DecodeTrouble.h"

/// How whole a file decoded. Pure; nothing here can fail.
namespace vantroque::DecodeHealthAnalyzer {

/// The most places that are listed.
constexpr std::size_t mostPlaces = 100;

DecodeHealth measure(const DecodeTrouble& trouble, const MediaInfo& media);

} // namespace vantroque::DecodeHealthAnalyzer
