#pragma once

#include "Base/Record.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vantroque {

/// How well a passage survives being shrunk and enlarged again: a high PSNR means no fine detail.
struct DetailSegment {
    double start = 0; ///< Seconds.
    double end = 0;
    double halfResPsnrDb = 0;
    std::optional<double> quarterResPsnrDb;

    VANTROQUE_RECORD(DetailSegment, start, end, halfResPsnrDb, quarterResPsnrDb)
};

/// The detail of the whole file and the bits in use in its luma samples.
struct DetailEstimate {
    std::optional<double> halfResPsnrDb;
    std::optional<double> quarterResPsnrDb;
    std::int64_t samplesMeasured = 0;
    std::optional<int> lumaBitsInUse;
    std::vector<DetailSegment> segments;

    VANTROQUE_RECORD(DetailEstimate, halfResPsnrDb, quarterResPsnrDb, samplesMeasured,
                     lumaBitsInUse, segments)
};

} // namespace vantroque
