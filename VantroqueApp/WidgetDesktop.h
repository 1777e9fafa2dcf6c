#pragma once

#include "VantroqueApp/Model/Exports/Desktop.h"

namespace vantroque {

/// The desktop's own panels, over the window in front.
class WidgetDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const SaveQuestion& question) override;
    std::optional<FileUrl> chooseFolder(const QString& title, const FileUrl& beside) override;
    bool mayReplace(const QStringList& names, const FileUrl& folder) override;
    std::optional<FileUrl> chooseOpenFile(const QString& message,
                                          const QStringList& extensions) override;
    void showInFolder(const FileUrl& file) override;
};

} // namespace vantroque
