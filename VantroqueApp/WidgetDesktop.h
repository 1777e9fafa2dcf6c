#pragma once

#include "VantroqueApp/Model/Exports/Desktop.h"

namespace vantroque {

/// The desktop's own panels, over the window in front.
class WidgetDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const QString& proposedName) override;
};

} // namespace vantroque
