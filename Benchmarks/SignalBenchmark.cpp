// SignalBenchmark MEDIA: how long the levels of the largest raw dump take, how fast and in how much
// memory the log of a two-hour film is read, what closing the tools in costs a start and a decode,
// and what looking for flashes costs the pass.

#include "Base/Numbers.h"
#include "Probe/Prober.h"
#include "Signal/LevelsAnalyzer.h"
#include "Signal/SignalAnalyzer.h"
#include "Signal/SignalLogParser.h"
#include "Tools/FFTool.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <sys/resource.h>
#include <vector>

using namespace vantroque;

namespace {

double secondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string printed(double value, int decimals)
{
    return Numbers::fixed(value, decimals).toStdString();
}

/// The largest memory of this process so far, in bytes.
double peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) {
            const std::size_t digit = line.find_first_of("0123456789");
            const std::string_view number =
                std::string_view(line).substr(digit, line.find(' ', digit) - digit);
            return Numbers::toDouble(number).value_or(0) * 1024;
        }
    return 0;
}

/// All values of a byte, in an order without pattern.
QByteArray noise(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::uint32_t state = 1;
    for (char& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return bytes;
}

/// What ffmpeg prints for one frame of picture, with its time.
void addFrame(std::string& log, int frame, double rate)
{
    const std::string number = printed(frame, 0);
    const std::string time = printed(frame / rate, 4);
    log += "[Parsed_cropdetect_0 @ 0x55f1c0de0a40] x1:0 x2:1919 y1:138 y2:941 w:1920 h:800 x:0 "
           "y:140 pts:"
           + number + " t:" + time + " crop=1920:800:0:140\n";
    for (const char* value : {"YMIN=16", "YMAX=231", "YDIF=1.28317", "YBITDEPTH=8"})
        log += "[Parsed_metadata_11 @ 0x55f1c0de4e80] frame:" + number + "    pts:" + number
               + "      pts_time:" + time
               + "\n[Parsed_metadata_11 @ 0x55f1c0de4e80] "
                 "lavfi.signalstats."
               + value + '\n';
}

/// And for one window of stereo sound.
void addWindow(std::string& log, int window, double rate)
{
    const std::string head = "[Parsed_ametadata_17 @ 0x55f1c0ded200] ";
    const std::string frame = "frame:" + printed(window, 0) + "    pts:" + printed(window * 4800, 0)
                              + "  pts_time:" + printed(window / rate, 4) + '\n';
    log += head + frame;
    for (const char* value : {"1.Peak_level=-21.072762", "1.RMS_level=-24.082399",
                              "2.Peak_level=-21.072762", "2.RMS_level=-24.082399"})
        log += head + "lavfi.astats." + value + '\n';
    log += head + frame + head + "lavfi.aphasemeter.phase=0.873612\n";
}

std::string filmLog(double seconds)
{
    constexpr double frameRate = 25;
    constexpr double windowRate = 10;
    std::string log;
    log.reserve(200'000'000); // so that growing it leaves no mark on the peak
    log += "Stream mapping:\n  Stream #0:0 (prores) -> cropdetect:default\n";
    for (int frame = 0; frame < seconds * frameRate; ++frame)
        addFrame(log, frame, frameRate);
    for (int window = 0; window < seconds * windowRate; ++window)
        addWindow(log, window, windowRate);
    log += "[Parsed_ebur128_20 @ 0x55f1c0df0a00] Summary:\n\n  Integrated loudness:\n"
           "    I:         -23.0 LUFS\n";
    return log;
}

void benchmarkLevels()
{
    using SignalAnalyzer::levelsHeight;
    using SignalAnalyzer::levelsWidth;
    constexpr int frameCount = 1500;
    const auto frames =
        RawFrames::make(noise(qsizetype{levelsWidth} * levelsHeight * 3 * frameCount), levelsWidth,
                        levelsHeight, 4);
    PictureLevels levels;
    const double seconds = secondsOf([&] {
        levels = LevelsAnalyzer::measure(*frames, ColorMatrix::bt709, false, false, 0, 255, 8);
    });
    std::cout << "levels, 1500 frames  " << printed(seconds, 3) << " s (about 0.3), "
              << levels.rgbRejectRuns.size() << " runs\n";
}

void benchmarkLog()
{
    constexpr double twoHours = 7200;
    const std::string log = filmLog(twoHours);
    const double before = peakMemory();
    const auto size = static_cast<double>(log.size());
    MediaInfo media;
    media.durationSeconds = twoHours;
    media.video = VideoStreamInfo{};
    media.audio = AudioStreamInfo{};
    media.audio->channels = 2;
    SignalInfo info;
    const double seconds = secondsOf([&] {
        const SignalLog lines(log);
        info = SignalAnalyzer::parse(lines, twoHours);
        SignalAnalyzer::extend(info, lines, media, {});
    });
    std::cout << "log of two hours     " << printed(size / 1e6, 0) << " MB, "
              << info.cadence->frameCountSeen << " frames\nread at              "
              << printed(size / 1e6 / seconds, 0) << " MB/s (150 or more)\nmemory, with the log "
              << printed((size + peakMemory() - before) / size, 2)
              << " times its size (2.5 at most)\n";
}

/// The processor time of all tools so far, in seconds.
double toolTime()
{
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Open and closed in turns, so that what else the machine does meets both.
void compareCaged(const char* what, int pairs, const std::string& tool,
                  const std::vector<std::string>& words, const std::string& media)
{
    const auto program = FFTool::find(tool);
    if (!program)
        return;
    std::vector<double> open;
    std::vector<double> closed;
    for (int i = 0; i < 2 * pairs; ++i) {
        const bool isCaged = i % 2 == 0;
        const double before = toolTime();
        const auto ran = FFTool::run(*program, words, {.reads = {media}, .isCaged = isCaged});
        if (!ran) {
            std::cout << what << ": " << ran.error().description().toStdString() << '\n';
            return;
        }
        (isCaged ? closed : open).push_back(toolTime() - before);
    }
    std::cout << what << ": " << printed(median(open) * 1000, 2) << " ms of processor time, caged "
              << printed(median(closed) * 1000, 2) << " ms ("
              << printed(100 * (median(closed) / median(open) - 1), 2) << " % more)\n";
}

void benchmarkCage(const std::string& media)
{
    compareCaged("a start of ffprobe", 60, "ffprobe", {"-v", "error", media}, media);
    compareCaged("a decode", 7, "ffmpeg",
                 {"-v", "error", "-nostdin", "-i", media, "-f", "null", "-"}, media);
}

double ownTime()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The processor time of some work, the tools' and our own.
double workOf(const std::function<void()>& work)
{
    const double before = toolTime() + ownTime();
    work();
    return toolTime() + ownTime() - before;
}

/// In turns, so that what else the machine does meets all of them.
void benchmarkFlashes(const std::string& path)
{
    const auto media = Prober::probe(FileUrl::fromPath(path));
    const auto ffmpeg = FFTool::find("ffmpeg");
    if (!media || !media->video || !ffmpeg)
        return;
    const std::vector<std::string> decode{"-v", "error", "-nostdin", "-i", path, "-f", "null", "-"};
    std::vector<double> bare;
    std::vector<double> without;
    std::vector<double> with;
    for (int i = 0; i < 5; ++i) {
        bare.push_back(workOf([&] { (void)FFTool::run(*ffmpeg, decode, {.reads = {path}}); }));
        without.push_back(
            workOf([&] { (void)SignalAnalyzer::analyze(media->url, *media, {}, nullptr); }));
        with.push_back(workOf([&] {
            (void)SignalAnalyzer::analyze(media->url, *media, {.flashes = {FlashLight::bt1886}},
                                          nullptr);
        }));
    }
    std::cout << "a bare decode        " << printed(median(bare), 2)
              << " s of processor time\nthe pass             " << printed(median(without), 2)
              << " s, with flashes " << printed(median(with), 2)
              << " s: " << printed((median(with) - median(without)) / median(bare), 3)
              << " of the decode (0.25 at most)\n";
}

} // namespace

int main(int argc, char** argv)
{
    benchmarkLog(); // first, while the peak is its own
    benchmarkLevels();
    if (argc > 1) {
        benchmarkCage(argv[1]);
        benchmarkFlashes(argv[1]);
    }
    return 0;
}
