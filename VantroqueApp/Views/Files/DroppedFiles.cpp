#include "VantroqueApp/Views/Files/DroppedFiles.h"

#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace vantroque::DroppedFiles {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

bool isHidden(const fs::path& file)
{
    return file.filename().native().starts_with('.');
}

void lookInto(const fs::path& folder, Found& found)
{
    const QString name = FileUrl::fromPath(folder).fileName();
    std::vector<fs::path> files;
    std::error_code error;
    std::error_code ignored;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error))
        if (entry->is_regular_file(ignored) && !isHidden(entry->path()))
            files.push_back(entry->path());
    if (error)
        found.skipped.push_back({name, u"is a folder that cannot be read"_s});
    else if (files.empty())
        found.skipped.push_back({name, u"is a folder without files"_s});
    std::ranges::sort(files);
    for (const fs::path& file : files)
        found.files.push_back(FileUrl::fromPath(file));
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

Found look(const std::vector<fs::path>& paths)
{
    Found found;
    std::error_code ignored;
    for (const fs::path& path : paths) {
        const auto type = fs::status(path, ignored).type();
        const FileUrl file = FileUrl::fromPath(path);
        if (type == fs::file_type::directory)
            lookInto(path, found);
        else if (type == fs::file_type::not_found)
            found.skipped.push_back({file.fileName(), u"does not exist"_s});
        else if (type == fs::file_type::none)
            found.skipped.push_back({file.fileName(), u"cannot be opened"_s});
        else if (type != fs::file_type::regular)
            found.skipped.push_back({file.fileName(), u"is not a file"_s});
        else
            found.files.push_back(file);
    }
    return found;
}

} // namespace vantroque::DroppedFiles
