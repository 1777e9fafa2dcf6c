#include "Base/Json.h"
#include "Base/ScopedVariable.h"
#include "CLI/Cli.h"
#include "Profiles/ProfileStore.h"
#include "Profiles/SpecFreshness.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::HasSubstr;
using Words = std::vector<std::string>;

class ProfilesCommand : public testing::Test {
protected:
    ProgramRun run(const Words& words) const
    {
        return Cli::run(Words{"profiles"} + m_profiles.words() + words);
    }
    const Cli::ProfilesFolder m_profiles;
    const TestFolder m_folder;
};

template<typename T>
std::vector<T> listed(const ProgramRun& run)
{
    return RecordCoding::decode<std::vector<T>>(Cli::json(run).value("profiles"_L1)).value();
}

TEST_F(ProfilesCommand, ListsIdsByGroup)
{
    const auto result = run({});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "digital\n"
                          "  mp4-only      2020-02-02  Test mp4-only\n"
                          "\n"
                          "broadcast\n"
                          "  mxf-only      2020-02-02  Test mxf-only\n"
                          "\n"
                          "recommendation\n"
                          "  webm-advised  2020-02-02  Test webm-advised\n");
}

TEST_F(ProfilesCommand, MarksInferredOnes)
{
    auto profile = Cli::containerProfile("guess", ProfileGroup::digital, "mp4");
    profile.inferred = true;
    m_profiles.add(profile);
    EXPECT_THAT(run({}).out.toStdString(), HasSubstr("Test guess (spec inferred)\n"));
}

/// A profile in whose every text an escape code, a C1 one and a line feed stand.
Profile speaking()
{
    const QString code = u"\u001b[2J\u009b2J\n\u202e"_s;
    auto profile = Cli::containerProfile("speaking", ProfileGroup::digital, "mxf");
    profile.id += code;
    profile.name += code;
    profile.shortName = code;
    profile.sourceURL = profile.verifiedDate = code;
    profile.notes = code;
    profile.container->allowed = {u"mxf"_s + code};
    profile.container->preferred = code;
    profile.file = FileRule();
    profile.file->namePattern = u"^never$"_s;
    profile.file->nameNote = code;
    return profile;
}

TEST_F(ProfilesCommand, TextsOfAProfileDoNotSpeakToTheTerminal)
{
    m_folder.write("speaking.json", Json::write(speaking()).value());
    const Words from{"--profiles-dir", m_folder.path().native()};
    const Words check = Words{"check"} + from + Words{Clips::wav().native()};
    for (const Words& words :
         {Words{"profiles"} + from, Words{"profiles", "--freshness"} + from,
          Words{"profiles", "--format", "json"} + from, check, check + Words{"--format", "json"},
          check + Words{"--format", "junit"}, check + Words{"--profile", "none\x1B[2J"}}) {
        const auto result = Cli::run(words);
        for (const QByteArray& told : {result.out, result.err})
            for (const char* const code : {"\x1B", "\xC2\x9B", "\xE2\x80\xAE"})
                EXPECT_FALSE(told.contains(code)) << testing::PrintToString(words);
    }
    EXPECT_EQ(Cli::run(Words{"profiles"} + from).out.count('\n'), 2) << "no line of its own";
    EXPECT_EQ(listed<Profile>(Cli::run(Words{"profiles", "--format", "json"} + from)),
              std::vector{speaking()})
        << "JSON says the same in escapes";
}

TEST_F(ProfilesCommand, PrintsWholeProfilesAsJson)
{
    const auto profiles = listed<Profile>(run({"--format", "json"}));
    ASSERT_EQ(profiles.size(), 3U);
    EXPECT_EQ(profiles[0], Cli::containerProfile("mp4-only", ProfileGroup::digital, "mp4"));
}

TEST_F(ProfilesCommand, TellsHowOldEachIs)
{
    auto unreadable = Cli::containerProfile("undated", ProfileGroup::digital, "mp4");
    unreadable.verifiedDate = u"last week"_s;
    m_profiles.add(unreadable);
    const auto result = run({"--freshness"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.count('\n'), 4);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("Test mp4-only"));

    const auto rows = listed<SpecFreshnessRow>(run({"--freshness", "--format", "json"}));
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].state, SpecFreshness::unreadable);
    EXPECT_EQ(rows[0].days, std::nullopt);
    EXPECT_EQ(rows[1].state, SpecFreshness::expired);
    EXPECT_GT(rows[1].days.value_or(0), 365);
}

/// Profiles of the user's own, in a home of the test's own.
TEST_F(ProfilesCommand, ReadsThoseOfTheUserBesideTheInstalledOnes)
{
    const ScopedVariable data("XDG_DATA_HOME", m_folder.path());
    const auto write = [&](const std::string& name, const QByteArray& text) {
        return m_folder.write("Vantroque/Profiles/" + name, text).native();
    };
    const auto own = [](const char* id) {
        return Json::write(Cli::containerProfile(id, ProfileGroup::digital, "mxf")).value();
    };
    write("mine.json", own("my-own"));
    write("stricter.json", own("tiktok-in-feed"));
    const std::string broken = write("broken.json", "{}");
    const auto listing = Cli::run({"profiles"});
    EXPECT_EQ(listing.status, 0);
    EXPECT_EQ(listing.err.toStdString(),
              "vantroque-cli: " + broken
                  + ": .id: missing\nThis tells on which line, and what else is wrong: "
                    "vantroque-cli profiles --check "
                  + broken + '\n');
    for (const char* line : {"  2020-02-02  Test my-own (yours)\n",
                             "  2020-02-02  Test tiktok-in-feed (yours, stands in for the shipped "
                             "one)\n",
                             "Netflix Ads\n"})
        EXPECT_THAT(listing.out.toStdString(), HasSubstr(line));
    const auto owned =
        Cli::json(Cli::run({"profiles", "--format", "json"})).value("own"_L1).toArray();
    ASSERT_EQ(owned.size(), 2);
    EXPECT_EQ(owned[1]["id"_L1].toString(), u"tiktok-in-feed"_s);
    EXPECT_TRUE(owned[1]["standsIn"_L1].toBool());

    const Words film{"check", "--profile", "my-own", Clips::wav().native()};
    EXPECT_EQ(Cli::run(film).status, 1) << "the others work, and say what they say";
    EXPECT_EQ(run({}).err, "") << "another folder replaces all";
}

TEST(InstalledProfiles, AreFoundByTheProgram)
{
    const TestFolder home;
    const ScopedVariable data("XDG_DATA_HOME", home.path());
    auto shipped = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES).value();
    for (Profile& profile : shipped)
        if (profile.content)
            profile.content->installedLeaders.clear(); // Not told: they are those of the others.
    EXPECT_EQ(listed<Profile>(Cli::run({"profiles", "--format", "json"})), shipped);
}

TEST_F(ProfilesCommand, TellsWhatIsWrongWithAProfileAndWhere)
{
    const QTemporaryDir folder;
    const auto write = [&](const QString& name, const QByteArray& text) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        return file.fileName().toStdString();
    };
    const QByteArray head = R"({"id": "mine", "name": "Mine", "group": "digital",
"sourceURL": "", "verifiedDate": "2026-03-01",
)";
    const std::string good = write(u"good.json"_s, head + R"("duration": {"maxSeconds": 30}})");
    const std::string odd = write(u"odd.json"_s, head + R"("duration": {"maxSecond": 30}})");
    const std::string bad = write(u"bad.json"_s, head + R"("duration": {"maxSeconds": "30"}})");

    const auto passed = run({"--check", good});
    EXPECT_EQ(passed.status, 0);
    EXPECT_EQ(passed.out.toStdString(), good + ": no problems\n");
    const auto failed = run({"--check", good, odd, bad});
    EXPECT_EQ(failed.status, 1);
    EXPECT_THAT(failed.out.toStdString(),
                AllOf(HasSubstr(odd + ":3: warning: .duration.maxSecond: no such field"),
                      HasSubstr(bad + ":3: error: .duration.maxSeconds: ")));
    const auto missing = run({"--check", good + "x", good});
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.out.toStdString(), good + ": no problems\n") << "the others are still told";
    EXPECT_THAT(missing.err.toStdString(), HasSubstr(good + "x: "));
}

} // namespace
} // namespace vantroque
