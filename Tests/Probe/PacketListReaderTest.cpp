#include "Probe/PacketListReader.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct Reading {
    std::vector<Packet> packets;
    bool complete = false;
};

Reading readInChunks(const std::string& text, std::size_t chunk)
{
    Reading reading;
    PacketListReader reader([&](const Packet& packet) { reading.packets.push_back(packet); });
    for (std::size_t at = 0; at < text.size(); at += chunk)
        reader.feed(std::string_view(text).substr(at, chunk));
    reading.complete = reader.isComplete();
    return reading;
}

Reading read(const std::string& text)
{
    return readInChunks(text, std::max<std::size_t>(text.size(), 1));
}

MATCHER_P3(PacketOf, pts, dts, size, "")
{
    return arg.ptsTime == std::optional<double>(pts) && arg.dtsTime == std::optional<double>(dts)
           && arg.size == std::optional<double>(size);
}

const std::string usual = R"({
    "packets": [
        {
            "pts_time": "0.080000",
            "dts_time": "-0.040000",
            "size": "1000"
        },
        { "dts_time": "0.04", "size": 500 },
        {
            "pts_time": "0.12",
            "size": "700",
            "side_data_list": [
                {

                },
                { "size": "9", "text": "a } \" ] {" }
            ]
        }
    ]
}
)";

const auto isUsual = ElementsAre(PacketOf(0.08, -0.04, 1000), PacketOf(std::nullopt, 0.04, 500),
                                 PacketOf(0.12, std::nullopt, 700));

TEST(PacketListReader, PacketsComeOutOneByOne)
{
    const Reading reading = read(usual);
    EXPECT_TRUE(reading.complete);
    EXPECT_THAT(reading.packets, isUsual);
}

TEST(PacketListReader, ChunksMayEndAnywhere)
{
    for (std::size_t cut = 0; cut <= usual.size(); ++cut) {
        Reading reading;
        PacketListReader reader([&](const Packet& packet) { reading.packets.push_back(packet); });
        reader.feed(std::string_view(usual).substr(0, cut));
        reader.feed(std::string_view(usual).substr(cut));
        ASSERT_TRUE(reader.isComplete()) << cut;
        ASSERT_THAT(reading.packets, isUsual) << cut;
    }
    EXPECT_THAT(readInChunks(usual, 1).packets, isUsual);
}

TEST(PacketListReader, ATruncatedListIsNeverComplete)
{
    const std::string text = usual.substr(0, usual.find_last_of('}') + 1);
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_FALSE(read(text.substr(0, length)).complete) << length;
    EXPECT_TRUE(read(text).complete);
}

TEST(PacketListReader, AnAbsentOrEmptyListIsAWorkingOne)
{
    for (const char* text : {"{}", R"({"packets": []})", R"({"packets": null})",
                             R"({"other": {"packets": [5]}, "more": "packets"})"}) {
        const Reading reading = read(text);
        EXPECT_TRUE(reading.complete) << text;
        EXPECT_THAT(reading.packets, IsEmpty()) << text;
    }
}

TEST(PacketListReader, OtherListsBesideThePacketsArePassedOver)
{
    const Reading reading = read(R"({"streams": [{"size": "1"}], "packets": [{"size": "2"}, {}],
        "frames": [{"size": "3"}]})");
    EXPECT_TRUE(reading.complete);
    EXPECT_THAT(reading.packets, ElementsAre(PacketOf(std::nullopt, std::nullopt, 2),
                                             PacketOf(std::nullopt, std::nullopt, std::nullopt)));
}

TEST(PacketListReader, WhatIsNoNumberCountsAsAbsent)
{
    const Reading reading =
        read(R"({"packets": [{"pts_time": "N/A", "dts_time": null, "size": [1, {"size": "2"}]}]})");
    EXPECT_TRUE(reading.complete);
    EXPECT_THAT(reading.packets, ElementsAre(PacketOf(std::nullopt, std::nullopt, std::nullopt)));
}

TEST(PacketListReader, EscapesDoNotEndAString)
{
    const Reading reading = read(R"({"packets": [{"a\\": "\"}\\", "size": "\u0035", "pts_time": 1}],
        "\"packets": "\\"})");
    EXPECT_TRUE(reading.complete);
    EXPECT_THAT(reading.packets, SizeIs(1));
    EXPECT_EQ(reading.packets.at(0).ptsTime, 1.0);
}

TEST(PacketListReader, MalformedTextIsNotComplete)
{
    for (const char* text : {"",
                             " ",
                             "[]",
                             "{} {}",
                             "{}}",
                             "}",
                             "ffprobe: error",
                             "{} x",
                             "x {}",
                             "{]",
                             R"({"packets": {}})",
                             R"({"packets": [1]})",
                             R"({"packets": ["a"]})",
                             R"({"packets": [[]]})",
                             R"({"packets": [{]]})",
                             R"({"packets": [{"size"}]})",
                             R"({"packets": [{"size" 5}]})",
                             R"({"packets": [{"size": }]})",
                             R"({"packets": [{"size": 5,}]})",
                             R"({"packets": [{"size": 5 "dts_time": 4}]})",
                             R"({"packets": [{size: 5}]})",
                             R"({"packets": [{"size": 5{}}]})",
                             R"({"packets": [{,}]})",
                             R"({"packets": [{"size": x"5"}]})"})
        EXPECT_FALSE(read(text).complete) << text;
}

TEST(PacketListReader, NothingIsReadBehindAFault)
{
    const Reading reading =
        read(R"({"packets": [{"size": 1}, {"size": }, {"size": 3}]} trailing "words" )");
    EXPECT_FALSE(reading.complete);
    EXPECT_THAT(reading.packets, SizeIs(1));
}

TEST(PacketListReader, AnEndlessPacketIsGivenUp)
{
    PacketListReader reader([](const Packet&) {});
    reader.feed(R"({"packets": [{"size": ")");
    const std::string filler(65536, '1');
    for (int i = 0; i < 3; ++i)
        reader.feed(filler);
    reader.feed(R"("}]})");
    EXPECT_FALSE(reader.isComplete());
}

TEST(PacketListReader, EndlessNestingIsGivenUp)
{
    const std::string deep(100'000, '[');
    EXPECT_FALSE(read(R"({"a": )" + deep + std::string(100'000, ']') + '}').complete);
}

TEST(PacketListReader, AMillionPacketsGoThrough)
{
    std::size_t count = 0;
    double bytes = 0;
    PacketListReader reader([&](const Packet& packet) {
        ++count;
        bytes += packet.size.value_or(0);
    });
    reader.feed(R"({"packets": [{"size": 2})");
    std::string thousand;
    for (int i = 0; i < 1000; ++i)
        thousand += R"(, {"pts_time": "1.0", "size": "2"})";
    for (int i = 0; i < 1000; ++i)
        reader.feed(thousand);
    reader.feed("]}");
    EXPECT_TRUE(reader.isComplete());
    EXPECT_EQ(count, 1'000'001U);
    EXPECT_EQ(bytes, 2'000'002);
}

} // namespace
} // namespace vantroque
