#pragma once

#include "VantroqueApp/Model/Exports/Desktop.h"

namespace vantroque {

/// Answers no question.
class NoDesktop : public Desktop {
public:
    std::optional<FileUrl> chooseSaveFile(const SaveQuestion&) override { return std::nullopt; }
    std::optional<FileUrl> chooseFolder(const QString&, const FileUrl&) override
    {
        return std::nullopt;
    }
    bool mayReplace(const QStringList&, const FileUrl&) override { return false; }
    std::optional<FileUrl> chooseOpenFile(const QString&, const QStringList&) override
    {
        return std::nullopt;
    }
    void showInFolder(const FileUrl&) override {}
};

} // namespace vantroque
