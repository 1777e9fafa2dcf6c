#pragma once

#include "VantroqueApp/Model/Exports/Desktop.h"

namespace vantroque {

/// The desktop's own panels, over the window in front.
class WidgetDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const QString& proposedName) override;
    std::optional<FileUrl> chooseOpenFile(const QString& message,
                                          const QStringList& extensions) override;
};

} // namespace vantroque
