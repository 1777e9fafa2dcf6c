// RescoringBenchmark: how long `Analyzer::report` takes for one file and all shipped profiles.

#include "Analysis/Analyzer.h"
#include "Base/Numbers.h"
#include "Profiles/ProfileStore.h"

#include <algorithm>
#include <chrono>
#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

MediaInfo broadcastSpot()
{
    VideoStreamInfo video;
    video.codec = video.rawCodecName = u"h264"_s;
    video.encoderProfile = u"High"_s;
    video.level = 41;
    video.width = 1920;
    video.height = 1080;
    video.pixFmt = u"yuv420p"_s;
    video.chroma = u"420"_s;
    video.fieldOrder = u"progressive"_s;
    video.nominalFrameRate = 25;
    video.frameCount = 750;
    video.durationSeconds = 30;
    video.bitrateKbps = 20'000;
    video.bitratePerSecondKbps.assign(30, 20'000);
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/Autumn Sale 30.mp4");
    media.fileSizeBytes = 75'000'000;
    media.containerKind = u"mp4"_s;
    media.durationSeconds = 30;
    media.video = video;
    media.audio = AudioStreamInfo{u"aac"_s, u"aac"_s, 48'000, 2, {}, 320, 1, 30, u"stereo"_s};
    media.moovBeforeMdat = true;
    media.analysisVersion = currentAnalysisVersion;
    return media;
}

} // namespace

int main()
{
    const auto profiles = ProfileStore::loadAll();
    if (!profiles) {
        std::cerr << profiles.error().description.toStdString() << '\n';
        return 1;
    }
    const MediaInfo media = broadcastSpot();
    constexpr int runs = 201;
    std::vector<double> milliseconds;
    std::size_t rows = 0;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const FileReport report = Analyzer::report(media, *profiles);
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        milliseconds.push_back(taken.count());
        rows = 0;
        for (const ProfileReport& one : report.profiles)
            rows += one.checks.size();
    }
    std::ranges::sort(milliseconds);
    std::cout << "profiles           " << profiles->size() << "\nrows               " << rows
              << "\nmedian             " << Numbers::fixed(milliseconds[runs / 2], 3).toStdString()
              << " ms (under 2)\nslowest            "
              << Numbers::fixed(milliseconds.back(), 3).toStdString() << " ms\n";
    return 0;
}
