#include "VantroqueApp/Model/Exports/MarkerFolder.h"

#include "Base/Files.h"
#include "Base/Text.h"

#include <filesystem>
#include <map>
#include <set>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

QString filesWord(std::size_t count)
{
    return u"%1 file%2"_s.arg(QString::number(count), Text::plural(static_cast<qint64>(count)));
}

FileUrl in(const FileUrl& folder, const QString& name)
{
    return FileUrl::fromPath(folder.path() / name.toStdString());
}

bool exists(const FileUrl& file)
{
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(file.path(), error));
}

} // namespace

QString MarkerFolder::Outcome::text() const
{
    QString text;
    if (!saved.empty())
        text = u"Saved the markers of %1 to %2"_s.arg(filesWord(saved.size()), folder.fileName());
    if (failed.empty())
        return text;
    const QString trouble =
        saved.empty() ? u"Could not write the markers"_s
                      : u"; those of %1 could not be written"_s.arg(filesWord(failed.size()));
    if (failed.size() == 1)
        return text + trouble + u": "_s + failed.front().reason;
    return text + trouble + u":\n"_s
           + Text::joined(failed, u"\n"_s, [](const Failure& one) { return one.reason; });
}

void MarkerFolder::start(std::vector<ExportSource> sources, MarkerExport::Format format,
                         std::vector<FileUrl> films, const Then& then)
{
    ExportSource::readReviews(
        m_book, std::move(sources),
        [this, format, guarded = std::move(films), then](const auto& read) {
            m_tasks.run([read, format] { return markers(read, format); },
                        [this, format, guarded, then](const std::vector<Film>& found) {
                            askForFolder({found, format, guarded, {}, then});
                        });
        });
}

/// In the background.
std::vector<MarkerFolder::Film> MarkerFolder::markers(const std::vector<ExportSource>& sources,
                                                      MarkerExport::Format format)
{
    std::vector<Film> films;
    for (const ExportSource& source : sources)
        if (auto markers = source.markers(); !markers.empty())
            films.push_back({source, std::move(markers), {}});
    giveNames(films, format);
    return films;
}

/// Films that differ only in their extension keep it, and of those with one name in several folders
/// the later ones are numbered. Shares may not tell small letters from capitals.
void MarkerFolder::giveNames(std::vector<Film>& films, MarkerExport::Format format)
{
    std::map<QString, int> stems;
    for (const Film& film : films)
        ++stems[film.source.url.stem().toCaseFolded()];
    const QString end =
        MarkerExport::fileSuffix(format) + u'.' + MarkerExport::fileExtension(format);
    std::set<QString> taken;
    for (Film& film : films) {
        const FileUrl& url = film.source.url;
        const QString name = stems.at(url.stem().toCaseFolded()) > 1 ? url.fileName() : url.stem();
        film.name = name + end;
        for (int number = 2; !taken.insert(film.name.toCaseFolded()).second; ++number)
            film.name = u"%1 %2%3"_s.arg(name, QString::number(number), end);
    }
}

void MarkerFolder::askForFolder(Job job)
{
    if (job.films.empty())
        return job.then(Outcome());
    const auto folder = m_desktop.chooseFolder(
        u"Save the Markers of %1 File%2"_s.arg(QString::number(job.films.size()),
                                               job.films.size() == 1 ? QString() : u"s"_s),
        job.films.front().source.url);
    if (!folder)
        return job.then(std::nullopt);
    job.folder = *folder;
    const auto shared = std::make_shared<const Job>(std::move(job));
    m_tasks.run([shared] { return existing(*shared); },
                [this, shared](const QStringList& names) { writeUnlessRefused(shared, names); });
}

/// In the background.
QStringList MarkerFolder::existing(const Job& job)
{
    QStringList names;
    for (const Film& film : job.films)
        if (exists(in(job.folder, film.name)))
            names << film.name;
    return names;
}

void MarkerFolder::writeUnlessRefused(const std::shared_ptr<const Job>& job,
                                      const QStringList& existing)
{
    if (!existing.isEmpty() && !m_desktop.mayReplace(existing, job->folder))
        return job->then(std::nullopt);
    m_tasks.run([job, existing] { return write(*job, existing); },
                [job](const Outcome& outcome) { job->then(outcome); });
}

/// In the background.
MarkerFolder::Outcome MarkerFolder::write(const Job& job, const QStringList& replaceable)
{
    Outcome outcome{.films = job.films.size(), .folder = job.folder, .saved = {}, .failed = {}};
    for (const Film& film : job.films) {
        const FileUrl target = in(job.folder, film.name);
        if (const auto done = write(job, film, target, replaceable.contains(film.name)))
            outcome.saved.push_back(target);
        else
            outcome.failed.push_back({film.name, done.error().description});
    }
    return outcome;
}

Result<void> MarkerFolder::write(const Job& job, const Film& film, const FileUrl& target,
                                 bool mayReplace)
{
    TRY(guardFilms(target, job.guarded));
    if (!mayReplace && exists(target)) // since the operator was asked
        return failure(u"%1 exists already"_s.arg(film.name));
    // The context may ask ffprobe.
    const auto context = MarkerExport::context(*film.source.media);
    return Files::writeAtomically(target.path(),
                                  MarkerExport::write(film.markers, job.format, context).toUtf8());
}

} // namespace vantroque
