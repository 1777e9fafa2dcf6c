#include "Signal/LiveFrameReader.h"
#include "Signal/LiveLogReader.h"
#include "Signal/LivePreviewReader.h"
#include "Support/TestFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

using namespace vantroque;
using testing::ElementsAre;
using testing::FloatNear;
using LiveEvent = AnalysisProgress::LiveEvent;

namespace {

/// A reader of the log with the progress that it feeds.
struct LogReader {
    AnalysisProgress progress;
    LiveLogReader reader;

    explicit LogReader(int channels) : reader(progress, channels) {}
    void feed(std::initializer_list<const char*> lines)
    {
        for (const char* line : lines)
            reader.feed(line);
    }
};

constexpr RawPicture tinyPicture{2, 2, 4, false, ColorMatrix::bt709};

} // namespace

TEST(LiveLogReader, AWindowIsWholeWhenAllItsChannelsAreIn)
{
    LogReader log(2);
    log.feed({"[Parsed_ametadata_3 @ 0x1] frame:0    pts:0       pts_time:0.1",
              "[Parsed_ametadata_3 @ 0x1] lavfi.astats.1.RMS_level=-20.5",
              "lavfi.astats.1.Peak_level=-10", "lavfi.astats.2.RMS_level=-21",
              "lavfi.astats.2.Peak_level=-11"});
    EXPECT_TRUE(log.progress.snapshot().audio.empty());
    log.reader.flush();
    const auto audio = log.progress.snapshot().audio;
    ASSERT_EQ(audio.size(), 1U);
    EXPECT_DOUBLE_EQ(audio[0].time, 0.1);
    EXPECT_THAT(audio[0].levels->rms, ElementsAre(-20.5F, -21.0F));
    EXPECT_THAT(audio[0].levels->peak, ElementsAre(-10.0F, -11.0F));
}

TEST(LiveLogReader, AWindowThatLacksAChannelStaysOpenAndKeepsItsValues)
{
    LogReader log(2);
    log.feed({"pts_time:0.1", "lavfi.astats.1.RMS_level=-20", "lavfi.astats.1.Peak_level=-10",
              "pts_time:0.2", "lavfi.astats.2.RMS_level=-30", "lavfi.astats.2.Peak_level=-15"});
    EXPECT_TRUE(log.progress.snapshot().audio.empty());
    log.reader.flush();
    const auto audio = log.progress.snapshot().audio;
    ASSERT_EQ(audio.size(), 1U);
    EXPECT_DOUBLE_EQ(audio[0].time, 0.2);
    EXPECT_THAT(audio[0].levels->rms, ElementsAre(-20.0F, -30.0F));
}

TEST(LiveLogReader, WhatCannotBeMeasuredReadsAsSilence)
{
    LogReader log(1);
    for (const char* value : {"-inf", "nan", "-120.5", "loud"}) {
        log.feed({"pts_time:1"});
        log.reader.feed(std::string("lavfi.astats.1.RMS_level=") + value);
        log.feed({"lavfi.astats.1.Peak_level=-1", "lavfi.astats.1.Flat_factor=3"});
        log.reader.flush();
        EXPECT_EQ(log.progress.snapshot().audio.back().levels->rms[0], -99.0F) << value;
    }
}

TEST(LiveLogReader, EventsComeWithTheirTimes)
{
    LogReader log(0);
    log.feed({"[blackdetect @ 0x1] black_start:1.5 black_end:2.25 black_duration:0.75",
              "[silencedetect @ 0x2] silence_start: -0.0213",
              "[silencedetect @ 0x2] silence_end: 4.5 | silence_duration: 3",
              "lavfi.freezedetect.freeze_start: 2.08333e-05", "freeze_end: 7", "black_end:8",
              "black_start:soon"});
    EXPECT_THAT(log.progress.snapshot().events,
                ElementsAre(LiveEvent{LiveEvent::Kind::blackStart, 1.5},
                            LiveEvent{LiveEvent::Kind::silenceStart, -0.0213},
                            LiveEvent{LiveEvent::Kind::silenceEnd, 4.5},
                            LiveEvent{LiveEvent::Kind::freezeStart, 2.08333e-05},
                            LiveEvent{LiveEvent::Kind::freezeEnd, 7},
                            LiveEvent{LiveEvent::Kind::blackEnd, 8}));
}

TEST(LiveLogReader, TimesMoveTheDecodeOn)
{
    LogReader log(1);
    log.feed({"frame:12 pts:480 pts_time:12.48", "pts_time:nonsense", "pts_time:3"});
    EXPECT_DOUBLE_EQ(log.progress.snapshot().mediaSeconds, 12.48);
}

TEST(LiveLogReader, HostileLinesDoNoHarm)
{
    LogReader log(2);
    log.feed({"", "pts_time:", "lavfi.astats.", "lavfi.astats.1", "lavfi.astats.1.RMS_level",
              "lavfi.astats.=1.", "lavfi.astats.99999999999999999999.RMS_level=1",
              "lavfi.astats.-1.RMS_level=1", "black_start:", "silence_end:|"});
    log.reader.flush();
    EXPECT_TRUE(log.progress.snapshot().audio.empty());
    EXPECT_TRUE(log.progress.snapshot().events.empty());
}

TEST(LiveFrameReader, ChunksOfAnyLengthMakeWholeFrames)
{
    std::string dump;
    for (int frame = 0; frame < 3; ++frame)
        dump += std::string(4, static_cast<char>(16 + 73 * frame)) + std::string(8, '\x80');
    for (std::size_t length = 1; length <= dump.size(); ++length) {
        AnalysisProgress progress;
        LiveFrameReader reader(progress, tinyPicture);
        for (std::size_t at = 0; at < dump.size(); at += length)
            reader.feed(std::string_view(dump).substr(at, length));
        const auto frames = progress.snapshot().frames;
        ASSERT_EQ(frames.size(), 3U) << length;
        EXPECT_DOUBLE_EQ(frames[2].time, 0.5);
        EXPECT_FLOAT_EQ(frames[0].yMeanPercent, 0);
        EXPECT_FLOAT_EQ(frames[2].yMaxPercent, 66.666667F);
    }
}

TEST(LiveFrameReader, APartOfAFrameWaitsForItsRest)
{
    AnalysisProgress progress;
    LiveFrameReader reader(progress, tinyPicture);
    reader.feed(std::string(11, '\x40'));
    EXPECT_TRUE(progress.snapshot().frames.empty());
    reader.feed("\x40");
    EXPECT_EQ(progress.snapshot().frames.size(), 1U);
}

TEST(LiveFrameReader, LumaIsInPercentOfItsRange)
{
    ScopeFrame frame{4, 1, {16, 235, 126, 16}, {}, {}, false, ColorMatrix::bt709};
    const auto video = LiveFrameReader::sample(frame, 0);
    EXPECT_FLOAT_EQ(video.yMinPercent, 0);
    EXPECT_FLOAT_EQ(video.yMaxPercent, 100);
    EXPECT_THAT(video.yMeanPercent, FloatNear((98 - 16) * 100.0F / 219, 1e-4F));
    EXPECT_FLOAT_EQ(video.yHighPercent, 100.0F * (126 - 16) / 219); // the third of four
    frame.fullRange = true;
    frame.y = {0, 255, 255, 255};
    const auto full = LiveFrameReader::sample(frame, 0);
    EXPECT_FLOAT_EQ(full.yMinPercent, 0);
    EXPECT_FLOAT_EQ(full.yMaxPercent, 100);
}

TEST(LivePreviewReader, KeepsTheLatestPicture)
{
    const TestFolder folder;
    const auto fifo = folder / "preview.yuv";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    AnalysisProgress progress;
    LivePreviewReader reader(progress, tinyPicture, fifo);
    ASSERT_TRUE(reader.isOpen());
    std::jthread writer([&] {
        const FileDescriptor out(::open(fifo.c_str(), O_WRONLY));
        for (const char value : {'\x10', '\x20', '\x30'}) {
            const std::string picture(12, value);
            EXPECT_EQ(::write(out.get(), picture.data(), picture.size()), 12);
        }
    });
    reader.read({});
    const auto state = progress.snapshot();
    ASSERT_TRUE(state.preview);
    EXPECT_EQ(state.preview->y[0], 0x30);
    EXPECT_DOUBLE_EQ(state.previewTime, 0.5);
}

TEST(LivePreviewReader, EndsWhenNobodyEverWrites)
{
    const TestFolder folder;
    const auto fifo = folder / "preview.yuv";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    AnalysisProgress progress;
    LivePreviewReader reader(progress, tinyPicture, fifo);
    std::stop_source stop;
    stop.request_stop();
    reader.read(stop.get_token());
    EXPECT_FALSE(progress.snapshot().preview);
}

TEST(LivePreviewReader, AMissingFifoIsNotOpen)
{
    AnalysisProgress progress;
    EXPECT_FALSE(LivePreviewReader(progress, tinyPicture, "/nowhere/preview.yuv").isOpen());
}
