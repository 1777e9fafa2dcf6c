#include "Views/WindowScenes.h"

#include "VantroqueApp/Views/Style/Type.h"

#include <QImage>
#include <QPainter>

#include <cmath>

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
    signal.decodeHealth = DecodeHealth();
    signal.textScanAttempted = true;
    signal.channelLevels = std::vector<ChannelLevel>{{.rmsDb = -23.0, .peakDb = -4.1},
                                                     {.rmsDb = -24.5, .peakDb = -5.6}};
    signal.channelSeries = ChannelLevelSeries{.sampleHz = 10,
                                              .rms = {{-30.F, -13.4F}, {-31.F, -15.F}},
                                              .peak = {{-9.F, -4.1F}, {-9.F, 0.F}}};
    media.signal = signal;
    return media;
}

namespace {

using Stage = AnalysisProgress::Stage;

} // namespace

QImage landscape()
{
    constexpr QSize size{960, 540};
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 380);
    sky.setColorAt(0, QColor(28, 44, 96));
    sky.setColorAt(0.6, QColor(150, 110, 130));
    sky.setColorAt(1, QColor(246, 190, 120));
    painter.fillRect(image.rect(), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 240, 205));
    painter.drawEllipse(QPointF(640, 330), 44, 44);
    for (int i = 0; i < 4; ++i) {
        QPolygonF hills{QPointF(0, 540)};
        for (int x = 0; x <= 960; x += 8)
            hills << QPointF(x, 350 + 48 * i + 18 * std::sin(x * 0.011 * (i + 1) + i * 2.1));
        hills << QPointF(960, 540);
        painter.setBrush(QColor(122 - 28 * i, 82 - 18 * i, 98 - 20 * i));
        painter.drawPolygon(hills);
    }
    painter.setPen(Qt::white);
    painter.setFont(Type::text(44, QFont::DemiBold));
    painter.drawText(image.rect().adjusted(0, 48, -64, 0), Qt::AlignRight | Qt::AlignTop,
                     u"Northlight"_s);
    return image;
}

namespace {

/// To BT.709 in video range.
ScopeFrame frame(const QImage& image)
{
    ScopeFrame frame{.width = image.width(), .height = image.height(), .y = {}, .cb = {}, .cr = {}};
    const auto code = [](double value) { return static_cast<std::uint8_t>(std::lround(value)); };
    for (int row = 0; row < image.height(); ++row)
        for (int column = 0; column < image.width(); ++column) {
            const QRgb pixel = image.pixel(column, row);
            const double red = qRed(pixel) / 255.0;
            const double blue = qBlue(pixel) / 255.0;
            const double luma = 0.2126 * red + 0.7152 * qGreen(pixel) / 255.0 + 0.0722 * blue;
            frame.y.push_back(code(16 + 219 * luma));
            frame.cb.push_back(code(128 + 224 * (blue - luma) / 1.8556));
            frame.cr.push_back(code(128 + 224 * (red - luma) / 1.5748));
        }
    return frame;
}

void playSound(AnalysisProgress& progress, int channels)
{
    auto levels = std::make_shared<AnalysisProgress::ChannelLevels>();
    for (int i = 0; i < channels; ++i) {
        levels->rms.push_back(-18.2F - 3.0F * static_cast<float>(i % 7));
        levels->peak.push_back(-8.3F - 1.6F * static_cast<float>(i % 7));
    }
    progress.append(AnalysisProgress::AudioSample{.time = 14, .levels = std::move(levels)});
}

void playEvents(AnalysisProgress& progress)
{
    using Kind = AnalysisProgress::LiveEvent::Kind;
    progress.append({.kind = Kind::blackStart, .time = 0});
    progress.append({.kind = Kind::blackEnd, .time = 1.5});
    progress.append({.kind = Kind::silenceStart, .time = 0});
    progress.append({.kind = Kind::silenceEnd, .time = 2});
    progress.append({.kind = Kind::freezeStart, .time = 12});
    progress.noteMediaTime(14);
}

/// What the file's name asks for after "run": nothing of the file known yet, no picture yet, no
/// picture at all, more channels, or a later stage.
void play(AnalysisProgress& progress, MediaInfo media, const QString& name)
{
    const auto is = [&](const char* word) { return name.startsWith(QLatin1String(word)); };
    progress.set(Stage::probing);
    if (is("run-probing"))
        return;
    if (is("run-sound"))
        media.video.reset();
    if (is("run-surround")) {
        media.audio->channels = 6;
        media.audio->channelLayout = u"5.1"_s;
    } else if (is("run-many")) {
        media.audio->channels = 24;
        media.audio->channelLayout.reset();
    }
    progress.set(media);
    progress.set(Stage::decoding);
    if (media.video && !is("run-first"))
        progress.setPreview(picture(), 14);
    playSound(progress, media.audio->channels);
    playEvents(progress);
    const std::map<QString, Stage> later{{u"run-text"_s, Stage::readingText},
                                         {u"run-slate"_s, Stage::readingSlate},
                                         {u"run-pop"_s, Stage::measuringPop},
                                         {u"run-scoring"_s, Stage::scoring}};
    for (const auto& [start, stage] : later)
        if (name.startsWith(start)) {
            progress.noteMediaTime(media.durationSeconds);
            progress.noteTextFrames(34, 120, 0.1, 2);
            progress.set(stage);
        }
}

} // namespace

const ScopeFrame& picture()
{
    static const ScopeFrame drawn = frame(landscape());
    return drawn;
}

namespace {

QString errorOf(const QString& name)
{
    const QString error = u"ffprobe: moov atom not found"_s;
    if (name.startsWith(u"bad-lines"_s))
        return u"The index is missing: the file was cut off, or is no media file.\n"
               "ffprobe exited with status 1: moov atom not found\n"
               "Invalid data found when processing input\n"_s;
    return name.startsWith(u"bad-long"_s)
               ? error
                     + u". Error opening input: Invalid data found when processing input."_s
                           .repeated(100)
               : error;
}

/// An inverted passage, a dip to black, and a frame of black.
void addEvents(SignalInfo& signal)
{
    FrameCadence cadence;
    cadence.interiorBlackRuns = {{10, 11}, {20, 20.04}};
    signal.cadence = cadence;
    StereoPhase phase;
    phase.outOfPhaseRuns = {{2, 5}};
    phase.audibleSeconds = 30;
    phase.meanCorrelation = 0.4;
    phase.minWindowCorrelation = -0.9;
    signal.phase = phase;
}

MediaInfo mediaOf(const FileUrl& url, const QString& name)
{
    MediaInfo found = media(url, name.startsWith(u"fail"_s) || name.startsWith(u"long"_s));
    if (name.startsWith(u"warn"_s))
        found.audio->streamCount = 2;
    if (name.startsWith(u"sound"_s))
        found.video.reset();
    if (name.startsWith(u"left"_s))
        found.signal->channelLevels->at(1) = {.rmsDb = -91.0, .peakDb = -90.0};
    if (name.startsWith(u"fail_many"_s)) {
        found.audio->channels = 24;
        found.audio->channelLayout.reset();
        auto& series = *found.signal->channelSeries;
        series.rms.resize(24, series.rms.front());
        series.peak.resize(24, series.peak.front());
    }
    if (name.contains(u"events"_s))
        addEvents(*found.signal);
    return found;
}

/// A file named "long..." gets texts as long as they come.
FileReport reportOf(const MediaInfo& media, const std::vector<Profile>& profiles)
{
    FileReport report = Analyzer::report(media, profiles);
    if (!media.url.fileName().startsWith(u"long"_s))
        return report;
    for (ProfileReport& profile : report.profiles)
        for (CheckResult& check : profile.checks) {
            check.measured +=
                u", measured over the whole length of the programme with all of its pauses"_s;
            check.fix =
                u"Bring the mix down by 4.4 dB and limit it at two decibels below full scale "
                "before it is encoded, or let the encoder do both on export, which takes the "
                "same file once more (in ffmpeg: -af loudnorm=I=-24:TP=-2:LRA=7)."_s;
        }
    return report;
}

} // namespace

AnalysisEngine SceneEngine::engine()
{
    return {.analyze = [this](const FileUrl& url, const std::vector<Profile>& profiles,
                              AnalysisProgress& progress) -> Result<Analyzer::Analysis> {
                const QString name = url.fileName();
                if (name.startsWith(u"bad"_s))
                    return failure(errorOf(name));
                const MediaInfo found = mediaOf(url, name);
                if (name.startsWith(u"run"_s)) {
                    play(progress, found, name);
                    std::unique_lock lock(m_mutex);
                    m_wake.wait(lock, [this] { return m_released; });
                }
                return Analyzer::Analysis{found, reportOf(found, profiles)};
            },
            .rescore = [](MediaInfo& found, const std::vector<Profile>& profiles)
                -> Result<FileReport> { return reportOf(found, profiles); }};
}

void SceneEngine::release()
{
    const std::scoped_lock lock(m_mutex);
    m_released = true;
    m_wake.notify_all();
}

void SceneEngine::hold()
{
    const std::scoped_lock lock(m_mutex);
    m_released = false;
}

} // namespace vantroque::WindowScenes
