#pragma once

#include "Base/FileUrl.h"

#include <QStringList>

#include <optional>

namespace vantroque {

/// What an operator is asked before a file is written.
struct SaveQuestion {
    QString title;  ///< Says what is saved.
    FileUrl beside; ///< Its folder is offered first.
    QString name;   ///< Proposed, with the extension that the file gets if the operator gives none.
    QString kind;   ///< Of file, such as "PDF documents".
};

/// What the desktop does for the model. Called on the main thread.
class Desktop {
public:
    Desktop() = default;
    virtual ~Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Asks the operator where to save a file; nothing when they changed their mind.
    virtual std::optional<FileUrl> chooseSaveFile(const SaveQuestion& question) = 0;
    /// Asks for a folder; that of `beside` is offered first. Nothing when they changed their mind.
    virtual std::optional<FileUrl> chooseFolder(const QString& title, const FileUrl& beside) = 0;
    /// Asks whether files of these names, which are in that folder already, may be replaced.
    virtual bool mayReplace(const QStringList& names, const FileUrl& folder) = 0;
    /// Asks for one file, in the words of `message`; files with these extensions are offered first.
    virtual std::optional<FileUrl> chooseOpenFile(const QString& message,
                                                  const QStringList& extensions) = 0;
    /// Shows a file in its folder, in the file manager.
    virtual void showInFolder(const FileUrl& file) = 0;
};

} // namespace vantroque
