#include "Base/Numbers.h"
#include "Signal/SignalLogParser.h"

#include <algorithm>
#include <ctime>
#include <gtest/gtest.h>

// Logs that nobody would print, as large as those of a film: reading stays linear.

namespace vantroque::SignalAnalyzer {

namespace {

constexpr std::size_t megabyte = 1'000'000;

std::string repeated(const std::string& piece, std::size_t bytes)
{
    std::string text = "Stream mapping:\n";
    text.reserve(bytes + text.size() + piece.size());
    while (text.size() < bytes)
        text += piece;
    return text;
}

/// Processor seconds for reading and measuring.
double cost(const std::string& text)
{
    MediaInfo media;
    media.durationSeconds = 10;
    media.video = VideoStreamInfo{};
    media.audio = AudioStreamInfo{};
    media.audio->channels = 2;
    const std::clock_t start = std::clock();
    const SignalLog log(text);
    SignalInfo info = parse(log, media.durationSeconds);
    extend(info, log, media, {});
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Hostile {
    std::string piece;
    std::size_t megabytes = 10;
};

void PrintTo(const Hostile& log, std::ostream* out)
{
    *out << testing::PrintToString(log.piece);
}

class HostileLog : public testing::TestWithParam<Hostile> {};

} // namespace

TEST_P(HostileLog, IsReadInLinearTime)
{
    const auto& [piece, megabytes] = GetParam();
    const std::string part = repeated(piece, megabytes * megabyte / 10);
    const double small = std::min(cost(part), cost(part));
    const double large = cost(repeated(piece, megabytes * megabyte));
    EXPECT_LT(large, std::max(small, 0.01) * 40) << "ten times the text";
    EXPECT_LT(large, 60);
}

INSTANTIATE_TEST_SUITE_P(
    Of, HostileLog,
    testing::Values(Hostile{"black_start:", 50}, Hostile{"7", 50}, Hostile{"Channel: ", 50},
                    Hostile{"Channel: \n"}, Hostile{"black_start:1 black_end:"},
                    Hostile{"silence_start: "}, Hostile{"silence_start:1\n"},
                    Hostile{"silence_end:"}, Hostile{"lavfi."}, Hostile{"lavfi.astats."},
                    Hostile{"lavfi.signalstats.YDIF="}, Hostile{"lavfi.signalstats.YDIF=1"},
                    Hostile{"crop="}, Hostile{"crop=1:"}, Hostile{"crop=1:2:3:4\n"},
                    Hostile{"Summary:\n"}, Hostile{"Summary: I: "}, Hostile{"  I: -1\n"},
                    Hostile{"Output #"}, Hostile{"Output #0\n"},
                    Hostile{"Multi frame detection: TFF: "}, Hostile{"Stream mapping:\n"},
                    Hostile{"\n"}, Hostile{" "}, Hostile{"RMS level dB:"}, Hostile{"\xff"}));

TEST(LargeLog, ManyChannelsTakeNoMemoryOfTheirOwn)
{
    std::string text = "Stream mapping:\n";
    for (int i = 0; i < 100'000; ++i)
        text +=
            "Channel: 1\nlavfi.astats." + Numbers::fixed(i, 0).toStdString() + ".RMS_level=-1\n";
    const SignalLog log(text);
    EXPECT_LE(log.channelBlocks().size(), 1024U);
    EXPECT_LE(log.levelWindows().size(), 1024U);
}

} // namespace vantroque::SignalAnalyzer
