#include "Probe/Probed.h"
#include "Support/FakeTools.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Clips::Declared;
using Prober::field;

const QString trace =
    u"[trace_headers @ 0x55] 120         nal_hrd_parameters_present_flag                 1 = 1\n"
    u"[trace_headers @ 0x55] 122         bit_rate_scale                               0010 = 2\n"
    u"[trace_headers @ 0x55] 130         bit_rate_value_minus1[0]        000000011110100000 = "
    u"1952\n"
    u"[trace_headers @ 0x55] 140         cbr_flag[0]                                     0 = 0\n"
    u"[trace_headers @ 0x55] 140         cbr_flag[0]                                     1 = 1\n"_s;

TEST(TraceField, TheFirstLineOfThatNameCounts)
{
    EXPECT_EQ(field(u"nal_hrd_parameters_present_flag"_s, trace), 1);
    EXPECT_EQ(field(uR"(bit_rate_value_minus1\[0\])"_s, trace), 1952);
    EXPECT_EQ(field(uR"(cbr_flag\[0\])"_s, trace), 0);
}

TEST(TraceField, WhatIsNotThereIsAbsent)
{
    EXPECT_EQ(field(u"cpb_cnt_minus1"_s, trace), std::nullopt);
    EXPECT_EQ(field(uR"(cbr_flag\[1\])"_s, trace), std::nullopt);
    EXPECT_EQ(field(u"a"_s, {}), std::nullopt);
}

TEST(TraceField, OnlyALineWithBitsAndAValueCounts)
{
    EXPECT_EQ(field(u"a"_s, u"a = 5"_s), std::nullopt);
    EXPECT_EQ(field(u"a"_s, u"a 012 = 5"_s), std::nullopt);
    EXPECT_EQ(field(u"a"_s, u"a 01 = x"_s), std::nullopt);
    EXPECT_EQ(field(u"a"_s, u"a 01 = 5"_s), 5);
}

TEST(TraceField, ANumberThatDoesNotFitIsAbsent)
{
    EXPECT_EQ(field(u"a"_s, u"a 1 = 99999999999999999999"_s), std::nullopt);
}

class HRD : public testing::Test {
protected:
    /// What a tool with this trace leads to.
    std::optional<HRDInfo> of(const QByteArray& lines, const QByteArray& end = "exit 0") const
    {
        m_tools.put("ffmpeg", "cat >&2 <<'END'\n" + lines + "\nEND\n" + end);
        return Prober::firstPacket(FileUrl::fromPath("/a.mp4")).hrd;
    }
    const FakeTools m_tools;
};

TEST_F(HRD, WithoutATraceLineNothingIsKnown)
{
    EXPECT_EQ(of("Input #0, mov"), std::nullopt);
}

TEST_F(HRD, AFlagOfZeroIsKnownToBeAbsent)
{
    EXPECT_EQ(of("nal_hrd_parameters_present_flag 0 = 0\ncbr_flag[0] 1 = 1"), HRDInfo{});
}

TEST_F(HRD, TheDeclaredRateIsScaled)
{
    const auto hrd = of("nal_hrd_parameters_present_flag 1 = 1\ncbr_flag[0] 0 = 0\n"
                        "bit_rate_scale 0010 = 2\nbit_rate_value_minus1[0] 0101 = 1952");
    EXPECT_EQ(hrd, (HRDInfo{true, false, 256.0 * 1953 / 1000}));
}

TEST_F(HRD, WhatIsNotDeclaredStaysAbsent)
{
    EXPECT_EQ(of("nal_hrd_parameters_present_flag 1 = 1"), (HRDInfo{true, {}, {}}));
    EXPECT_EQ(of("nal_hrd_parameters_present_flag 1 = 1\nbit_rate_scale 0010 = 2"),
              (HRDInfo{true, {}, {}}));
}

TEST_F(HRD, AFailingToolsTraceStillCounts)
{
    EXPECT_EQ(of("nal_hrd_parameters_present_flag 1 = 1", "exit 1"), (HRDInfo{true, {}, {}}));
}

TEST_F(HRD, ALongTraceAheadOfTheHeadersDoesNotHideThem)
{
    m_tools.put("ffmpeg", "yes '[mov @ 0x1] AVIndex stream 0, sample 1' | head -n 200000 >&2\n"
                          "echo 'nal_hrd_parameters_present_flag 1 = 1' >&2");
    EXPECT_EQ(Prober::firstPacket(FileUrl::fromPath("/a.mp4")).hrd, (HRDInfo{true, {}, {}}));
}

TEST(DeclaredRate, H264DeclaresConstantVariableOrNothing)
{
    const auto constant = probedVideo(Clips::hrd(Declared::constant)).hrd;
    ASSERT_TRUE(constant);
    EXPECT_TRUE(constant->present);
    EXPECT_EQ(constant->cbrFlag, true);
    EXPECT_NEAR(constant->declaredBitrateKbps.value_or(0), 500, 1);

    const auto variable = probedVideo(Clips::hrd(Declared::variable)).hrd;
    ASSERT_TRUE(variable);
    EXPECT_EQ(variable->cbrFlag, false);
    EXPECT_NEAR(variable->declaredBitrateKbps.value_or(0), 500, 1);

    EXPECT_EQ(probedVideo(Clips::hrd(Declared::nothing)).hrd, HRDInfo{});
}

TEST(DeclaredRate, HevcDeclaresItInTheSameWords)
{
    const auto hrd = probedVideo(Clips::hevcWithHrd()).hrd;
    ASSERT_TRUE(hrd);
    EXPECT_TRUE(hrd->present);
    EXPECT_EQ(hrd->declaredBitrateKbps, 512);
    EXPECT_EQ(probedVideo(Clips::hlg()).hrd, std::nullopt);
}

TEST(DeclaredRate, OtherCodecsAreNotAsked)
{
    for (const auto& file : {Clips::mpeg2InMxf(), Clips::vp9InWebm(), Clips::withLatin1Title()})
        EXPECT_EQ(probedVideo(file).hrd, std::nullopt) << file;
}

TEST(DeclaredRate, ACoverAheadOfThePictureIsNotAsked)
{
    EXPECT_EQ(probedVideo(Clips::coverAhead(Clips::hrd(Declared::constant))).hrd->cbrFlag, true);
}

} // namespace
} // namespace vantroque
