#pragma once

#include <QString>

namespace vantroque {

/// A file that was dropped or chosen and is not in the list, and why: "notes.txt", "is not a video
/// file".
struct SkippedFile {
    QString name;
    QString reason;

    bool operator==(const SkippedFile&) const = default;
};

} // namespace vantroque
