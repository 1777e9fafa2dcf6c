#include "VantroqueCLI/Watch.h"

#include "Base/Files.h"
#include "Base/Text.h"
#include "Tools/Trouble.h"
#include "VantroqueCLI/CheckRun.h"
#include "VantroqueCLI/HeldFilm.h"
#include "VantroqueCLI/Output.h"

#include <algorithm>
#include <cerrno>
#include <thread>

namespace vantroque {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// How long what nobody tells of may stay unseen: network shares tell nothing.
constexpr auto poll = 10s;

Settling::Time now()
{
    return Settling::Clock::now();
}

} // namespace

Watch::Watch(const Arguments& arguments, const WatchedFolder& folder, const FilmFiling& filing,
             const std::vector<Profile>& profiles, RecognizerPool& recognizers, Options options)
    : m_arguments(arguments),
      m_folder(folder),
      m_filing(filing),
      m_profiles(profiles),
      m_recognizers(recognizers),
      m_options(std::move(options)),
      m_settling(m_options.settle)
{
}

Result<ExitStatus> Watch::once()
{
    TRY(look());
    if (m_options.settle > 0s) {
        std::this_thread::sleep_for(m_options.settle);
        TRY(look());
    }
    for (const Film& film : m_settling.ready(now()))
        TRY(take(film));
    return m_status;
}

Result<ExitStatus> Watch::forever()
{
    while (true) {
        TRY(look());
        const auto ready = m_settling.ready(now());
        if (!ready.empty()) {
            TRY(take(ready.front()));
            continue;
        }
        const Settling::Time latest = now() + poll;
        for (const std::string& name :
             m_folder.waitUntil(std::min(m_settling.next().value_or(latest), latest)))
            m_settling.touched(name);
    }
}

Result<void> Watch::look()
{
    const auto contents = TRY(m_folder.contents());
    m_settling.look(contents.films, now());
    m_told.keepOnly([&](const std::string& name) {
        return contents.films.contains(name) || contents.others.contains(name);
    });
    for (const auto& [name, reason] : contents.others)
        m_told.tell(name, reason);
    return {};
}

Result<void> Watch::take(const Film& film)
{
    if (!isAtRest(film))
        return {};
    const auto standing = m_filing.goOn(film);
    if (!standing) {
        m_told.tell(film.name, standing.error().description);
        m_settling.retry(film.name, now());
        m_status = ExitStatus::trouble;
        return {};
    }
    if (!*standing)
        return analyse(film);
    m_status = worse(m_status, (*standing)->passes ? ExitStatus::passed : ExitStatus::failed);
    tell(film, **standing,
         u"moved  %1: its report was there already"_s.arg(
             QString::fromStdString((*standing)->film)));
    return {};
}

/// Whether it is still what stood still, and nobody writes it.
bool Watch::isAtRest(const Film& film)
{
    const auto held = HeldFilm::hold(m_folder.path() / film.name);
    if (held && FileStamp::in(held->status()) == film.stamp)
        return true;
    const int problem = held ? 0 : held.error();
    if (problem == 0 || problem == ENOENT) {
        m_settling.startOver(film.name, now());
        return false;
    }
    m_settling.wait(film.name, now() + poll);
    if (problem != EAGAIN) {
        m_told.tell(film.name, Files::systemMessage(problem)
                                   + u"; it stays where it is until it can be read"_s);
        m_status = ExitStatus::trouble;
    }
    return false;
}

Result<void> Watch::analyse(const Film& film)
{
    const std::vector<std::string> files{m_folder.path() / film.name};
    CheckRun run(m_arguments, files, 1, m_profiles, m_recognizers,
                 [&](std::size_t, CheckedFile& checked) -> Result<void> {
                     finish(film, checked);
                     return {};
                 });
    TRY(run.run());
    return {};
}

void Watch::finish(const Film& film, CheckedFile& checked)
{
    const bool isOfThisFile = !checked.outcome || !checked.outcome->media.stamp
                              || checked.outcome->media.stamp == film.stamp;
    const auto standing = FileStamp::of(FileUrl::fromPath(m_folder.path() / film.name));
    if (!standing) {
        m_told.tell(film.name, u"was taken away while it was analysed"_s);
        return;
    }
    if (!isOfThisFile || standing != film.stamp) {
        goesOn(film);
        return;
    }
    if (!isFinal(film, checked))
        return;
    const auto filed = file(film, checked);
    if (!filed)
        m_status = ExitStatus::trouble;
    else if (!*filed)
        goesOn(film);
    else {
        m_status = worse(m_status, checked.status());
        tell(film, **filed, checked.verdictLine());
    }
}

/// It was written to, replaced or is being written.
void Watch::goesOn(const Film& film)
{
    m_settling.startOver(film.name, now());
    m_told.tell(film.name,
                u"was changed while it was analysed; it is taken when it stands still again"_s);
}

/// Whether the outcome is on the film, and not on what happened on this machine.
bool Watch::isFinal(const Film& film, const CheckedFile& checked)
{
    if (checked.outcome || !Trouble::mayPass(checked.outcome.error().description))
        return true;
    m_told.tell(film.name, u"was not analysed, and is tried again later: "_s
                               + checked.outcome.error().description);
    m_settling.retry(film.name, now());
    m_status = ExitStatus::trouble;
    return false;
}

/// Whatever keeps one report from being written keeps the others as well: all wait for it, and what
/// was measured is not lost.
FilmFiling::Outcome Watch::file(const Film& film, CheckedFile& checked)
{
    for (auto pause = std::chrono::minutes(1);;
         pause = std::min<std::chrono::minutes>(2 * pause, 1h)) {
        auto filed = m_filing.file(film, checked, m_options.format);
        if (filed)
            return filed;
        m_told.tell(film.name, filed.error().description
                                   + u"; the film stays where it is and is tried again later"_s);
        if (m_options.isOnce)
            return filed;
        std::this_thread::sleep_for(pause);
    }
}

void Watch::tell(const Film& film, const FilmFiling::Filed& filed, const QString& line)
{
    const QString name = QString::fromStdString(film.name);
    const QString was = filed.film.filename() == film.name ? QString() : u" (was %1)"_s.arg(name);
    const auto told = Output::print((Text::printable(line + was) + u'\n').toUtf8());
    if (!told)
        m_told.tell(film.name, told.error().description);
}

} // namespace vantroque
