#pragma once

#include "VantroqueApp/Model/Files/FileIds.h"

#include <optional>

namespace vantroque {

/// Which entries of the list are selected. The one that was selected last leads.
struct FileSelection {
    FileIds ids;
    std::optional<QUuid> lead; ///< One of them, where there are any.

    static FileSelection of(const std::optional<QUuid>& id)
    {
        return id ? FileSelection{{*id}, id} : FileSelection{};
    }
    bool operator==(const FileSelection&) const = default;
};

} // namespace vantroque
