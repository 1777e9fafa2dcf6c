#include "Views/PlayerScreenshots.h"

#include "Support/Media.h"
#include "VantroqueApp/Views/Player/PictureFullScreen.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
#include "VantroqueApp/Views/Window/DetailPane.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"

#include <QRegularExpression>

namespace vantroque::PlayerScreenshots {

namespace {

using Path = std::filesystem::path;

Path captions()
{
    return Media::make("screens-captions.srt", {"1"}, [](const Path& path) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("1\n00:00:00,000 --> 00:00:02,500\nSlow roast, the way it was meant.\n\n"
                       "2\n00:00:02,500 --> 00:00:05,000\nRoasted over an oppen fire,\n"
                       "in small batches.\n\n"
                       "3\n00:00:05,000 --> 00:00:06,000\nNow in every shop.\n");
    });
}

/// Six seconds with a slow move, a dip to black in the middle and white that is out of range, with
/// sound and captions.
Path film(const std::string& size = "1280x720")
{
    const auto build = [&](const Path& path) {
        const Path still = path.string() + ".png";
        WindowScenes::landscape().save(QString::fromStdString(still.native()));
        Media::ffmpeg(
            {"-loop",
             "1",
             "-framerate",
             "25",
             "-i",
             still.native(),
             "-f",
             "lavfi",
             "-i",
             "sine=frequency=440:sample_rate=48000,volume=-12dB",
             "-i",
             captions().native(),
             "-filter_complex",
             "[0:v]scale=" + size.substr(0, size.find('x')) + ":" + size.substr(size.find('x') + 1)
                 + ":force_original_aspect_ratio=increase,crop=" + size.substr(0, size.find('x'))
                 + ":" + size.substr(size.find('x') + 1)
                 + ",format=yuv420p,drawbox=x=t*40:y=60:w=90:h=30:color=white:t=fill,"
                   "drawbox=c=black:t=fill:enable='between(t,3,3.3)',"
                   "lutyuv=y='if(gt(val,234),250,val)'[v]",
             "-map",
             "[v]",
             "-map",
             "1:a",
             "-map",
             "2:s",
             "-t",
             "6",
             "-c:v",
             "libx264",
             "-preset",
             "veryfast",
             "-c:a",
             "aac",
             "-ac",
             "2",
             "-c:s",
             "mov_text",
             "-movflags",
             "+faststart",
             path.native()});
        std::filesystem::remove(still);
    };
    return Media::make("screens-northlight-" + size + ".mp4", {"2", size}, build);
}

Path withoutPicture()
{
    return Media::make({"screens-voice-over.mov",
                        {"-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000:duration=4",
                         "-c:a", "pcm_s16le"}});
}

std::unique_ptr<PlaybackEngine> engine(const PlaybackSource& source)
{
    return std::make_unique<DecoderEngine>(source);
}

/// A loop and an arrow, as a hand draws them.
std::vector<AnnotationStroke> strokes()
{
    using Stroke = AnnotationStroke;
    Stroke loop{.id = QUuid::createUuid(), .tool = Stroke::Tool::pen, .points = {}, .ink = {}};
    for (int i = 0; i <= 40; ++i) {
        const double turn = 6.4 * i / 40;
        loop.points.push_back(
            {.x = 0.66 + 0.09 * std::cos(turn) + 0.0006 * i, .y = 0.61 + 0.15 * std::sin(turn)});
    }
    return {loop,
            {.id = QUuid::createUuid(),
             .tool = Stroke::Tool::arrow,
             .points = {{.x = 0.25, .y = 0.25}, {.x = 0.5, .y = 0.5}},
             .ink = Stroke::Ink::amber},
            {.id = QUuid::createUuid(),
             .tool = Stroke::Tool::ellipse,
             .points = {{.x = 0.1, .y = 0.7}, {.x = 0.3, .y = 0.9}},
             .ink = Stroke::Ink::white}};
}

/// An open player and what is done with it.
class Desk {
public:
    Desk(Studio& studio, QString look) : m_studio(studio), m_look(std::move(look)) {}
    ~Desk() { m_studio.close(); }

    bool open(const Path& film, const PlaybackEngineMaker& maker = engine, QSize size = {1440, 900})
    {
        m_studio.openFilm(film, maker, size);
        const bool shown = QTest::qWaitFor(
            [&] {
                return m_studio.model().player() != nullptr && player().shown()
                       && player().notebook().isOpen();
            },
            20'000);
        if (!shown)
            std::cerr << "no player of " << film.filename() << '\n';
        return shown;
    }
    PlayerController& player() { return *m_studio.model().player(); }
    void seek(std::int64_t frame)
    {
        player().seek(frame);
        if (!QTest::qWaitFor([&] { return player().shown()->frame == frame; }, 20'000))
            std::cerr << "frame " << frame << " is not shown\n";
    }
    void note(std::int64_t frame, const QString& text, std::vector<AnnotationStroke> drawn = {})
    {
        seek(frame);
        for (const AnnotationStroke& stroke : drawn)
            player().notebook().addDraftStroke(stroke);
        player().notebook().setDraftText(text);
        player().saveComment(u"Mara Lind"_s);
    }
    void notes()
    {
        note(20, u"Warmer grade on the hills, please."_s);
        note(60,
             u"Logo is too close to the edge for the vertical cut. Move it in by 40 pixels, "
             "and keep it there until the end card."_s,
             strokes());
        note(110, {}, {strokes().front()});
        note(120, u"اللون هنا جيد"_s);
    }
    void showEverything()
    {
        player().guides().setGuideOptions({.safeAreas = true,
                                           .thirds = true,
                                           .detectedPicture = true,
                                           .platformZoneIDs = {},
                                           .feedCrop = true});
        player().scopes().setScopeOptions(
            {.waveform = true, .parade = true, .vectorscope = true, .outOfRange = true});
    }
    void shoot(const QString& name) { m_studio.shoot(m_look + u"-player-"_s + name); }
    void shootMenus()
    {
        auto* pane = m_studio.window().findChild<PlayerPane*>();
        for (auto* button : pane->findChildren<ToolButton*>())
            if (button->menu() != nullptr && button->isVisible())
                m_studio.shootMenu(m_look + u"-player-menu-"_s
                                       + button->accessibleName()
                                             .section(QRegularExpression(u"[ ,]"_s), 0, 0)
                                             .toLower(),
                                   *button->menu(), *button);
    }
    void shootFullScreen()
    {
        auto& picture = m_studio.window().findChild<PlayerPane*>()->picture();
        picture.setFocus();
        QTest::keyClick(&picture, Qt::Key_F, Qt::ControlModifier);
        for (QWidget* window : QApplication::topLevelWidgets())
            if (dynamic_cast<FullScreenPicture*>(window) != nullptr) {
                m_studio.shoot(m_look + u"-player-full-screen"_s, *window);
                window->close();
                return;
            }
        std::cerr << "no full screen\n";
    }
    Studio& studio() { return m_studio; }

private:
    Studio& m_studio;
    const QString m_look;
};

void shootStates(Studio& studio, const QString& look)
{
    Desk desk(studio, look);
    if (!desk.open(film()))
        return;
    desk.seek(0);
    desk.shoot(u"opened"_s);
    desk.notes();
    desk.seek(60);
    desk.shoot(u"note"_s);
    desk.player().setSignOff(ReviewSignOff::Decision::needsRevisions);
    desk.showEverything();
    desk.shoot(u"everything"_s);
    desk.shootMenus();
    for (const QSize size : {QSize(1024, 700), QSize(1920, 1080), QSize(2560, 1440)}) {
        studio.window().resize(size);
        desk.shoot(u"everything-"_s + QString::number(size.width()));
    }
    studio.window().resize(1440, 900);
    desk.player().guides().setGuideOptions({});
    desk.player().scopes().setScopeOptions({});
    if (const auto events = desk.player().detectedEvents(); !events.empty()) {
        desk.player().goTo(events.front());
        desk.shoot(u"finding"_s);
    }
    desk.seek(30);
    desk.player().notebook().setTool(AnnotationTool::pen);
    desk.player().notebook().setComposing(true);
    desk.player().notebook().addDraftStroke(strokes().front());
    desk.player().notebook().setDraftText(u"The steam is cut off here"_s);
    desk.shoot(u"drawing"_s);
    desk.player().notebook().discardDraft();
    desk.player().notebook().setTool(AnnotationTool::pointer);
    desk.player().zoom().setZoom(3);
    desk.shoot(u"zoomed"_s);
    desk.player().zoom().setZoom(1);
    desk.player().setExportMessage(u"Saved northlight_00-00-01-05.png"_s);
    desk.shoot(u"message"_s);
    desk.player().shuttle().press(ShuttleState::Direction::forward, false);
    desk.player().shuttle().press(ShuttleState::Direction::forward, false);
    desk.shoot(u"playing"_s);
    desk.player().shuttle().stop();
    desk.shootFullScreen();
}

/// One of everything that a timeline can show of a film of six seconds.
void find(PlayerController& player)
{
    using Kind = SignalEvent::Kind;
    auto report = std::make_shared<FileReport>(*player.report());
    const auto add = [&](Kind kind, Verdict verdict, std::int64_t frame, std::int64_t end,
                         const QString& text, std::optional<NormalizedRect> box = {}) {
        report->events->push_back({u"found-%1-%2"_s.arg(static_cast<int>(kind)).arg(frame), kind,
                                   frame, end, verdict, text, box});
    };
    report->events.emplace();
    add(Kind::safeZone, Verdict::warn, 20, 34, u"\"Slow roast\" sits under the TikTok controls."_s,
        NormalizedRect{0.05, 0.8, 0.3, 0.08});
    add(Kind::safeArea, Verdict::fail, 52, 78,
        u"\"Northlight\" reaches past the 93% content-safe area. Harbour Video will reject it."_s,
        NormalizedRect{0.7, 0.1, 0.28, 0.16});
    add(Kind::captionSpelling, Verdict::warn, 132, 141, u"\"Waek\" is not a word English knows."_s);
    add(Kind::flashFrame, Verdict::warn, 12, 12, u"Flash frame"_s);
    add(Kind::levels, Verdict::warn, 38, 46,
        u"Luma beyond EBU R 103 tolerance on 1.2% of the picture for 0.3 s"_s);
    add(Kind::duplicateFrame, Verdict::warn, 91, 91, u"Frame repeats the one before it"_s);
    add(Kind::blackFrame, Verdict::info, 105, 109, u"Dip to black for 0.2 s"_s);
    add(Kind::phase, Verdict::warn, 83, 97,
        u"Left and right inverted for 0.6 s: cancels in mono"_s);
    std::ranges::sort(*report->events, {}, &SignalEvent::frame);
    auto media = std::make_shared<MediaInfo>(*player.media());
    media->signal->blackRuns = {{0, 0.08}, {4.2, 4.36}, {5.7, 5.96}};
    media->signal->freezeRuns = {{4.84, 5.12}};
    media->signal->audioIslands = {{0.14, 2.58}, {2.68, 5.68}};
    media->audio->channels = 6;
    media->audio->channelLayout = u"5.1"_s;
    std::vector<std::vector<float>> rms;
    std::vector<std::vector<float>> peak;
    for (const float level : {-14.F, -15.5F, -11.F, -27.F, -22.5F, -24.F}) {
        rms.emplace_back(60, level);
        peak.emplace_back(60, level / 2 + 2.4F);
    }
    media->signal->channelSeries = ChannelLevelSeries{.sampleHz = 10, .rms = rms, .peak = peak};
    player.setReport(std::move(report));
    player.setMedia(std::move(media));
}

} // namespace

void shootReview(Studio& studio, const QString& look)
{
    Desk desk(studio, look);
    if (!desk.open(film()))
        return;
    desk.notes();
    find(desk.player());
    desk.player().guides().setGuideOptions({.safeAreas = true,
                                            .thirds = false,
                                            .detectedPicture = false,
                                            .platformZoneIDs = {},
                                            .feedCrop = false});
    desk.seek(40);
    desk.player().goToProblem(true);
    desk.seek(52);
    desk.shoot(u"problem"_s);
    studio.window().findChild<DetailPane*>()->setReview(true);
    desk.shoot(u"review"_s);
    desk.seek(60);
    for (const QSize size :
         {QSize(1024, 700), QSize(1200, 760), QSize(1920, 1080), QSize(2560, 1440)}) {
        studio.window().resize(size);
        desk.shoot(u"review-"_s + QString::number(size.width()));
    }
    studio.window().resize(1440, 900);
    desk.seek(149);
    desk.shoot(u"review-end"_s);
    desk.player().scopes().setScopeOptions({});
    desk.shoot(u"review-no-scopes"_s);
    desk.player().scopes().setScopeOptions({.waveform = true, .parade = true, .vectorscope = true});
}

namespace {

void shootOtherFilms(Studio& studio, const QString& look)
{
    {
        Desk desk(studio, look);
        if (desk.open(film("720x1280"))) {
            desk.player().guides().setGuideOptions({.safeAreas = true,
                                                    .thirds = false,
                                                    .detectedPicture = false,
                                                    .platformZoneIDs = {},
                                                    .feedCrop = false});
            for (const PlatformZone& zone : desk.player().guides().zones()) {
                GuideOptions options = desk.player().guides().guideOptions();
                options.platformZoneIDs.insert(zone.id);
                desk.player().guides().setGuideOptions(options);
                break;
            }
            desk.seek(20);
            desk.shoot(u"vertical"_s);
        }
    }
    {
        Desk desk(studio, look);
        if (desk.open(film(), nullptr))
            desk.shoot(u"stills"_s);
    }
    {
        Desk desk(studio, look);
        studio.openFilm(withoutPicture(), engine);
        desk.shoot(u"no-picture"_s);
    }
}

} // namespace

void shoot(Studio& studio, const QString& look)
{
    shootStates(studio, look);
    shootOtherFilms(studio, look);
}

} // namespace vantroque::PlayerScreenshots
