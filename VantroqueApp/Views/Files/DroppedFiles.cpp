#include "VantroqueApp/Views/Files/DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace vantroque::DroppedFiles {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

std::vector<fs::path> filesIn(const fs::path& folder)
{
    std::vector<fs::path> files;
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored))
        if (entry->is_regular_file(ignored))
            files.push_back(entry->path());
    std::ranges::sort(files);
    return files;
}

} // namespace

bool holdsFiles(const QMimeData& dropped)
{
    return !paths(dropped).empty();
}

std::vector<fs::path> paths(const QMimeData& dropped)
{
    std::vector<fs::path> paths;
    for (QUrl url : dropped.urls()) {
        // Some file managers name this machine.
        if (url.scheme() == "file"_L1 && url.host() == "localhost"_L1)
            url.setHost({});
        if (const auto file = FileUrl::fromString(QString::fromLatin1(url.toEncoded())))
            paths.push_back(file->path());
    }
    return paths;
}

std::vector<FileUrl> urls(const std::vector<fs::path>& paths)
{
    std::vector<FileUrl> files;
    std::error_code ignored;
    for (const fs::path& path : paths) {
        if (fs::is_directory(path, ignored))
            for (const fs::path& file : filesIn(path))
                files.push_back(FileUrl::fromPath(file));
        else if (fs::exists(path, ignored))
            files.push_back(FileUrl::fromPath(path));
    }
    return files;
}

} // namespace vantroque::DroppedFiles
