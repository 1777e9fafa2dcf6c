#include "Base/Json.h"
#include "CLI/Cli.h"
#include "Profiles/ProfileStore.h"
#include "Profiles/SpecFreshness.h"
#include "Support/Media.h"

#include <QJsonArray>

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

TEST(InstalledProfiles, AreFoundByTheProgram)
{
    const auto shipped = ProfileStore::loadFrom(VANTROQUE_SHIPPED_PROFILES).value();
    EXPECT_EQ(listed<Profile>(Cli::run({"profiles", "--format", "json"})), shipped);
}

} // namespace
} // namespace vantroque
