#include "Views/PlayerScreenshots.h"

#include "Support/Media.h"
#include "VantroqueApp/Views/Player/PictureFullScreen.h"
#include "VantroqueApp/Views/Player/PictureView.h"
#include "VantroqueApp/Views/Player/PlayerPane.h"
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
