#pragma once

#include <QUuid>

#include <cstring>
#include <set>

namespace vantroque {

/// By their bytes: the order of `QUuid` asks for variants first, which lists of thousands feel.
struct FileIdOrder {
    bool operator()(const QUuid& a, const QUuid& b) const
    {
        return std::memcmp(&a, &b, sizeof(QUuid)) < 0;
    }
};

/// Of files in the list.
using FileIds = std::set<QUuid, FileIdOrder>;

} // namespace vantroque
