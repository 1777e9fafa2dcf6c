#include "Views/CompareScreenshots.h"

#include "Support/Media.h"
#include "VantroquePlatform/Playback/DecoderEngine.h"

namespace vantroque::CompareScreenshots {

namespace {

using Path = std::filesystem::path;

/// A version of a spot, with its end card from that second on.
struct Version {
    std::string name;
    std::string size;
    int seconds = 0;
    int card = 0;
    std::string cardPlace; ///< Left and top of what is written.
};

FileUrl film(const Version& version)
{
    const auto colon = version.size.find('x');
    const std::string size = version.size.substr(0, colon) + ":" + version.size.substr(colon + 1);
    const std::string until = std::to_string(version.seconds);
    const std::string filter =
        "[0:v]scale=" + size + ":force_original_aspect_ratio=increase,crop=" + size
        + ",format=yuv420p,drawbox=x=t*30:y=60:w=60:h=24:color=white:t=fill,"
          "drawtext=font=Inter:text=Northlight:fontsize=56:fontcolor=white:"
        + version.cardPlace + ":enable='gte(t," + std::to_string(version.card) + ")'[v]";
    const auto build = [&](const Path& path) {
        const Path still = path.string() + ".png";
        WindowScenes::landscape().save(QString::fromStdString(still.native()));
        Media::ffmpeg({"-loop",
                       "1",
                       "-framerate",
                       "25",
                       "-i",
                       still.native(),
                       "-f",
                       "lavfi",
                       "-i",
                       "sine=frequency=440:sample_rate=48000,volume=-12dB",
                       "-filter_complex",
                       filter,
                       "-map",
                       "[v]",
                       "-map",
                       "1:a",
                       "-t",
                       until,
                       "-c:v",
                       "libx264",
                       "-preset",
                       "veryfast",
                       "-c:a",
                       "aac",
                       "-ac",
                       "2",
                       path.native()});
        std::filesystem::remove(still);
    };
    return FileUrl::fromPath(Media::make(version.name, {"1", filter, until}, build));
}

std::unique_ptr<PlaybackEngine> engine(const PlaybackSource& source)
{
    return std::make_unique<DecoderEngine>(source);
}

std::vector<FileUrl> versions()
{
    return {film({"Northlight_SlowRoast_6s_16x9_v07.mp4", "1280x720", 6, 2, "x=800:y=90"}),
            film({"Northlight_SlowRoast_6s_16x9_v08.mp4", "1280x720", 6, 2, "x=820:y=110"}),
            film({"Northlight_SlowRoast_4s_9x16_v05.mp4", "540x960", 4, 1, "x=110:y=160"}),
            film({"Northlight_SlowRoast_6s_9x16_v06.mp4", "540x960", 6, 2, "x=110:y=120"})};
}

void openCompared(Studio& studio, const std::vector<FileUrl>& films)
{
    studio.openFilms(films, engine);
    studio.signOff(0, ReviewSignOff::Decision::needsRevisions);
    studio.signOff(1, ReviewSignOff::Decision::approved);
    studio.model().comparison().setComparing(true);
}

} // namespace

void shoot(Studio& studio, const QString& look)
{
    const auto films = versions();
    openCompared(studio, films);
    CompareController& compare = *studio.model().openComparison().controller();
    ComparePair& pair = studio.window().findChild<CompareView*>()->pair();
    studio.shoot(look + u"-compare"_s);
    compare.setSyncMode(SyncAlignment::fromEnd);
    compare.seek(1);
    studio.shoot(look + u"-compare-ends"_s);
    compare.scrub(compare.tiles()[1]->id(), 3);
    compare.setTileSize(0.5);
    studio.shoot(look + u"-compare-slipped-large"_s);
    studio.window().resize(1024, 700);
    compare.setTileSize(0);
    studio.shoot(look + u"-compare-small"_s);
    studio.window().resize(1440, 900);
    compare.syncAll();
    compare.setSyncMode(SyncAlignment::fromStart);
    compare.seek(3);
    compare.setGuideOptions({.safeAreas = true, .thirds = true});
    studio.shoot(look + u"-compare-guides"_s);
    pair.setMode(CompareMode::wipe);
    studio.shoot(look + u"-compare-wipe"_s);
    compare.setGuideOptions({});
    pair.choose(*compare.tiles()[2]);
    studio.shoot(look + u"-compare-wipe-fitted"_s);
    pair.choose(*compare.tiles()[0]);
    pair.choose(*compare.tiles()[1]);
    pair.setMode(CompareMode::difference);
    studio.shoot(look + u"-compare-difference"_s);
    compare.seek(1);
    studio.shoot(look + u"-compare-no-difference"_s);
    studio.window().resize(1024, 700);
    studio.shoot(look + u"-compare-difference-small"_s);
    studio.close();
}

} // namespace vantroque::CompareScreenshots
