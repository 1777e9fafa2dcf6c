#include "Analysis/TextOnTheRoad.h"

// Text that is read while a file is decoded.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using testing::StartsWith;

void expectDecodedText(const MediaInfo& media)
{
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    expectTitled(*signal);
}

/// ffmpeg that cannot write any more, in these words, once it has written one frame for reading.
void stopAfterOneFrame(const FakeTools& tools, const QByteArray& words)
{
    tools.put("ffmpeg", "words='" + words + R"('

case "$*" in *%05d.png*)
    for word; do case "$word" in */%05d.png) folder="${word%/*}" ;; esac; done
    cp "$TEST_FRAME" "$folder/00001.png"
    : > "$folder/00002.png"
    echo "$words" >&2
    exit 1 ;;
esac
exec ffmpeg "$@")");
}

TEST(TextOnTheDecode, IsReadToTheFrame)
{
    expectDecodedText(probed(BoxClips::titled()));
}

TEST(TextOnTheDecode, OfAPictureBehindACoverIsRead)
{
    const MediaInfo media = probed(Clips::coverAhead(BoxClips::titled("covered.mp4")));
    ASSERT_EQ(media.video->specifier(), "v:1");
    expectDecodedText(media);
}

TEST(TextOnTheDecode, OfATurnedPictureIsReadAfterwardsAsItIsShown)
{
    const auto upright = BoxClips::titled("upright.mp4");
    MediaInfo media = probed(Media::make(
        {"turned.mp4", {"-i", upright.native(), "-c", "copy", "-metadata:s:v:0", "rotate=90"}}));
    RecognizerPool pool(
        FakeRecognizer::answering(FakeRecognizer::lookingAt({{0.4, 0.25, 0.2, 0.5}})));
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &pool}, nullptr);
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    EXPECT_EQ(signal->textScanAttempted, std::nullopt);
    media.signal = *signal;
    Analyzer::scanTextIfNeeded(media, placement, &pool, nullptr);
    expectTitled(media.signal);
}

TEST(TextOnTheDecode, TakesNoFurtherDecode)
{
    const MediaInfo media = probed(BoxClips::make({.name = "plain-gray.mkv"}));
    const FakeTools tools;
    tools.record("ffmpeg");
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal);
    EXPECT_THAT(signal->textRegions, Optional(IsEmpty()));
    EXPECT_THAT(tools.calls("ffmpeg"), SizeIs(1));
    EXPECT_EQ(readers.frames, 9) << "every twelfth of a hundred";
}

TEST(TextOnTheDecode, LeavesNoFilesBehind)
{
    const MediaInfo media = probed(BoxClips::titled());
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    expectDecodedText(media);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

TEST(TextOnTheDecode, IsNotReadUnlessAProfileLimitsItsPlace)
{
    Readers readers;
    const auto signal = Analyzer::decode(probed(BoxClips::titled()), {withSlate(1)},
                                         {.recognizers = &readers.pool}, nullptr);
    ASSERT_TRUE(signal);
    EXPECT_EQ(signal->textScanAttempted, std::nullopt);
    EXPECT_EQ(signal->textRegions, std::nullopt);
    EXPECT_EQ(readers.frames, 0);
}

TEST(TextOnTheDecode, EndsWithADecodeThatFails)
{
    // It writes more and more frames, then fails.
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    const auto frame =
        Media::make({"frame.png", {"-f", "lavfi", "-i", "color=gray:s=16x16", "-frames:v", "1"}});
    tools.put("ffmpeg", "for word; do case $word in *%05d.png) folder=${word%/*};; esac; done\n"
                        "for i in 1 2 3 4 5 6 7 8; do cp '"
                            + QByteArray::fromStdString(frame.native())
                            + "' $folder/0000$i.png; done\n"
                              "echo broken >&2; exit 1");
    const TestFolder temporary;
    const ScopedVariable place("TMPDIR", temporary.path());
    Readers readers;
    const auto signal = Analyzer::decode(media, placement, {.recognizers = &readers.pool}, nullptr);
    ASSERT_FALSE(signal);
    EXPECT_EQ(signal.error().description, u"ffmpeg exited with status 1: broken\n"_s);
    EXPECT_THAT(temporary.names(), IsEmpty());
}

class TextThatCannotBeWritten : public testing::Test {
protected:
    TextThatCannotBeWritten()
    {
        QImage frame(64, 64, QImage::Format_RGB32);
        frame.fill(Qt::white);
        frame.save(QString::fromStdString((m_folder / "frame.png").native()));
    }
    Result<SignalInfo> decodedWhere(const QByteArray& words)
    {
        const MediaInfo media = probed(BoxClips::titled());
        const FakeTools tools;
        stopAfterOneFrame(tools, words);
        return Analyzer::decode(media, placement, {.recognizers = &m_readers.pool}, nullptr);
    }

    const TestFolder m_folder;
    const ScopedVariable m_shown{"TEST_FRAME", m_folder / "frame.png"};
    Readers m_readers;
};

TEST_F(TextThatCannotBeWritten, IsGivenUpAndTheRestMeasured)
{
    const auto signal = decodedWhere("av_interleaved_write_frame(): File too large");
    ASSERT_TRUE(signal) << signal.error().description.toStdString();
    EXPECT_TRUE(signal->levels);
    EXPECT_EQ(signal->textScanAttempted, true);
    EXPECT_EQ(signal->textRegions, std::nullopt) << "what was read of the first frame is no scan";
}

TEST_F(TextThatCannotBeWritten, ForTheDiskIsFullEndsTheDecode)
{
    const auto signal = decodedWhere("av_interleaved_write_frame(): No space left on device");
    ASSERT_FALSE(signal);
    EXPECT_THAT(signal.error().description.toStdString(), StartsWith("The disk is full.\n"));
}

TEST(TextOnTheDecode, EndsWithADecodeThatCannotStart)
{
    const MediaInfo media = probed(BoxClips::titled());
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    Readers readers;
    MediaInfo analysed = media;
    EXPECT_FALSE(Analyzer::rescore(analysed, placement, &readers.pool));
    EXPECT_EQ(analysed, media) << "stays as it was";
    EXPECT_EQ(readers.frames, 0);
}

} // namespace
} // namespace vantroque
