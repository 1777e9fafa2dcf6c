#include "VantroqueApp/Views/Files/FileOrder.h"

#include <algorithm>
#include <limits>

namespace vantroque {

namespace {

double lengthOf(const FileAnalysis& file)
{
    if (const FileReport* report = file.report(); report != nullptr && report->video)
        return report->video->durationSeconds;
    return file.media ? file.media->durationSeconds : std::numeric_limits<double>::max();
}

/// The digits from `start` on, without zeros before them.
QStringView number(const QString& text, qsizetype& start)
{
    while (start < text.size() && text[start] == u'0')
        ++start;
    const qsizetype first = start;
    while (start < text.size() && text[start].isDigit())
        ++start;
    return QStringView(text).sliced(first, start - first);
}

} // namespace

bool comesBefore(const QString& a, const QString& b)
{
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i].isDigit() && b[j].isDigit()) {
            const QStringView one = number(a, i);
            const QStringView other = number(b, j);
            if (one.size() != other.size())
                return one.size() < other.size();
            if (const int order = one.compare(other); order != 0)
                return order < 0;
            continue;
        }
        const QChar one = a[i++].toCaseFolded();
        const QChar other = b[j++].toCaseFolded();
        if (one != other)
            return one < other;
    }
    return a.size() - i < b.size() - j;
}

bool FileOrder::shows(FileStanding standing) const
{
    switch (filter) {
    case FileFilter::failed: return standing == FileStanding::failed;
    case FileFilter::warned: return standing == FileStanding::warned;
    case FileFilter::notAnalyzed: return standing == FileStanding::notAnalyzed;
    case FileFilter::all: break;
    }
    return true;
}

std::vector<FileOrder::Ranked> FileOrder::arranged(std::vector<Ranked> files) const
{
    std::erase_if(files, [this](const Ranked& file) { return !shows(file.standing); });
    switch (sort) {
    case FileSort::added: break;
    case FileSort::verdict: std::ranges::stable_sort(files, {}, &Ranked::standing); break;
    case FileSort::length:
        std::ranges::stable_sort(files, {},
                                 [](const Ranked& file) { return lengthOf(*file.file); });
        break;
    case FileSort::name: {
        struct Named {
            QString name;
            Ranked file;
        };
        std::vector<Named> named;
        named.reserve(files.size());
        for (const Ranked& file : files)
            named.push_back({file.file->url.fileName(), file});
        std::ranges::stable_sort(named, comesBefore, &Named::name);
        std::ranges::transform(named, files.begin(), &Named::file);
        break;
    }
    }
    return files;
}

} // namespace vantroque
