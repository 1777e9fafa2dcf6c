#include "Probe/Probed.h"
#include "Support/FakeTools.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

/// A frame list whose first frame has this side data.
std::optional<HDRMetadata> of(const QByteArray& sideData)
{
    return Prober::hdrMetadata(R"({"frames": [{"side_data_list": [)" + sideData + "]}]}");
}

QByteArray mastering(const QByteArray& values)
{
    return R"({"side_data_type": "Mastering display metadata", )" + values + '}';
}

QByteArray primaries(const QByteArray& redX, const QByteArray& greenX)
{
    return mastering("\"red_x\": " + redX + ", \"green_x\": " + greenX);
}

std::optional<QString> display(const QByteArray& redX, const QByteArray& greenX)
{
    return of(primaries(redX, greenX)).value().masteringDisplay;
}

std::optional<double> peak(const QByteArray& value)
{
    return of(mastering("\"max_luminance\": " + value)).value().masteringPeakNits;
}

TEST(HDRMetadata, ContentLightIsTakenAsItStands)
{
    const auto hdr = of(R"({"side_data_type": "Content light level metadata",
                            "max_content": 1000, "max_average": 400})");
    EXPECT_EQ(hdr, (HDRMetadata{1000, 400, {}, {}}));
}

TEST(HDRMetadata, ContentLightMustBeWhole)
{
    const auto hdr = of(R"({"side_data_type": "Content light level metadata",
                            "max_content": "1000", "max_average": 400.5})");
    EXPECT_EQ(hdr, HDRMetadata());
}

TEST(HDRMetadata, ThePrimariesNameTheDisplay)
{
    EXPECT_EQ(display(R"("34000/50000")", R"("13250/50000")"), u"P3-D65"_s);
    EXPECT_EQ(display(R"("35400/50000")", R"("8500/50000")"), u"BT.2020"_s);
    EXPECT_EQ(display(R"("32000/50000")", R"("15000/50000")"), u"custom primaries"_s);
}

TEST(HDRMetadata, ThePrimariesMayBeOffByLessThanThreeHundredths)
{
    EXPECT_EQ(display("0.68", "0.2949"), u"P3-D65"_s);
    EXPECT_EQ(display("0.68", "0.295"), u"custom primaries"_s);
    EXPECT_EQ(display("0.7099", "0.265"), u"P3-D65"_s);
    EXPECT_EQ(display("0.71", "0.265"), u"custom primaries"_s);
    EXPECT_EQ(display("0.1", "0.1999"), u"BT.2020"_s);
    EXPECT_EQ(display("0.1", "0.14"), u"custom primaries"_s);
}

TEST(HDRMetadata, ANumberMayBeAFractionATextOrANumber)
{
    EXPECT_EQ(peak(R"("10000000/10000")"), 1000);
    EXPECT_EQ(peak(R"("1000")"), 1000);
    EXPECT_EQ(peak("1000.5"), 1000.5);
    EXPECT_EQ(peak(R"("400/0")"), 400);
    EXPECT_EQ(peak(R"("7/8/9")"), 7);
    EXPECT_EQ(peak(R"("x/8")"), 8);
}

TEST(HDRMetadata, WhatIsNoNumberIsAbsent)
{
    for (const char* value : {R"("")", R"("x/y")", "true", "null", "[1]", "{}"})
        EXPECT_EQ(peak(value), std::nullopt) << value;
}

TEST(HDRMetadata, OnePrimaryAloneNamesNoDisplay)
{
    EXPECT_EQ(of(mastering("\"red_x\": 0.68")).value().masteringDisplay, std::nullopt);
    EXPECT_EQ(of(mastering("\"green_x\": 0.17")).value().masteringDisplay, std::nullopt);
}

TEST(HDRMetadata, ALaterEntryOverwritesAnEarlierOne)
{
    const auto hdr = of(mastering(R"("red_x": 0.68, "green_x": 0.265, "max_luminance": 1000)") + ','
                        + mastering("\"green_x\": 0.17"));
    EXPECT_EQ(hdr->masteringDisplay, u"P3-D65"_s);
    EXPECT_EQ(hdr->masteringPeakNits, std::nullopt);
}

TEST(HDRMetadata, OtherSideDataLeavesTheRecordEmpty)
{
    EXPECT_EQ(of(R"({"side_data_type": "H.26[45] User Data Unregistered SEI message"}, {})"),
              HDRMetadata());
    EXPECT_EQ(of(""), HDRMetadata());
    EXPECT_EQ(of(R"({"side_data_type": 5})"), HDRMetadata());
}

TEST(HDRMetadata, OnlyTheFirstFrameIsAsked)
{
    EXPECT_EQ(Prober::hdrMetadata(R"({"frames": [{"side_data_list": []}, {"side_data_list": [
                  {"side_data_type": "Content light level metadata", "max_content": 1}]}]})"),
              HDRMetadata());
}

TEST(HDRMetadata, AnythingOfAnotherTypeGivesNothing)
{
    for (const char* json : {"", "garbage", "[]", "{}", R"({"frames": {}})", R"({"frames": []})",
                             R"({"frames": [5]})", R"({"frames": [{"side_data_list": []}, 5]})",
                             R"({"frames": [{}]})", R"({"frames": [{"side_data_list": {}}]})",
                             R"({"frames": [{"side_data_list": [{}, 1]}]})"})
        EXPECT_EQ(Prober::hdrMetadata(json), std::nullopt) << json;
}

TEST(HDRMetadata, AFailingToolsOutputStillCounts)
{
    const FakeTools tools;
    tools.put("ffprobe", R"(echo '{"frames": [{"side_data_list": []}]}'; exit 1)");
    EXPECT_EQ(Prober::hdrMetadata(tools.ffprobe(), FileUrl::fromPath("/a.mp4")), HDRMetadata());
}

TEST(HDRMetadata, RealFilesTellTheirMasteringDisplay)
{
    const auto p3 = probedVideo(Clips::hdr10P3());
    EXPECT_TRUE(p3.isHDR());
    EXPECT_EQ(p3.hdr, (HDRMetadata{1000, 400, u"P3-D65"_s, 1000}));
    EXPECT_EQ(probedVideo(Clips::hdr10Bt2020()).hdr, (HDRMetadata{1000, 400, u"BT.2020"_s, 4000}));
}

TEST(HDRMetadata, HybridLogGammaHasNone)
{
    const auto video = probedVideo(Clips::hlg());
    EXPECT_EQ(video.colorTransfer, u"arib-std-b67"_s);
    EXPECT_EQ(video.hdr.value_or(HDRMetadata()), HDRMetadata());
}

TEST(HDRMetadata, AStandardPictureIsNotAsked)
{
    EXPECT_EQ(probedVideo(Clips::tenBit()).hdr, std::nullopt);
}

TEST(HDRMetadata, ACoverAheadOfThePictureIsNotAsked)
{
    const auto video = probedVideo(Clips::coverAhead(Clips::hdr10P3()));
    EXPECT_EQ(video.codec, u"hevc"_s);
    EXPECT_EQ(video.hdr, (HDRMetadata{1000, 400, u"P3-D65"_s, 1000}));
}

} // namespace
} // namespace vantroque
