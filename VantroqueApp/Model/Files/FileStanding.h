#pragma once

#include "VantroqueApp/Model/Files/FileAnalysis.h"

namespace vantroque {

/// How far a file has come, and with what verdict.
enum class FileStanding {
    failed,
    notAnalyzed, ///< It was tried.
    warned,      ///< Also one that passes with something worth a look.
    passed,
    running,
    waiting,
    missing
};

FileStanding standingOf(const FileAnalysis& file);

} // namespace vantroque
