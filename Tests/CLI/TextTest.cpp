#include "Base/UserDefaults.h"
#include "CLI/Cli.h"
#include "Support/Media.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

// A spot with a slate, a super and a legal line, as it is read.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Words = std::vector<std::string>;

/// Where the texts of a spot stand, in fractions of the picture's width and height.
struct Layout {
    std::string adID = "VNTQ1234000H";
    std::string legalX = "(w-tw)/2";
    std::string superY = "h*0.45";
};

std::string drawn(const std::string& text, double height, const std::string& x,
                  const std::string& y, const std::string& frames)
{
    return ",drawtext=font=DejaVu Sans:text='" + text + "':fontcolor=white:fontsize=h*"
           + std::to_string(height) + ":x=" + x + ":y=" + y + ":enable='between(n," + frames + ")'";
}

/// Two seconds of slate, one of black, then five of ad over a moving background, at 25 frames a
/// second: the super from frame 90 to 149, the legal line from 110 to 179.
std::filesystem::path spot(const std::string& name, const Layout& layout)
{
    const std::string picture =
        "testsrc2=s=1280x720:r=25:d=8,boxblur=16,eq=brightness=-0.2,drawbox=c=0x202020:t=fill:"
        "enable='lt(n,50)',drawbox=c=black:t=fill:enable='between(n,50,74)'"
        + drawn("Ad-ID\\: " + layout.adID, 0.06, "w*0.2", "h*0.2", "0,49")
        + drawn("Advertiser\\: Autumn Shoes", 0.06, "w*0.2", "h*0.35", "0,49")
        + drawn("Title\\: Walk On", 0.06, "w*0.2", "h*0.5", "0,49")
        + drawn("Length\\: 5 seconds", 0.06, "w*0.2", "h*0.65", "0,49")
        + drawn("Half price until Sunday", 0.08, "(w-tw)/2", layout.superY, "90,149")
        + drawn("Offer valid in stores and online", 0.035, layout.legalX, "h*0.88", "110,179");
    return Media::make(
        {name,
         {"-f",       "lavfi",    "-i",   picture,
          "-f",       "lavfi",    "-i",   "anoisesrc=d=8:a=0.1,volume=enable='lt(t,3)':volume=0",
          "-ac",      "2",        "-c:v", "libx264",
          "-preset",  "veryfast", "-crf", "14",
          "-pix_fmt", "yuv420p",  "-c:a", "pcm_s16le"}});
}

/// A broadcaster that wants the slate above, and text inside 93 %.
Profile broadcaster()
{
    Profile profile = Cli::containerProfile("slated", ProfileGroup::broadcast, "mov");
    profile.content = ContentRule();
    profile.content->slate = SlatePolicy::required;
    profile.content->slateSeconds = 2;
    profile.content->slateBlackSeconds = 1;
    profile.content->slateMustShow = {{u"Ad-ID"_s, u"Advertiser"_s, u"Title"_s, u"Length"_s}};
    profile.content->textSafeFraction = 0.9;
    profile.content->textRejectFraction = 0.93;
    return profile;
}

class SpotText : public testing::Test {
protected:
    SpotText() { m_profiles.add(broadcaster()); }

    FileReport report(const std::filesystem::path& file, const Words& more = {},
                      const ProgramOptions& options = {})
    {
        Words words = m_profiles.words();
        words.insert(words.end(), {"--profile", "slated"});
        words.insert(words.end(), more.begin(), more.end());
        words.push_back(file.native());
        words.insert(words.begin(), {"check", "--format", "json"});
        m_run = Cli::run(words, options);
        return Cli::checked(m_run).at(0).report.value();
    }
    static CheckResult row(const FileReport& report, const QString& id)
    {
        const auto& rows = report.profiles.at(0).checks;
        const auto found = std::ranges::find(rows, id, &CheckResult::id);
        return found == rows.end() ? CheckResult() : *found;
    }
    static std::vector<QString> textEvents(const FileReport& report)
    {
        std::vector<QString> found;
        for (const SignalEvent& event : report.events.value_or(std::vector<SignalEvent>()))
            if (event.kind == SignalEvent::Kind::safeArea)
                found.push_back(u"%1-%2 %3"_s.arg(event.frame)
                                    .arg(event.endFrame.value_or(-1))
                                    .arg(event.text));
        return found;
    }

    const Cli::ProfilesFolder m_profiles;
    ProgramRun m_run;
};

TEST_F(SpotText, OutsideTheSafeAreaFailsAtItsFrames)
{
    const auto found = report(spot("VNTQ1234000H.mov", {.legalX = "w*0.01"}));
    const CheckResult safe = row(found, u"text-safe"_s);
    EXPECT_EQ(safe.verdict, Verdict::fail);
    EXPECT_THAT(safe.measured.toStdString(), HasSubstr("\"Offer valid in stores and online\""));
    EXPECT_THAT(safe.measured.toStdString(), HasSubstr("at 00:00:04:10, past 93%"));
    EXPECT_THAT(textEvents(found),
                ElementsAre(u"110-179 \"Offer valid in stores and online\" reaches past the 93% "
                            u"content-safe area. Test slated will reject it."_s));
    EXPECT_EQ(m_run.status, 1);
    EXPECT_TRUE(m_run.err.isEmpty());
}

TEST_F(SpotText, InsideItPassesWithoutAnEvent)
{
    const auto found = report(spot("VNTQ1234000H.mov", {}));
    EXPECT_EQ(row(found, u"text-safe"_s).verdict, Verdict::pass);
    EXPECT_THAT(textEvents(found), IsEmpty());
}

TEST_F(SpotText, OnTheSlateIsReadAndCompared)
{
    const CheckResult good = row(report(spot("VNTQ1234000H.mov", {})), u"slate-text"_s);
    EXPECT_EQ(good.verdict, Verdict::pass) << good.measured.toStdString();
    const CheckResult other =
        row(report(spot("VNTQ1234000H.mov", {.adID = "QXZW9876000H"})), u"slate-text"_s);
    EXPECT_NE(other.verdict, Verdict::pass) << other.measured.toStdString();
}

TEST_F(SpotText, InALanguageWithoutDataCouldNotBeScannedAndSaysWhy)
{
    const auto found = report(spot("VNTQ1234000H.mov", {}), {"--text-language", "tlh"});
    EXPECT_EQ(row(found, u"text-safe"_s).measured, u"the text scan could not run"_s);
    EXPECT_THAT(m_run.err.toStdString(), HasSubstr("install tesseract-ocr-tlh"));
}

TEST_F(SpotText, WithoutAnyDataCouldNotBeScannedAndSaysWhy)
{
    const TestFolder empty;
    const auto found = report(spot("VNTQ1234000H.mov", {}), {},
                              {.environment = {{"TESSDATA_PREFIX", empty.path().native()}}});
    EXPECT_EQ(row(found, u"text-safe"_s).measured, u"the text scan could not run"_s);
    EXPECT_THAT(m_run.err.toStdString(), HasSubstr("install tesseract-ocr-eng"));
}

TEST_F(SpotText, IsReadInTheLanguagesOfTheUsersDefaults)
{
    const TestFolder config;
    UserDefaults(QString::fromStdString((config / "Vantroque/vantroque.ini").native()))
        .setTextList(u"text.languages"_s, {u"tlh"_s});
    const ProgramOptions options{.environment = {{"XDG_CONFIG_HOME", config.path().native()}}};
    report(spot("VNTQ1234000H.mov", {}), {}, options);
    EXPECT_THAT(m_run.err.toStdString(), HasSubstr("install tesseract-ocr-tlh"));
    report(spot("VNTQ1234000H.mov", {}), {"--text-language", "eng"}, options);
    EXPECT_TRUE(m_run.err.isEmpty()) << "the call overrides them";
}

} // namespace
} // namespace vantroque
