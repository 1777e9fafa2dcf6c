// PrintBenchmark: how long a PDF of 20 reports without comments takes, frames aside, against all
// shipped profiles.

#include "Analysis/Analyzer.h"
#include "Base/Numbers.h"
#include "Print/ReviewPDF.h"
#include "Profiles/ProfileStore.h"

#include <QGuiApplication>

#include <algorithm>
#include <chrono>
#include <iostream>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

MediaInfo spot()
{
    VideoStreamInfo video;
    video.codec = video.rawCodecName = u"h264"_s;
    video.encoderProfile = u"High"_s;
    video.width = 1280;
    video.height = 720;
    video.pixFmt = u"yuv420p"_s;
    video.chroma = u"420"_s;
    video.fieldOrder = u"progressive"_s;
    video.nominalFrameRate = 25;
    video.frameCount = 750;
    video.durationSeconds = 30;
    video.bitrateKbps = 8'000;
    MediaInfo media;
    media.url = FileUrl::fromPath("/spots/Autumn Sale 30.mp4");
    media.fileSizeBytes = 30'000'000;
    media.containerKind = u"mp4"_s;
    media.durationSeconds = 30;
    media.video = video;
    media.audio = AudioStreamInfo{u"aac"_s, u"aac"_s, 48'000, 2, {}, 320, 1, 30, u"stereo"_s};
    media.analysisVersion = currentAnalysisVersion;
    return media;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const auto profiles = ProfileStore::loadAll();
    if (!profiles) {
        std::cerr << profiles.error().description.toStdString() << '\n';
        return 1;
    }
    ReviewPDF::FileSection section;
    section.report = Analyzer::report(spot(), *profiles);
    section.video = section.report->video;
    section.mediaURL = spot().url;
    const std::vector<ReviewPDF::FileSection> sections(20, section);
    constexpr int runs = 5;
    std::vector<double> seconds;
    qsizetype bytes = 0;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const auto written = ReviewPDF::write(sections, {}, [&](const QByteArray& document) {
            bytes = document.size();
            return Result<void>();
        });
        if (!written) {
            std::cerr << written.error().description.toStdString() << '\n';
            return 1;
        }
        seconds.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::ranges::sort(seconds);
    std::cout << "PDF of 20 reports   " << profiles->size() << " profiles  " << bytes / 1000
              << " kB  median " << Numbers::fixed(seconds[runs / 2], 2).toStdString()
              << " s (under 1.5)\n";
    return 0;
}
