#pragma once

#include "Base/FileUrl.h"

#include <QStringList>

#include <optional>

namespace vantroque {

/// What the desktop does for the model. Called on the main thread.
class Desktop {
public:
    Desktop() = default;
    virtual ~Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Asks the operator where to save a file; nothing when they changed their mind.
    virtual std::optional<FileUrl> chooseSaveFile(const QString& proposedName) = 0;
    /// Asks for one file, in the words of `message`; files with these extensions are offered first.
    virtual std::optional<FileUrl> chooseOpenFile(const QString& message,
                                                  const QStringList& extensions) = 0;
};

} // namespace vantroque
