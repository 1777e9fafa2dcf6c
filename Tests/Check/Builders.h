#pragma once

#include "Check/Checker.h"
#include "Support/TestFolder.h"

#include <gmock/gmock.h>

#include <ostream>

// Small files and profiles to change one thing of, and rows to compare with.

namespace vantroque {

inline void PrintTo(const CheckResult& row, std::ostream* out)
{
    *out << row.id.toStdString() << " | " << row.title.toStdString() << " | "
         << enumName(row.verdict) << " | " << row.measured.toStdString() << " | "
         << row.expected.toStdString() << " | "
         << row.fix.value_or(QStringLiteral("-")).toStdString();
}

inline CheckResult row(const char* id, const char* title, Verdict verdict, const char* measured,
                       const char* expected, const char* fix = nullptr)
{
    return {QString::fromUtf8(id),
            QString::fromUtf8(title),
            verdict,
            QString::fromUtf8(measured),
            QString::fromUtf8(expected),
            fix ? std::optional(QString::fromUtf8(fix)) : std::nullopt};
}

/// A profile without any rule.
inline Profile bareProfile()
{
    Profile profile;
    profile.id = QStringLiteral("test-tv");
    profile.name = QStringLiteral("Test TV");
    return profile;
}

inline VideoStreamInfo hdVideo()
{
    VideoStreamInfo video;
    video.codec = QStringLiteral("h264");
    video.rawCodecName = video.codec;
    video.width = 1920;
    video.height = 1080;
    video.pixFmt = QStringLiteral("yuv420p");
    video.chroma = QStringLiteral("420");
    video.nominalFrameRate = 25;
    video.frameCount = 750;
    video.durationSeconds = 30;
    return video;
}

inline AudioStreamInfo stereoAudio()
{
    AudioStreamInfo audio;
    audio.codec = QStringLiteral("aac");
    audio.rawCodecName = audio.codec;
    audio.sampleRate = 48000;
    audio.channels = 2;
    audio.streamCount = 1;
    audio.durationSeconds = 30;
    return audio;
}

/// Thirty seconds of HD picture and stereo sound that nobody measured.
inline MediaInfo hdSpot()
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/spot.mp4");
    media.containerKind = QStringLiteral("mp4");
    media.durationSeconds = 30;
    media.video = hdVideo();
    media.audio = stereoAudio();
    return media;
}

/// The same after a decoding pass that found nothing worth a word.
inline MediaInfo measuredSpot()
{
    MediaInfo media = hdSpot();
    media.signal = SignalInfo{};
    return media;
}

/// The rows of one check.
inline Checker::Rows rowsOf(void (*check)(const Profile&, const MediaInfo&, Checker::Rows&),
                            const Profile& profile, const MediaInfo& media)
{
    Checker::Rows rows;
    check(profile, media, rows);
    return rows;
}

inline std::vector<QString> idsOf(const Checker::Rows& rows)
{
    std::vector<QString> ids;
    for (const CheckResult& each : rows)
        ids.push_back(each.id);
    return ids;
}

} // namespace vantroque
