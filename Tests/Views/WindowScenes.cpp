#include "Views/WindowScenes.h"

namespace vantroque::WindowScenes {

using namespace Qt::StringLiterals;

namespace {

Profile platform(const QString& name, ProfileGroup group)
{
    Profile profile = bareProfile();
    profile.id = name.toLower().replace(u' ', u'-');
    profile.name = name;
    profile.group = group;
    profile.verifiedDate = u"2026-09-01"_s;
    profile.loudness = LoudnessRule{.targetLKFS = -24.0, .toleranceLU = 2.0, .maxTruePeakDb = -2.0};
    profile.duration = DurationRule{.maxSeconds = 60.0};
    return profile;
}

} // namespace

std::vector<Profile> profiles(int count)
{
    std::vector<Profile> all{platform(u"Northern Streaming TV"_s, ProfileGroup::digital),
                             platform(u"Harbour Video"_s, ProfileGroup::digital),
                             platform(u"Quay Social Stories and Reels"_s, ProfileGroup::digital),
                             platform(u"Meadow Broadcast Delivery"_s, ProfileGroup::broadcast),
                             platform(u"Public Service Programme"_s, ProfileGroup::broadcast),
                             platform(u"Upload Advice"_s, ProfileGroup::recommendation)};
    all[0].loudness.reset(); // gives no rule
    all[1].inferred = true;
    all[2].video = VideoRule{.codecs = {CodecOption{.codec = u"h264"_s}},
                             .resolutions = {ResolutionOption{.width = 1080, .height = 1920}}};
    for (int i = static_cast<int>(all.size()); i < count; ++i)
        all.push_back(platform(u"Another Platform %1"_s.arg(i), ProfileGroup::digital));
    return all;
}

MediaInfo media(const FileUrl& url, bool tooLoud)
{
    MediaInfo media = HeldEngine::media(url);
    media.fileSizeBytes = 742'600'000;
    media.containerKind = u"mov"_s;
    media.audio = stereoAudio();
    SignalInfo signal;
    signal.integratedLKFS = tooLoud ? -19.6 : -24.2;
    signal.truePeakDb = tooLoud ? -0.8 : -3.1;
    signal.loudnessRangeLU = 6.1;
    PictureLevels levels;
    levels.yMinPercent = 0;
    levels.yMaxPercent = 102;
    signal.levels = levels;
    signal.blackRuns = std::vector<TimeSpan>();
    signal.textScanAttempted = true;
    signal.channelLevels = std::vector<ChannelLevel>{{.rmsDb = -23.0, .peakDb = -4.1},
                                                     {.rmsDb = -24.5, .peakDb = -5.6}};
    signal.channelSeries = ChannelLevelSeries{.sampleHz = 10,
                                              .rms = {{-30.F, -13.4F}, {-31.F, -15.F}},
                                              .peak = {{-9.F, -4.1F}, {-9.F, 0.F}}};
    media.signal = signal;
    return media;
}

void play(AnalysisProgress& progress, const MediaInfo& media)
{
    using Event = AnalysisProgress::LiveEvent;
    progress.set(AnalysisProgress::Stage::probing);
    progress.set(media);
    progress.set(AnalysisProgress::Stage::decoding);
    auto levels = std::make_shared<AnalysisProgress::ChannelLevels>();
    levels->rms = {-18.2F, -21.F};
    levels->peak = {-8.3F, -9.9F};
    progress.append(AnalysisProgress::AudioSample{.time = 14, .levels = levels});
    progress.append({.kind = Event::Kind::blackStart, .time = 0});
    progress.append({.kind = Event::Kind::blackEnd, .time = 1.5});
    progress.append({.kind = Event::Kind::silenceStart, .time = 0});
    progress.append({.kind = Event::Kind::silenceEnd, .time = 2});
    progress.append({.kind = Event::Kind::freezeStart, .time = 12});
    progress.noteMediaTime(14);
}

AnalysisEngine SceneEngine::engine()
{
    return {.analyze = [this](const FileUrl& url, const std::vector<Profile>& profiles,
                              AnalysisProgress& progress) -> Result<Analyzer::Analysis> {
                const QString name = url.fileName();
                if (name.startsWith(u"bad"_s))
                    return failure(u"ffprobe: moov atom not found"_s);
                const MediaInfo found = media(url, name.startsWith(u"fail"_s));
                if (name.startsWith(u"run"_s)) {
                    play(progress, found);
                    std::unique_lock lock(m_mutex);
                    m_wake.wait(lock, [this] { return m_released; });
                }
                return Analyzer::Analysis{found, Analyzer::report(found, profiles)};
            },
            .rescore = [](MediaInfo& found, const std::vector<Profile>& profiles)
                -> Result<FileReport> { return Analyzer::report(found, profiles); }};
}

void SceneEngine::release()
{
    const std::scoped_lock lock(m_mutex);
    m_released = true;
    m_wake.notify_all();
}

} // namespace vantroque::WindowScenes
