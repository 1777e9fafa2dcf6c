#include "Sound/MadeSound.h"
#include "Sound/SoundScanner.h"

#include <gmock/gmock.h>

#include <limits>

namespace vantroque {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

const std::vector<double> attention{853, 960};

std::vector<AlertTone> alertTones(const MadeSound& sound, int rate = madeRate)
{
    SoundScanner scanner(1, rate);
    scanner.add(sound);
    return scanner.finish(0).alertTones;
}

/// Six seconds of music with the attention signal under it.
MadeSound warning(double dbfs, double seconds, unsigned seed = 1)
{
    MadeSound sound = music(6, seed);
    addTones(sound, attention, dbfs, 2, seconds);
    return sound;
}

} // namespace

TEST(AlertTones, TheAttentionSignalIsFoundWhereItIs)
{
    MadeSound sound = silence(6);
    addTones(sound, attention, -20, 2, 2);
    const auto found = alertTones(sound);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].kind, AlertTone::Kind::attention);
    EXPECT_EQ(found[0].channel, 0);
    EXPECT_NEAR(found[0].start, 2, 0.3);
    EXPECT_NEAR(found[0].end, 4, 0.3);
}

TEST(AlertTones, AThirdOfASecondIsEnough)
{
    for (const double seconds : {0.4, 0.5, 1.0}) {
        MadeSound sound = silence(3);
        addTones(sound, attention, -20, 1.017, seconds);
        EXPECT_THAT(alertTones(sound), SizeIs(1)) << seconds;
    }
}

TEST(AlertTones, UnderMusicTheyAreFoundDownToMinusForty)
{
    for (const double level : {-40.0, -20.0, -6.0})
        for (unsigned seed = 1; seed <= 2; ++seed)
            EXPECT_THAT(alertTones(warning(level, 3, seed)), SizeIs(1)) << level << ' ' << seed;
}

TEST(AlertTones, HalfAPercentOffTheyStillAreWhatTheyAre)
{
    for (const double off : {0.995, 1.005}) {
        MadeSound sound = silence(5);
        addTones(sound, {853 * off, 960 * off}, -30, 1, 3);
        EXPECT_THAT(alertTones(sound), SizeIs(1)) << off;
    }
}

TEST(AlertTones, OneOfTheTonesAndOtherPairsAreNone)
{
    const std::vector<std::vector<double>> others{
        {853}, {960}, {770, 1'209}, {880, 987.77}, {830.61, 932.33}, {853, 1'000}, {800, 960}};
    for (const auto& pair : others) {
        MadeSound sound = silence(4);
        addTones(sound, pair, -12, 1, 2);
        EXPECT_THAT(alertTones(sound), IsEmpty()) << pair[0];
    }
}

TEST(AlertTones, MusicAndNoiseHaveNone)
{
    for (unsigned seed = 1; seed <= 4; ++seed)
        EXPECT_THAT(alertTones(music(6, seed, 415 + 6.0 * seed)), IsEmpty()) << seed;
}

TEST(AlertTones, AHeaderIsFoundByItsPreamble)
{
    MadeSound sound = music(4, 2);
    const double seconds = addHeader(sound, "ZCZC-EAS-RWT-012057+0030-2780415-WTSP/TV-", -12, 1);
    const auto found = alertTones(sound);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].kind, AlertTone::Kind::header);
    EXPECT_NEAR(found[0].start, 1, 0.05);
    EXPECT_LT(found[0].end, 1 + seconds);
}

TEST(AlertTones, DataThatIsNoHeaderIsNone)
{
    MadeSound sound = silence(4);
    addTones(sound, {2'083.3, 1'562.5}, -12, 1, 1);
    addTones(sound, {2'083.3}, -12, 2.5, 0.5);
    EXPECT_THAT(alertTones(sound), IsEmpty());
}

TEST(AlertTones, AreFoundInTheChannelThatHasThem)
{
    const MadeSound plain = music(4, 3);
    MadeSound warned = plain;
    addTones(warned, attention, -20, 1, 2);
    MadeSound both;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        both.push_back(plain[i]);
        both.push_back(warned[i]);
    }
    SoundScanner scanner(2, madeRate);
    scanner.add(both);
    EXPECT_EQ(scanner.samples(), std::ssize(plain));
    const auto found = scanner.finish(0.5).alertTones;
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].channel, 1);
    EXPECT_NEAR(found[0].start, 1.5, 0.3);
}

TEST(AlertTones, OtherRatesHaveTheSameTones)
{
    for (const int rate : {8'000, 44'100, 96'000}) {
        MadeSound sound(static_cast<std::size_t>(rate) * 4);
        for (std::size_t i = 0; i < sound.size(); ++i)
            for (const double hertz : attention)
                sound[i] += static_cast<float>(
                    0.1 * std::sin(2 * M_PI * hertz * static_cast<double>(i) / rate));
        EXPECT_THAT(alertTones(sound, rate), SizeIs(1)) << rate;
    }
    EXPECT_THAT(alertTones(silence(1), 4'000), IsEmpty());
}

TEST(AlertTones, WhatIsNoNumberDoesNotHideThem)
{
    MadeSound sound = warning(-20, 3);
    sound[100] = std::numeric_limits<float>::quiet_NaN();
    sound[200] = std::numeric_limits<float>::infinity();
    EXPECT_THAT(alertTones(sound), SizeIs(1));
}

} // namespace vantroque
