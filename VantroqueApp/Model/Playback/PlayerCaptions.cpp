#include "VantroqueApp/Model/Playback/PlayerCaptions.h"

#include "Captions/CaptionLoader.h"
#include "Captions/CaptionReport.h"
#include "Captions/EmbeddedCaptions.h"
#include "Check/CaptionEvents.h"
#include "VantroqueApp/Model/Background/UntilStopped.h"

namespace vantroque {

using namespace Qt::StringLiterals;

/// What came of reading a source: captions, spelled and shifted to the picture, or why not.
struct PlayerCaptions::Read {
    std::shared_ptr<const CaptionTrack> track;
    std::optional<CaptionSpelling> spelling = {};
    CaptionLoader::Problem problem = CaptionLoader::Problem::unreadable;
};

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

bool PlayerCaptions::hasAnyCaptionSource() const
{
    return m_captions || m_url || !m_embedded.empty();
}

void PlayerCaptions::setCaptionsShown(bool shown)
{
    if (std::exchange(m_shown, shown) != shown)
        Q_EMIT changed();
}

std::vector<CaptionCue> PlayerCaptions::activeCues(double seconds) const
{
    if (!m_shown || !m_captions)
        return {};
    return m_captions->cues(seconds);
}

std::optional<ProfileReport> PlayerCaptions::captionSection() const
{
    if (!m_captions || !m_source)
        return std::nullopt;
    const auto* sidecar = std::get_if<FileUrl>(&*m_source);
    const QString title = sidecar != nullptr
                              ? sidecar->fileName()
                              : EmbeddedCaptions::title(std::get<EmbeddedCaptionSource>(*m_source));
    return CaptionReport::section(CaptionHealth::of(*m_captions, m_file.video.durationSeconds),
                                  title, m_file.workingRate().perSecond(), m_spelling);
}

std::vector<SignalEvent> PlayerCaptions::captionEvents() const
{
    if (!m_captions || !m_spelling)
        return {};
    return CaptionEvents::events(*m_spelling, *m_captions, m_file.workingRate().perSecond(),
                                 m_file.video.durationSeconds);
}

void PlayerCaptions::readSidecar(const FileUrl& url, std::function<void(const Read&)> then)
{
    m_sidecars.run(untilStopped(m_stopSidecars.get_token(),
                                [url, media = m_file.url, duration = m_file.video.durationSeconds,
                                 &speller = m_speller]() -> Read {
                                    const auto loaded = CaptionLoader::load(url);
                                    if (!loaded)
                                        return {.track = nullptr, .problem = loaded.error()};
                                    const auto track = std::make_shared<const CaptionTrack>(
                                        loaded->autoShifted(duration));
                                    return {.track = track,
                                            .spelling = CaptionSpelling::of(
                                                *track, speller, std::nullopt,
                                                CaptionSpelling::nameWords(media))};
                                }),
                   [this, wish = ++m_wish, then = std::move(then)](const Read& read) {
                       if (wish == m_wish)
                           then(read);
                   });
}

void PlayerCaptions::take(const Read& read)
{
    m_captions = read.track;
    m_spelling = read.spelling;
}

void PlayerCaptions::takeSidecar(const FileUrl& url, const Read& read)
{
    stopExtracting();
    take(read);
    m_source = url;
    m_url = url;
    m_missing = false;
}

void PlayerCaptions::loadCaptions(const FileUrl& from)
{
    readSidecar(from, [this, from](const Read& read) {
        if (read.track) {
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
    if (m_wish > 0)
        return; // The operator was quicker.
    if (!remembered)
        return showFirstEmbeddedIfAny();
    m_url = remembered;
    readSidecar(*remembered, [this, url = *remembered](const Read& read) {
        if (read.track) {
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
    ++m_wish;
    stopExtracting();
    m_captions.reset();
    m_spelling.reset();
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
        showEmbedded(m_embedded.front());
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
    ++m_wish;
    stopExtracting();
    m_source = source;
    m_extracting = true;
    m_extractions.run(
        untilStopped(m_stopExtraction.get_token(),
                     [source, media = m_file.url, duration = m_file.video.durationSeconds,
                      &speller = m_speller]() -> Read {
                         const auto read = EmbeddedCaptions::extract(source, media);
                         if (!read)
                             return {};
                         const auto track =
                             std::make_shared<const CaptionTrack>(read->autoShifted(duration));
                         const auto language = EmbeddedCaptions::language(source);
                         return {.track = track,
                                 .spelling = CaptionSpelling::of(
                                     *track, speller, language, CaptionSpelling::nameWords(media))};
                     }),
        [this, source, extraction = m_extraction](const Read& read) {
            if (extraction != m_extraction)
                return;
            m_extracting = false;
            take(read);
            Q_EMIT changed();
            if (!read.track)
                Q_EMIT message(u"No captions could be read from the %1."_s.arg(
                    EmbeddedCaptions::title(source)));
        });
    Q_EMIT changed();
}

} // namespace vantroque
