#include "Captions/CaptionLoader.h"

#include "Captions/CaptionFixtures.h"
#include "Support/FakeTools.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using CaptionLoader::Problem;
using testing::ElementsAre;
using Format = CaptionTrack::Format;
using Placement = CaptionCue::Placement;
namespace fs = std::filesystem;

Result<CaptionTrack, Problem> load(const fs::path& path)
{
    return CaptionLoader::load(FileUrl::fromPath(path));
}

Result<CaptionTrack, Problem> load(const std::string& name, const QByteArray& bytes)
{
    const TestFolder folder;
    return load(folder.write(name, bytes));
}

/// What is wrong with a file; nothing when it loads.
std::optional<Problem> problemOf(const Result<CaptionTrack, Problem>& loaded)
{
    return loaded ? std::nullopt : std::optional(loaded.error());
}

std::vector<QString> texts(const CaptionTrack& track)
{
    std::vector<QString> found;
    for (const CaptionCue& cue : track.cues())
        found.push_back(cue.text());
    return found;
}

TEST(CaptionLoader, KnowsCaptionFilesByTheirNames)
{
    for (const char* name : {"a.srt", "a.vtt", "a.scc", "a.SRT", "a.b.Vtt"})
        EXPECT_TRUE(CaptionLoader::isSidecar(FileUrl::fromPath(name))) << name;
    for (const char* name : {"a.mp4", "srt", ".srt", "a.srt.txt", "a.ass", "a.srt "})
        EXPECT_FALSE(CaptionLoader::isSidecar(FileUrl::fromPath(name))) << name;
}

TEST(CaptionLoader, ReadsSubRip)
{
    const auto track = load("spot.srt", CaptionFixtures::subRip);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->format(), Format::srt);
    EXPECT_THAT(texts(*track),
                ElementsAre(u"Spring is here"_s, u"- Coffee?\n- Yes & milk"_s, u"In all stores"_s));
    EXPECT_EQ(track->cues()[0].placement, Placement::top);
    EXPECT_EQ(track->cues()[1].end, 4.25);
}

TEST(CaptionLoader, KeepsAccentsHoweverTheyAreCoded)
{
    for (const QByteArray& bytes : {CaptionFixtures::accentedUtf8, CaptionFixtures::accentedLatin1,
                                    "\xEF\xBB\xBF" + CaptionFixtures::accentedUtf8}) {
        const auto track = load("spot.srt", bytes);
        ASSERT_TRUE(track);
        EXPECT_THAT(texts(*track), ElementsAre(u"Un caf\u00E9 au lait"_s));
    }
}

TEST(CaptionLoader, ReadsWebVtt)
{
    const auto track = load("spot.vtt", CaptionFixtures::webVtt);
    ASSERT_TRUE(track);
    EXPECT_EQ(track->format(), Format::vtt);
    EXPECT_THAT(texts(*track), ElementsAre(u"Spring is here"_s, u"Coffee?"_s));
}

TEST(CaptionLoader, TheHeaderMakesAFileWebVttWhateverItsName)
{
    EXPECT_EQ(load("spot.srt", CaptionFixtures::webVtt)->format(), Format::vtt);
}

TEST(CaptionLoader, WithoutTheHeaderTheNameTellsTheFormat)
{
    EXPECT_EQ(load("spot.VTT", CaptionFixtures::subRip)->format(), Format::vtt);
    EXPECT_EQ(load("spot.txt", CaptionFixtures::subRip)->format(), Format::srt);
    EXPECT_EQ(load("spot", CaptionFixtures::subRip)->format(), Format::srt);
}

TEST(CaptionLoader, ReadsScenarist)
{
    for (const char* name : {"spot.scc", "it's [one]: 100%d.SCC"}) {
        const auto track = load(name, CaptionFixtures::scenarist);
        ASSERT_TRUE(track) << name;
        EXPECT_EQ(*track, CaptionTrack(Format::scc, {CaptionCue::plain(1, 2, 5, u"Hello"_s),
                                                     CaptionCue::plain(2, 7, 8, u"World"_s)}));
    }
}

TEST(CaptionLoader, PlacementInScenaristIsNotHonoured)
{
    const FakeTools tools;
    tools.print("ffmpeg", "1\n00:00:01,000 --> 00:00:02,000\n{\\an8}Hello");
    const auto track = load("spot.scc", "anything");
    ASSERT_TRUE(track);
    EXPECT_EQ(*track, CaptionTrack(Format::scc, {CaptionCue::plain(1, 1, 2, u"Hello"_s)}));
}

TEST(CaptionLoader, WhatIsNoScenaristCannotBeRead)
{
    EXPECT_EQ(problemOf(load("spot.scc", "")), Problem::unreadable);
    EXPECT_EQ(problemOf(load("spot.scc", "Dear Sir or Madam")), Problem::unreadable);
    EXPECT_EQ(problemOf(load("spot.scc", "Scenarist_SCC V1.0\n\n")), Problem::unreadable);
}

TEST(CaptionLoader, ScenaristWithoutAUsableCueIsTold)
{
    const FakeTools tools;
    tools.print("ffmpeg", "--> but no times");
    EXPECT_EQ(problemOf(load("spot.scc", "anything")), Problem::noCues);
}

TEST(CaptionLoader, ScenaristNeedsFfmpeg)
{
    const FakeTools tools;
    tools.put("ffmpeg", "exit 1");
    EXPECT_EQ(problemOf(load("spot.scc", CaptionFixtures::scenarist)), Problem::unreadable);
}

TEST(CaptionLoader, AFileWithoutCuesIsTold)
{
    EXPECT_EQ(problemOf(load("spot.srt", "")), Problem::noCues);
    EXPECT_EQ(problemOf(load("spot.vtt", "WEBVTT\n\nNOTE 0:01 --> 0:02")), Problem::noCues);
    EXPECT_EQ(problemOf(load("spot.srt", "Dear Sir or Madam")), Problem::noCues);
}

TEST(CaptionLoader, WhatIsNoFileCannotBeRead)
{
    const TestFolder folder;
    EXPECT_EQ(problemOf(load(folder / "none.srt")), Problem::unreadable);
    EXPECT_EQ(problemOf(load(folder / "none.scc")), Problem::unreadable);
    fs::create_directory(folder / "folder.srt");
    EXPECT_EQ(problemOf(load(folder / "folder.srt")), Problem::unreadable);
}

TEST(CaptionLoader, AFileBeyondAHundredMegabytesIsNotRead)
{
    const TestFolder folder;
    const auto path = folder.write("long.srt", CaptionFixtures::subRip);
    fs::resize_file(path, 100'000'001); // sparse
    EXPECT_EQ(problemOf(load(path)), Problem::unreadable);
}

TEST(CaptionLoader, OneGoodCueIsEnough)
{
    const auto track = load("spot.srt", "%PDF\n\n\xFF\xFE\n\n0:01 --> 0:02\nHello\n\n--> -->");
    ASSERT_TRUE(track);
    EXPECT_THAT(texts(*track), ElementsAre(u"Hello"_s));
}

} // namespace
} // namespace vantroque
