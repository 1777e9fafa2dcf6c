#include "Probe/Prober.h"
#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Prober::bitDepth;
using Prober::chroma;
using Prober::containerKind;
using Prober::parseRate;
using Prober::pictureBitDepth;
using Prober::proresProfile;

const QString isoFamily = u"mov,mp4,m4a,3gp,3g2,mj2"_s;

TEST(ContainerKind, TheExtensionDecidesInsideTheFamilyOfMp4)
{
    EXPECT_EQ(containerKind(isoFamily, u"mov"_s), u"mov"_s);
    for (const auto& ext : {u"mp4"_s, u"m4v"_s, u"dat"_s, u""_s})
        EXPECT_EQ(containerKind(isoFamily, ext), u"mp4"_s) << ext.toStdString();
    EXPECT_EQ(containerKind(u"mov"_s, u"webm"_s), u"mp4"_s);
}

TEST(ContainerKind, TheExtensionDecidesInsideTheFamilyOfMatroska)
{
    EXPECT_EQ(containerKind(u"matroska,webm"_s, u"webm"_s), u"webm"_s);
    EXPECT_EQ(containerKind(u"matroska,webm"_s, u"mkv"_s), u"mkv"_s);
    EXPECT_EQ(containerKind(u"matroska,webm"_s, u"mov"_s), u"mkv"_s);
}

TEST(ContainerKind, OtherFamiliesGoByTheirName)
{
    EXPECT_EQ(containerKind(u"mxf"_s, u"mov"_s), u"mxf"_s);
    EXPECT_EQ(containerKind(u"mpeg"_s, u"vob"_s), u"mpg"_s);
    EXPECT_EQ(containerKind(u"mpegts"_s, u"ts"_s), u"mpg"_s);
    EXPECT_EQ(containerKind(u"avi"_s, u"avi"_s), u"avi"_s);
    EXPECT_EQ(containerKind(u"unknown"_s, u"mp4"_s), u"unknown"_s);
}

TEST(ParseRate, AFractionIsDivided)
{
    EXPECT_DOUBLE_EQ(*parseRate(u"30000/1001"_s), 30000.0 / 1001.0);
    EXPECT_EQ(parseRate(u"25/1"_s), 25.0);
    EXPECT_EQ(parseRate(u"0/1"_s), 0.0);
    EXPECT_EQ(parseRate(u"12.5/0.5"_s), 25.0);
}

TEST(ParseRate, APlainNumberStandsForItself)
{
    EXPECT_EQ(parseRate(u"23.976"_s), 23.976);
    EXPECT_EQ(parseRate(u"25"_s), 25.0);
}

TEST(ParseRate, WhatIsNoRateIsAbsent)
{
    EXPECT_EQ(parseRate(std::nullopt), std::nullopt);
    for (const auto& text : {u""_s, u"0/0"_s, u"25/0"_s, u"a/b"_s, u"25/1/1"_s, u"fast"_s, u"/"_s,
                             u"25/"_s, u"nan"_s, u"inf/1"_s})
        EXPECT_EQ(parseRate(text), std::nullopt) << text.toStdString();
}

TEST(Chroma, TheSamplingIsPartOfThePixelFormat)
{
    EXPECT_EQ(chroma(u"yuv420p"_s), u"420"_s);
    EXPECT_EQ(chroma(u"yuvj422p"_s), u"422"_s);
    EXPECT_EQ(chroma(u"yuva444p12le"_s), u"444"_s);
    EXPECT_EQ(chroma(u"rgb24"_s), std::nullopt);
    EXPECT_EQ(chroma(u"nv12"_s), std::nullopt);
    EXPECT_EQ(chroma(std::nullopt), std::nullopt);
}

TEST(AudioBitDepth, ThePcmNameTellsIt)
{
    for (const auto& [name, depth] : {std::pair(u"pcm_s16le"_s, 16),
                                      {u"pcm_s16be_planar"_s, 16},
                                      {u"pcm_u16le"_s, 16},
                                      {u"pcm_s24le"_s, 24},
                                      {u"pcm_s32be"_s, 32},
                                      {u"pcm_f32le"_s, 32}})
        EXPECT_EQ(bitDepth(name, FFString{u"8"_s}), depth) << name.toStdString();
}

TEST(AudioBitDepth, OtherCodecsGoByTheBitsOfTheRawSample)
{
    EXPECT_EQ(bitDepth(u"flac"_s, FFString{u"24"_s}), 24);
    EXPECT_EQ(bitDepth(u"pcm_u24le"_s, FFString{u"24"_s}), 24);
    EXPECT_EQ(bitDepth(u"aac"_s, std::nullopt), std::nullopt);
    EXPECT_EQ(bitDepth(u"aac"_s, FFString{u"N/A"_s}), std::nullopt);
}

TEST(PictureBitDepth, TheDigitsBehindTheFormatTellIt)
{
    for (const auto& [name, depth] : {std::pair(u"yuv420p10le"_s, 10),
                                      {u"yuv422p12be"_s, 12},
                                      {u"gbrp10le"_s, 10},
                                      {u"yuva444p16le"_s, 16},
                                      {u"yuv420p9"_s, 9}})
        EXPECT_EQ(pictureBitDepth(name), depth) << name.toStdString();
}

TEST(PictureBitDepth, WithoutDigitsTheFamilyTellsIt)
{
    for (const auto& [name, depth] : {std::pair(u"yuv420p"_s, 8),
                                      {u"yuvj420p"_s, 8},
                                      {u"rgb24"_s, 8},
                                      {u"gray"_s, 8},
                                      {u"gray16le"_s, 16},
                                      {u"rgb48be"_s, 8},
                                      {u"gbrp"_s, 8}})
        EXPECT_EQ(pictureBitDepth(name), depth) << name.toStdString();
}

TEST(PictureBitDepth, OtherFormatsTellNothing)
{
    for (const auto& name : {u"nv12"_s, u"unknown"_s, u"pal8"_s, u"bgra"_s, u""_s})
        EXPECT_EQ(pictureBitDepth(name), std::nullopt) << name.toStdString();
    EXPECT_EQ(pictureBitDepth(std::nullopt), std::nullopt);
}

TEST(ProResProfile, TheFourCharacterCodeNamesIt)
{
    for (const auto& [tag, name] : {std::pair(u"apco"_s, u"Proxy"_s),
                                    {u"apcs"_s, u"LT"_s},
                                    {u"apcn"_s, u"Standard"_s},
                                    {u"apch"_s, u"HQ"_s},
                                    {u"ap4h"_s, u"4444"_s},
                                    {u"ap4x"_s, u"4444 XQ"_s}})
        EXPECT_EQ(proresProfile(tag, u"other"_s), name);
}

TEST(ProResProfile, AnyOtherCodeKeepsTheCodecsProfile)
{
    EXPECT_EQ(proresProfile(u"avc1"_s, u"High"_s), u"High"_s);
    EXPECT_EQ(proresProfile(u"APCH"_s, std::nullopt), std::nullopt);
    EXPECT_EQ(proresProfile(std::nullopt, u"HQ"_s), u"HQ"_s);
}

} // namespace
} // namespace vantroque
