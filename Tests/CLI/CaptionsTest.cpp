#include "Base/RecordCoding.h"
#include "CLI/Cli.h"
#include "Captions/CaptionFixtures.h"
#include "Captions/CaptionHealth.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"
#include "Support/Media.h"

#include <QJsonArray>

// The report on captions: alone, and as a section of a file's.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Optional;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

const QByteArray clean = "1\n00:00:00,100 --> 00:00:00,400\nThe weather is nice today.\n\n"
                         "2\n00:00:00,500 --> 00:00:00,900\nYou are going to the market.\n";
const QByteArray faulty = "1\n01:00:00,200 --> 01:00:00,600\nThe whether is qxzzy today.\n\n"
                          "2\n01:00:00,400 --> 01:00:00,900\nYou are going to to the market.\n";

/// What `captions --format json` tells.
struct Told {
    int status = 0;
    QString error;
    QString format;
    double shift = 0;
    std::vector<CaptionCue> cues;
    CaptionHealth health;
    ProfileReport report;

    QString measured(const QString& id) const
    {
        for (const CheckResult& row : report.checks)
            if (row.id == id)
                return row.measured;
        return {};
    }
};

class Captions : public testing::Test {
protected:
    ProgramRun run(const Words& words) const { return Cli::run(words, {.environment = m_user}); }
    /// As text.
    ProgramRun captions(const Words& words) const { return run(Words{"captions"} + words); }
    Told told(const Words& words) const
    {
        const auto result = captions(Words{"--format", "json"} + words);
        EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
        const QJsonObject object = Cli::json(result);
        Told found{result.status, object[u"error"].toString()};
        if (object.contains(u"error"_s))
            return found;
        const QJsonObject track = object[u"track"].toObject();
        found.format = track[u"format"].toString();
        found.shift = track[u"shift"].toDouble();
        found.cues = RecordCoding::decode<std::vector<CaptionCue>>(track[u"cues"]).value();
        found.health = RecordCoding::decode<CaptionHealth>(object[u"health"]).value();
        found.report = RecordCoding::decode<ProfileReport>(object[u"report"]).value();
        return found;
    }
    Words check(const Words& words) const
    {
        return Words{"check"} + m_profiles.words() + Words{"--skip-signal"} + words;
    }
    std::vector<Cli::File> checked(const Words& words) const
    {
        return Cli::checked(run(check(Words{"--format", "json"} + words)));
    }
    std::string file(const std::string& name, const QByteArray& bytes) const
    {
        return m_folder.write(name, bytes);
    }

    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
    const std::string m_clip = Clips::plain(); // of one second
    const TestFolder m_enchant;
    /// An English user who has taught the dictionaries nothing.
    const std::map<std::string, std::optional<std::string>> m_user{
        {"LC_ALL", "C.UTF-8"}, {"ENCHANT_CONFIG_DIR", m_enchant.path().native()}};
};

TEST_F(Captions, ASubRipFileIsAReport)
{
    const auto result = captions({file("spot.srt", clean)});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    const std::string text = result.out.toStdString();
    EXPECT_THAT(text, StartsWith("spot.srt    srt\n\n  CAPTIONS  MEETS\n"
                                 "    -- spot.srt               2 cues, 00:00:00:03 to "
                                 "00:00:00:23\n"
                                 "    ok Spelling               every word is in the dictionary\n"
                                 "    ok Timing                 no overlaps, every cue inside the "
                                 "picture\n"));
}

TEST_F(Captions, FaultsAreAdviceAndFailNothing)
{
    const auto result = captions({file("spot.srt", faulty)});
    EXPECT_EQ(result.status, 0);
    const std::string text = result.out.toStdString();
    EXPECT_THAT(text, HasSubstr("  CAPTIONS  BELOW\n"));
    EXPECT_THAT(text, HasSubstr("    !! Spelling               1 word the English dictionary "
                                "doesn't know: qxzzy (01:00:00:05)\n"));
    EXPECT_THAT(text, HasSubstr("    !! Doubled words          \"to to\" (01:00:00:10)\n"));
    EXPECT_THAT(text, HasSubstr("    !! Timing                 1 cue overlaps the one before\n"));
}

TEST_F(Captions, JsonHoldsTrackHealthAndReport)
{
    const Told found = told({file("spot.srt", faulty)});
    EXPECT_EQ(found.status, 0);
    EXPECT_EQ(found.format, u"srt"_s);
    EXPECT_EQ(found.shift, 0);
    ASSERT_THAT(found.cues, SizeIs(2));
    EXPECT_EQ(found.cues[1],
              CaptionCue::plain(2, 3600.4, 3600.9, u"You are going to to the market."_s));
    EXPECT_EQ(found.health.cueCount, 2);
    EXPECT_EQ(found.health.overlapping, 1);
    EXPECT_EQ(found.health.beyondPicture, 0) << "there is no picture";
    EXPECT_EQ(found.report.profileID, u"captions"_s);
    EXPECT_THAT(found.report.tag, Optional(u"spot.srt"_s));
}

TEST_F(Captions, WithMediaTheyAreShiftedToItsPicture)
{
    const Told found = told({"--media", m_clip, file("spot.srt", faulty)});
    EXPECT_EQ(found.shift, 3600);
    ASSERT_THAT(found.cues, SizeIs(2));
    EXPECT_NEAR(found.cues[0].start, 0.2, 1e-9);
    EXPECT_EQ(found.health.shiftedHours, 1);
    EXPECT_EQ(found.measured(u"captions-source"_s),
              u"2 cues, 00:00:00:05 to 00:00:00:23; timed from 01:00:00:00 and shifted back"_s);
}

TEST_F(Captions, WithMediaACueMustNotStartBehindItsPicture)
{
    const Told found =
        told({"--media", m_clip, file("spot.srt", clean + "\n0:01 --> 0:02\nThe end.\n")});
    EXPECT_EQ(found.health.beyondPicture, 1);
    EXPECT_EQ(found.measured(u"captions-timing"_s), u"1 cue after the picture ends"_s);
}

TEST_F(Captions, WordsOfTheMediasNameAreKnown)
{
    const auto media = m_folder / "QxzzySpring_1s.mp4";
    fs::copy_file(m_clip, media);
    EXPECT_EQ(told({"--media", media, file("spot.srt", faulty)}).measured(u"captions-spelling"_s),
              u"every word is in the dictionary"_s);
    EXPECT_EQ(told({file("qxzzy.srt", faulty)}).measured(u"captions-spelling"_s),
              u"every word is in the dictionary"_s);
}

TEST_F(Captions, OfEveryKindOfFileAreRead)
{
    EXPECT_EQ(told({file("spot.vtt", CaptionFixtures::webVtt)}).format, u"vtt"_s);
    EXPECT_EQ(told({file("spot.scc", CaptionFixtures::scenarist)}).format, u"scc"_s);
}

TEST_F(Captions, OfAMediaFileAreItsFirst)
{
    const Told found = told({Clips::subtitled().native()});
    EXPECT_EQ(found.format, u"embedded"_s);
    EXPECT_THAT(found.report.tag, Optional(u"English track (subrip)"_s));
    ASSERT_THAT(found.cues, SizeIs(1));
    EXPECT_EQ(found.cues[0].text(), u"Hello"_s);
}

TEST_F(Captions, OfAMediaFileTakeOneLookAtTheFile)
{
    const auto looks = [&](const Words& words) {
        const FakeTools tools;
        tools.record("ffprobe");
        EXPECT_EQ(run(words).status, 0);
        return tools.calls("ffprobe");
    };
    const std::string clip = Clips::subtitled();
    const auto ofProbe = looks({"probe", clip});
    EXPECT_THAT(ofProbe, Not(IsEmpty()));
    EXPECT_THAT(looks({"captions", clip}), UnorderedElementsAreArray(ofProbe));
}

TEST_F(Captions, InsideThePictureAreRead)
{
    const auto clip = Clips::captioned(CaptionedCodec::mpeg2, Clips::CaptionsBegin::atOnce);
    const Told found = told({clip.native()});
    EXPECT_THAT(found.report.tag, Optional(u"CEA-608 closed captions"_s));
    EXPECT_THAT(found.cues, SizeIs(1));
}

TEST_F(Captions, ThatCannotBeReadAreTold)
{
    const std::string empty = file("empty.srt", "");
    const std::string broken = file("broken.scc", "Dear Sir or Madam");
    for (const auto& [path, words] :
         std::map<std::string, std::string>{{empty, "there are no captions in it"},
                                            {broken, "cannot be read as captions"},
                                            {m_folder / "none.srt", "No such file or directory"},
                                            {m_clip, "there are no captions in it"}}) {
        const auto result = captions({path});
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.out.isEmpty());
        EXPECT_EQ(result.err.toStdString(), "vantroque-cli: " + path + ": " + words + "\n");
        const Told found = told({path});
        EXPECT_EQ(found.status, 2);
        EXPECT_EQ(found.error.toStdString(), path + ": " + words);
    }
}

TEST_F(Captions, MediaThatCannotBeReadIsTold)
{
    const auto result = captions({"--media", "/nowhere.mp4", file("spot.srt", clean)});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err.toStdString(), HasSubstr("ffprobe exited with status 1: /nowhere.mp4"));
}

TEST_F(Captions, AWrongCallIsTold)
{
    const auto problemOf = [&](const Words& words) {
        const auto result = captions(words);
        EXPECT_EQ(result.status, 2);
        EXPECT_TRUE(result.out.isEmpty());
        return result.err.toStdString();
    };
    EXPECT_EQ(problemOf({}), "vantroque-cli: captions takes one file\n");
    EXPECT_EQ(problemOf({"a.srt", "b.srt"}), "vantroque-cli: captions takes one file\n");
    EXPECT_EQ(problemOf({"--format", "junit", "a.srt"}),
              "vantroque-cli: unknown format \"junit\": one of text, json\n");
}

TEST_F(Captions, HoldNothingThatATerminalWouldActOn)
{
    const auto name = "sp\x1B[2Jot.srt";
    const auto result = captions({file(name, "0:01 --> 0:02\nThe wea\x1B[2Jther qxz\x07zy.\n")});
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(result.out.contains('\x1B') || result.out.contains('\x07'));
}

// In `check`.

TEST_F(Captions, OfACheckAreItsLastSectionAndAmongItsEvents)
{
    const auto files = checked({"--captions", file("spot.srt", faulty), m_clip});
    ASSERT_THAT(files, SizeIs(1));
    const FileReport& report = *files[0].report;
    ASSERT_TRUE(report.sections && report.events);
    EXPECT_EQ(report.sections->back().profileID, u"captions"_s);
    EXPECT_THAT(report.sections->back().tag, Optional(u"spot.srt"_s));
    std::vector<std::int64_t> frames;
    for (const SignalEvent& event : *report.events)
        if (event.kind == SignalEvent::Kind::captionSpelling
            || event.kind == SignalEvent::Kind::captionDoubled)
            frames.push_back(event.frame);
    EXPECT_THAT(frames, ElementsAre(5, 10)) << "of the picture";
}

TEST_F(Captions, OfACheckGoWithEveryFile)
{
    const auto files =
        checked({"--captions", file("spot.srt", clean), m_clip, "/nowhere.mp4", Clips::wav()});
    ASSERT_THAT(files, SizeIs(3));
    EXPECT_EQ(files[0].report->sections->back().profileID, u"captions"_s);
    EXPECT_EQ(files[1].status, u"failed"_s);
    EXPECT_EQ(files[2].report->sections->back().profileID, u"captions"_s) << "sound alone";
}

TEST_F(Captions, OfACheckNeverFailAFile)
{
    const Words words{"--profile", "mp4-only", m_clip};
    EXPECT_EQ(run(check(words)).status, 0);
    const auto result = run(check(Words{"--captions", file("spot.srt", faulty)} + words));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("  CAPTIONS  BELOW\n"));
}

TEST_F(Captions, OfACheckAreSuitesOfJUnit)
{
    const auto result =
        run(check({"--format", "junit", "--captions", file("spot.srt", clean), m_clip}));
    EXPECT_THAT(result.out.toStdString(),
                HasSubstr("<testcase classname=\"Captions\" name=\"Spelling\""));
}

TEST_F(Captions, OfACheckThatCannotBeReadStopTheCall)
{
    const auto result = run(check({"--captions", file("empty.srt", ""), m_clip}));
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.out.isEmpty());
    EXPECT_THAT(result.err.toStdString(), HasSubstr("empty.srt: there are no captions in it\n"));
}

TEST_F(Captions, WithoutTheOptionACheckHasNone)
{
    const auto files = checked({Clips::subtitled().native()});
    for (const ProfileReport& section :
         files.at(0).report->sections.value_or(std::vector<ProfileReport>()))
        EXPECT_NE(section.profileID, u"captions"_s);
}

} // namespace
} // namespace vantroque
