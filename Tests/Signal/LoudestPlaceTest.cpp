#include "Base/Numbers.h"
#include "Signal/SignalLogParser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace vantroque::SignalAnalyzer {

namespace {

using namespace Qt::StringLiterals;

const std::string filter = "[Parsed_ebur128_19 @ 0x1] ";

std::string level(double value)
{
    return Numbers::fixed(value, 1).toStdString();
}

std::string line(const std::string& time, const std::string& momentary,
                 const std::string& shortTerm, const std::string& peaks = "-20.0 -inf")
{
    return filter + "t: " + time + "  TARGET:-23 LUFS    M: " + momentary + " S: " + shortTerm
           + "     I: -23.0 LUFS       LRA:   0.0 LU  FTPK:  -inf  -inf dBFS  TPK: " + peaks
           + " dBFS\n";
}

SignalInfo parsed(const std::string& text)
{
    return parse(SignalLog("Stream mapping:\n" + text), 60);
}

using Loudness = std::function<double(double)>;

/// So many seconds of lines as ffmpeg prints them, of sound that is so loud at each second.
std::string lines(double seconds, const Loudness& loudness)
{
    const auto over = [&](double window, double end) {
        if (end < window - 0.01)
            return -120.7;
        double power = 0;
        int count = 0;
        for (double at = end - window + 0.05; at < end; at += 0.1, ++count)
            power += std::pow(10, loudness(at) / 10);
        return 10 * std::log10(power / count);
    };
    double peak = -99;
    std::string text;
    for (double time = 0.1; time < seconds + 0.01; time += 0.1) {
        peak = std::max(peak, loudness(time - 0.05) + 10);
        text += line(Numbers::fixed(time, 4).toStdString(), level(over(0.4, time)),
                     level(over(3, time)), level(peak));
    }
    return text;
}

Loudness burst(double from, double to, double loud)
{
    return [=](double at) { return at > from && at < to ? loud : -30.0; };
}

} // namespace

TEST(LoudestPlace, IsWhereTheLoudestSoundBegins)
{
    const SignalInfo info = parsed(lines(30, burst(12, 13, -10)));
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 12, 0.01);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 12, 0.01);
}

TEST(LoudestPlace, AShortNoiseIsNotAsLoudAsALongerOneButPeaks)
{
    const auto loudness = [](double at) {
        return at > 4 && at < 4.2 ? -9.0 : at > 20 && at < 24 ? -15.0 : -30.0;
    };
    const SignalInfo info = parsed(lines(30, loudness));
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 20, 0.01);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 4, 0.01);
}

TEST(LoudestPlace, OfAClipTooShortForItsLoudnessOverThreeSecondsIsItsLoudestMoment)
{
    EXPECT_NEAR(parsed(lines(2, burst(1, 1.6, -10))).loudestSeconds.value_or(-1), 1, 0.01);
    EXPECT_EQ(parsed(lines(0.3, burst(0, 1, -10))).loudestSeconds, std::nullopt);
}

TEST(LoudestPlace, SilenceHasNone)
{
    const SignalInfo info =
        parsed(line("3.1", "-120.7", "-164.1", "-inf  -inf") + line("3.2", "-70.0", "-70.0", ""));
    EXPECT_EQ(info.loudestSeconds, std::nullopt);
    EXPECT_EQ(info.truePeakSeconds, std::nullopt);
    EXPECT_EQ(parsed(filter + "Summary:\n    I: -23.0 LUFS\n").loudestSeconds, std::nullopt);
}

TEST(LoudestPlace, KnowsHowLoudTheLoudestWindowsAreAndWhereTheyBegin)
{
    const std::string frame = "[Parsed_metadata_9 @ 0x1] frame:0 pts:480 pts_time:0.48\n";
    const auto loudness = [](double at) {
        return at > 4 && at < 4.4 ? -9.0 : at > 20 && at < 24 ? -15.0 : -30.0;
    };
    const SignalInfo info = parsed(frame + lines(30, loudness));
    ASSERT_TRUE(info.maxShortTerm && info.maxMomentary);
    EXPECT_EQ(info.maxShortTerm->lufs, -15);
    EXPECT_NEAR(info.maxShortTerm->start, 19.52, 0.01);
    EXPECT_EQ(info.maxMomentary->lufs, -9);
    EXPECT_NEAR(info.maxMomentary->start, 3.52, 0.01);
}

TEST(LoudestPlace, SilenceHasLoudestWindowsOfNothingAndWhatWasNotMeasuredHasNone)
{
    const SignalInfo silent = parsed(line("3.1", "-120.7", "-164.1", "-inf  -inf"));
    EXPECT_EQ(silent.maxShortTerm, (LoudestWindow{-99, 0}));
    EXPECT_EQ(silent.maxMomentary, (LoudestWindow{-99, 0}));
    const SignalInfo unmeasured = parsed(filter + "Summary:\n    I: -23.0 LUFS\n");
    EXPECT_EQ(unmeasured.maxShortTerm, std::nullopt);
    EXPECT_EQ(unmeasured.maxMomentary, std::nullopt);
}

TEST(LoudestPlace, CountsFromTheFirstFrame)
{
    const std::string frame = "[Parsed_metadata_9 @ 0x1] frame:0 pts:480 pts_time:0.48\n";
    const SignalInfo info = parsed(frame + lines(10, burst(5, 6, -10)));
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 4.52, 0.01);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 4.52, 0.01);
}

TEST(LoudestPlace, IsOfTheGradedSoundAlone)
{
    std::string other = lines(10, burst(5, 6, -10));
    for (std::size_t at = other.find(filter); at != std::string::npos; at = other.find(filter))
        other.replace(at, filter.size(), "[ebur128@track3 @ 0x2] ");
    EXPECT_EQ(parsed(other).loudestSeconds, std::nullopt);
    EXPECT_NEAR(parsed(lines(10, burst(2, 3, -20)) + other).loudestSeconds.value_or(-1), 2, 0.01);
}

TEST(LoudestPlace, OfAStreamThatChangesMidwayIsInTheLastStretchAsItsLoudness)
{
    const std::string summary = filter + "Summary:\n    I: -15.0 LUFS\n";
    const SignalInfo info =
        parsed(lines(10, burst(5, 6, -10)) + summary + lines(10, burst(2, 3, -20)) + summary);
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 2, 0.01);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 2, 0.01);
    EXPECT_EQ(info.integratedLKFS, -15);
}

TEST(LoudestPlace, LinesThatMakeNoSenseAreSkipped)
{
    const std::string sane = line("7.4", "-12.0", "-120.7", "-3.0");
    const std::string odd = line("nan", "-1.0", "-1.0", "0.0")
                            + line("NOPTS", "-1.0", "-1.0", "0.0")
                            + line("inf", "-1.0", "-1.0", "0.0") + line("8", "nan", "inf", "nan")
                            + line("9", "", "x", "inf -nan 1e999") + filter + "t:\n" + filter
                            + "t: 9 M: S: TPK:\n" + filter + "t: 9 TPK:    \n";
    const SignalInfo info = parsed(odd + sane + odd);
    EXPECT_NEAR(info.loudestSeconds.value_or(-1), 7, 1e-9);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 7.3, 1e-9);
}

TEST(LoudestPlace, LinesOutOfOrderDoNotBreakIt)
{
    std::string backwards;
    for (int i = 1'000; i > 0; --i)
        backwards += line(std::to_string(i), level(-20 - i * 0.01), "-25.0");
    const SignalInfo info = parsed(backwards + line("1e300", "-21.0", "-26.0"));
    EXPECT_TRUE(info.loudestSeconds);
    EXPECT_NEAR(info.truePeakSeconds.value_or(-1), 999.9, 1e-9);
}

} // namespace vantroque::SignalAnalyzer
