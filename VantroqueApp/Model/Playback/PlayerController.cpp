#include "VantroqueApp/Model/Playback/PlayerController.h"

#include "Base/PathText.h"
#include "VantroqueApp/Model/Playback/ProblemSteps.h"

#include <algorithm>
#include <utility>

namespace vantroque {

using namespace Qt::StringLiterals;

namespace {

/// Of marks in order of their frames the next one after a frame, or the last one before it.
template<typename Mark>
const Mark* nearest(const std::vector<Mark>& marks, std::int64_t frame, bool forward)
{
    const auto after = std::ranges::upper_bound(marks, frame, {}, &Mark::frame);
    if (forward)
        return after == marks.end() ? nullptr : &*after;
    const auto here = std::ranges::lower_bound(marks, frame, {}, &Mark::frame);
    return here == marks.begin() ? nullptr : &*std::prev(here);
}

} // namespace

PlayerController::PlayerController(PlayedFile file, Report report,
                                   const PlayerSurroundings& surroundings)
    : m_file(std::move(file)),
      m_report(std::move(report)),
      m_desktop(surroundings.desktop),
      m_pictures(m_file, surroundings.makeEngine),
      m_playhead(m_file, surroundings.clock),
      m_shuttle(surroundings.clock),
      m_zoom(m_file.shape()),
      m_guides(m_file, surroundings.defaults),
      m_scopes(surroundings.defaults, surroundings.clock, m_file.scopeSize(),
               m_file.video.matrix.value_or(ColorMatrix::bt709)),
      m_captions(m_file, surroundings.speller),
      m_notebook(m_file, surroundings.reviews),
      m_stills(m_file, surroundings.desktop)
{
    m_shuttle.frameRate = [this] { return m_file.workingRate().perSecond(); };
    m_shuttle.applyRate = [this](double rate) { return m_playhead.run(rate); };
    m_shuttle.stepFrames = [this](std::int64_t frames) { return m_playhead.walk(frames); };
    connectSubjects();
    useSource();
}

PlayerController::~PlayerController()
{
    tearDown();
}

void PlayerController::connectSubjects()
{
    connect(&m_pictures, &FilmPictures::shownChanged, this, &PlayerController::pictureChanged);
    connect(&m_pictures, &FilmPictures::readyChanged, this, &PlayerController::modeChanged);
    connect(&m_pictures, &FilmPictures::sourceChanged, this, [this] {
        useSource();
        m_shuttle.playbackEnded();
        Q_EMIT modeChanged();
    });
    connect(&m_playhead, &Playhead::ended, &m_shuttle, &ShuttleEngine::playbackEnded);
    connect(&m_notebook, &Notebook::opened, this, [this] {
        const auto& review = m_notebook.review();
        m_captions.restoreCaptions(review && review->captionsPath
                                       ? std::optional(PathText::url(*review->captionsPath))
                                       : std::nullopt);
    });
    connect(&m_captions, &PlayerCaptions::chosen, &m_notebook, &Notebook::setCaptionsPath);
    connect(&m_captions, &PlayerCaptions::changed, this, &PlayerController::eventsChanged);
    connect(&m_captions, &PlayerCaptions::message, this, &PlayerController::setExportMessage);
    connect(&m_notebook, &Notebook::message, this, &PlayerController::setExportMessage);
    connect(&m_stills, &StillExport::begun, this, [this] { setExportMessage({}); });
    connect(&m_stills, &StillExport::failed, this, &PlayerController::setExportMessage);
    connect(&m_stills, &StillExport::saved, this, [this](const FileUrl& still) {
        m_savedStill = still;
        m_message = u"Saved "_s + still.fileName();
        Q_EMIT exportMessageChanged();
    });
}

void PlayerController::useSource()
{
    m_playhead.use(&m_pictures.source());
    m_scopes.use(&m_pictures.source());
}

QString PlayerController::stepperHelp()
{
    return u"Playback isn't available for this format"_s;
}

QString PlayerController::stepperNote()
{
    return u"This format cannot play here. It steps frame by frame instead. Stills and guides "
           u"work as usual."_s;
}

QStringList PlayerController::notes() const
{
    QStringList notes;
    if (usesFrameStepper())
        notes << stepperNote();
    if (m_file.hdr)
        notes << u"HDR (%1), shown without tone mapping"_s.arg(*m_file.hdr);
    return notes;
}

void PlayerController::setReport(Report report)
{
    if (m_report == report)
        return;
    m_report = std::move(report);
    Q_EMIT reportChanged();
    Q_EMIT eventsChanged();
}

void PlayerController::setMedia(Media media)
{
    if (std::exchange(m_media, std::move(media)) != m_media)
        Q_EMIT mediaChanged();
}

Overlay PlayerController::overlay() const
{
    return {.outOfRange = m_scopes.scopeImages().zebra,
            .captions = m_captions.activeCues(currentSeconds()),
            .guides = m_guides.guides(),
            .strokes = m_notebook.strokesAt(m_playhead.frame()),
            .finding = m_focus.findingAt(m_playhead.frame())};
}

Timecode PlayerController::timecode() const
{
    return {m_playhead.frame(), m_file.workingRate()};
}

void PlayerController::step(std::int64_t frames)
{
    m_shuttle.stop();
    seek(m_playhead.frame() + frames);
}

void PlayerController::jump(bool toEnd)
{
    m_shuttle.stop();
    seek(toEnd ? lastFrameIndex() : 0);
}

TransportActions PlayerController::transportActions()
{
    return {.isComposing = [this] { return m_notebook.isComposing(); },
            .timecode = [this] { return timecode(); },
            .togglePlay = [this] { togglePlay(); },
            .shuttle = [this](ShuttleState::Direction direction,
                              bool slow) { m_shuttle.press(direction, slow); },
            .shuttleStop = [this] { m_shuttle.stop(); },
            .step = [this](std::int64_t frames) { step(frames); },
            .jump = [this](bool toEnd) { jump(toEnd); },
            .seek = [this](const Timecode& time) { seek(time.frame()); },
            .zoom = [this](ZoomCommand command) { m_zoom.apply(command); },
            .escape = nullptr,
            .fullScreen = nullptr,
            .undo = [this] { return m_notebook.undoDrawing(); },
            .redo = [this] { return m_notebook.redoDrawing(); },
            .toMark = [this](bool forward) { goToMark(forward); },
            .toProblem = [this](bool forward) { goToProblem(forward); },
            .bringBack = [this] { return !m_notebook.isComposing() && bringBackComment(); }};
}

std::vector<SignalEvent> PlayerController::detectedEvents() const
{
    std::vector<SignalEvent> events;
    if (m_report && m_report->events)
        events = *m_report->events;
    std::ranges::move(m_captions.captionEvents(), std::back_inserter(events));
    std::ranges::stable_sort(events, {}, &SignalEvent::frame);
    return events;
}

void PlayerController::goTo(const ReviewComment& comment)
{
    m_focus.select(comment.id);
    seek(comment.frame);
}

void PlayerController::goTo(const SignalEvent& event)
{
    m_focus.select(event);
    seek(event.frame);
    switch (event.kind) {
    case SignalEvent::Kind::captionSpelling:
    case SignalEvent::Kind::captionDoubled: return m_captions.setCaptionsShown(true);
    case SignalEvent::Kind::safeZone: return m_guides.showZones();
    case SignalEvent::Kind::safeArea: return m_guides.showSafeAreas();
    default: return;
    }
}

void PlayerController::goToMark(bool forward)
{
    const auto comments = m_notebook.comments();
    const auto events = detectedEvents();
    const auto* comment = nearest(comments, m_playhead.frame(), forward);
    const auto* event = nearest(events, m_playhead.frame(), forward);
    const bool eventIsNearer =
        event != nullptr && comment != nullptr
        && (forward ? event->frame < comment->frame : event->frame > comment->frame);
    if (comment != nullptr && !eventIsNearer)
        goTo(*comment);
    else if (event != nullptr)
        goTo(*event);
}

void PlayerController::goToProblem(bool forward)
{
    const auto problems = ProblemSteps::among(detectedEvents(), lastFrameIndex());
    const auto stand = ProblemSteps::at(problems, m_focus.selectedEventID(), m_playhead.frame());
    const auto& to = forward ? stand.next : stand.previous;
    if (!to)
        return setExportMessage(
            ProblemSteps::endWords(forward, problems.size(), problemsWithoutPlace()));
    m_shuttle.stop();
    goTo(problems[*to]);
}

std::size_t PlayerController::problemsWithoutPlace() const
{
    return m_report ? ProblemSteps::withoutPlace(
               *m_report, ProblemSteps::among(detectedEvents(), lastFrameIndex()))
                    : 0;
}

void PlayerController::saveComment(const std::optional<QString>& author)
{
    if (const auto id = m_notebook.saveComment(m_playhead.frame(), author))
        m_focus.select(*id);
}

void PlayerController::removeComment(const QUuid& id)
{
    m_focus.forget(id);
    m_notebook.removeComment(id);
}

bool PlayerController::bringBackComment()
{
    const auto id = m_notebook.bringBackComment();
    if (id)
        m_focus.select(*id);
    return id.has_value();
}

void PlayerController::setSignOff(std::optional<ReviewSignOff::Decision> decision)
{
    m_notebook.setSignOff(decision, m_report.get());
}

void PlayerController::exportStill(bool withGuides)
{
    Overlay shown;
    if (withGuides) {
        shown = overlay();
        shown.outOfRange = {};
        shown.finding.reset();
    }
    m_stills.exportStill(m_playhead.frame(), shown);
}

void PlayerController::presentCaptionsPanel()
{
    const auto file =
        m_desktop.chooseOpenFile(u"Choose a SubRip (.srt), WebVTT (.vtt) or Scenarist (.scc) file "
                                 u"to check against the picture"_s,
                                 {u"srt"_s, u"vtt"_s, u"scc"_s});
    if (file)
        m_captions.loadCaptions(*file);
}

void PlayerController::setExportMessage(const std::optional<QString>& message)
{
    m_savedStill.reset();
    m_message = message;
    Q_EMIT exportMessageChanged();
}

void PlayerController::showSavedStill()
{
    if (m_savedStill)
        m_desktop.showInFolder(*m_savedStill);
}

void PlayerController::tearDown()
{
    m_shuttle.tearDown();
    m_playhead.use(nullptr);
    m_scopes.use(nullptr);
}

} // namespace vantroque
