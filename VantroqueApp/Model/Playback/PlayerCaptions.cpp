#include "VantroqueApp/Model/Playback/PlayerCaptions.h"

#include "Captions/CaptionLoader.h"
#include "Captions/EmbeddedCaptions.h"
#include "Check/CaptionEvents.h"
#include "VantroqueApp/Model/Background/UntilStopped.h"

namespace vantroque {

using namespace Qt::StringLiterals;

/// Captions over the picture, with what is said of them. Long ones take a while, so that all of it
/// is made where they are read.
struct PlayerCaptions::Checked {
    CaptionCheck check;
    std::vector<SignalEvent> events;
};

/// What came of reading a source: captions, or why not.
struct PlayerCaptions::Read {
    std::shared_ptr<const Checked> checked;
    CaptionLoader::Problem problem = CaptionLoader::Problem::unreadable;
};

/// In the background.
std::shared_ptr<const PlayerCaptions::Checked>
PlayerCaptions::checked(const LoadedCaptions& captions, const PlayedFile& file,
                        SpellChecker& speller)
{
    const double duration = file.video.durationSeconds;
    const double rate = file.workingRate().perSecond();
    Checked made{CaptionCheck::of(captions, file.url, duration, rate, speller), {}};
    if (made.check.spelling)
        made.events = CaptionEvents::events(*made.check.spelling, made.check.track, rate, duration);
    return std::make_shared<const Checked>(std::move(made));
}

PlayerCaptions::PlayerCaptions(const PlayedFile& file, SpellChecker& speller)
    : m_file(file),
      m_embedded(file.video.embeddedCaptions.value_or(std::vector<EmbeddedCaptionSource>())),
      m_speller(speller)
{
}

PlayerCaptions::~PlayerCaptions()
{
    m_stopSidecars.request_stop();
    m_stopExtraction.request_stop();
}

const CaptionTrack* PlayerCaptions::captions() const
{
    return m_checked ? &m_checked->check.track : nullptr;
}

const CaptionHealth* PlayerCaptions::captionHealth() const
{
    return m_checked ? &m_checked->check.health : nullptr;
}

std::optional<CaptionSpelling> PlayerCaptions::captionSpelling() const
{
    return m_checked ? m_checked->check.spelling : std::nullopt;
}

bool PlayerCaptions::hasAnyCaptionSource() const
{
    return m_checked || m_url || !m_embedded.empty();
}

void PlayerCaptions::setCaptionsShown(bool shown)
{
    if (std::exchange(m_shown, shown) != shown)
        Q_EMIT changed();
}

std::vector<CaptionCue> PlayerCaptions::activeCues(double seconds) const
{
    if (!m_shown || !m_checked)
        return {};
    return m_checked->check.track.cues(seconds);
}

std::optional<ProfileReport> PlayerCaptions::captionSection() const
{
    return m_checked ? std::optional(m_checked->check.section) : std::nullopt;
}

std::vector<SignalEvent> PlayerCaptions::captionEvents() const
{
    return m_checked ? m_checked->events : std::vector<SignalEvent>();
}

void PlayerCaptions::readSidecar(const FileUrl& url, int wish,
                                 std::function<void(const Read&)> then)
{
    m_sidecars.run(
        untilStopped(m_stopSidecars.get_token(),
                     [url, file = m_file, &speller = m_speller]() -> Read {
                         const auto track = CaptionLoader::load(url);
                         if (!track)
                             return {.checked = nullptr, .problem = track.error()};
                         return {.checked = checked({*track, url.fileName(), {}}, file, speller)};
                     }),
        [this, wish, then = std::move(then)](const Read& read) {
            if (wish >= m_granted)
                then(read);
        });
}

void PlayerCaptions::takeSidecar(const FileUrl& url, const Read& read)
{
    stopExtracting();
    m_checked = read.checked;
    m_source = url;
    m_url = url;
    m_missing = false;
}

void PlayerCaptions::loadCaptions(const FileUrl& from)
{
    const int wish = ++m_wishes;
    readSidecar(from, wish, [this, from, wish](const Read& read) {
        if (read.checked) {
            m_granted = wish;
            takeSidecar(from, read);
            m_shown = true;
            Q_EMIT changed();
            Q_EMIT chosen(from);
        } else if (read.problem == CaptionLoader::Problem::noCues) {
            Q_EMIT message(u"No captions found in %1. It needs to be a SubRip (.srt), WebVTT "
                           u"(.vtt) or Scenarist (.scc) file."_s.arg(from.fileName()));
        } else {
            Q_EMIT message(u"Could not read %1."_s.arg(from.fileName()));
        }
    });
}

void PlayerCaptions::restoreCaptions(const std::optional<FileUrl>& remembered)
{
    if (m_granted > 0)
        return; // The operator was quicker.
    if (!remembered)
        return showFirstEmbeddedIfAny();
    m_url = remembered;
    readSidecar(*remembered, 0, [this, url = *remembered](const Read& read) {
        if (read.checked) {
            takeSidecar(url, read);
        } else {
            m_missing = true;
            showFirstEmbeddedIfAny();
        }
        Q_EMIT changed();
    });
    Q_EMIT changed();
}

void PlayerCaptions::removeCaptions()
{
    m_granted = ++m_wishes;
    stopExtracting();
    m_checked.reset();
    m_source.reset();
    m_url.reset();
    m_missing = false;
    Q_EMIT changed();
    Q_EMIT chosen(std::nullopt);
    showFirstEmbeddedIfAny();
}

void PlayerCaptions::showFirstEmbeddedIfAny()
{
    if (!m_embedded.empty())
        extract(m_embedded.front());
}

void PlayerCaptions::stopExtracting()
{
    m_stopExtraction.request_stop();
    m_stopExtraction = std::stop_source();
    ++m_extraction;
    m_extracting = false;
}

void PlayerCaptions::showEmbedded(const EmbeddedCaptionSource& source)
{
    m_granted = ++m_wishes;
    extract(source);
}

void PlayerCaptions::extract(const EmbeddedCaptionSource& source)
{
    stopExtracting();
    m_source = source;
    m_extracting = true;
    m_extractions.run(
        untilStopped(m_stopExtraction.get_token(),
                     [source, file = m_file, &speller = m_speller]() -> Read {
                         const auto track = EmbeddedCaptions::extract(source, file.url);
                         if (!track)
                             return {};
                         return {.checked = checked({*track, EmbeddedCaptions::title(source),
                                                     EmbeddedCaptions::language(source)},
                                                    file, speller)};
                     }),
        [this, source, extraction = m_extraction](const Read& read) {
            if (extraction != m_extraction)
                return;
            m_extracting = false;
            m_checked = read.checked;
            Q_EMIT changed();
            if (!read.checked)
                Q_EMIT message(u"No captions could be read from the %1."_s.arg(
                    EmbeddedCaptions::title(source)));
        });
    Q_EMIT changed();
}

} // namespace vantroque
