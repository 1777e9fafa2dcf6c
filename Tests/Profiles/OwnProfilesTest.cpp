#include "Profiles/OwnProfiles.h"

#include "Base/Json.h"
#include "Base/ScopedVariable.h"
#include "Profiles/ProfileStore.h"
#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

Profile profile(const QString& id, const QString& name)
{
    Profile made;
    made.id = id;
    made.name = name;
    return made;
}

class ProfilesOfOnesOwn : public testing::Test {
protected:
    fs::path write(const std::string& name, const Profile& own) const
    {
        return m_home.write("Vantroque/Profiles/" + name, Json::write(own).value());
    }
    std::vector<std::string> problems() const
    {
        std::vector<std::string> problems;
        for (const QString& problem : OwnProfiles::readBeside(m_shipped).problems)
            problems.push_back(problem.toStdString());
        return problems;
    }
    std::vector<QString> names() const
    {
        std::vector<QString> names;
        for (const Profile& each :
             OwnProfiles::joined(m_shipped, OwnProfiles::readBeside(m_shipped)))
            names.push_back(each.name);
        return names;
    }

    const std::vector<Profile> m_shipped{profile(u"a"_s, u"Shipped A"_s),
                                         profile(u"b"_s, u"Shipped B"_s)};
    const TestFolder m_home;
    const ScopedVariable m_data{"XDG_DATA_HOME", m_home.path()};
};

TEST_F(ProfilesOfOnesOwn, ComeBesideTheShippedOnesAndStandInForThoseOfTheirId)
{
    EXPECT_EQ(OwnProfiles::readBeside(m_shipped), OwnProfiles::Found()) << "no folder";
    const fs::path file = write("mine.json", profile(u"c"_s, u"Mine"_s));
    write("better.json", profile(u"b"_s, u"Better B"_s));
    write(".#mine.json", profile(u"d"_s, u"An editor's"_s));
    EXPECT_THAT(names(), ElementsAre(u"Better B"_s, u"Mine"_s, u"Shipped A"_s));
    const auto own = OwnProfiles::readBeside(m_shipped);
    EXPECT_THAT(own.problems, IsEmpty());
    ASSERT_NE(OwnProfiles::find(own, u"c"_s), nullptr);
    EXPECT_EQ(OwnProfiles::find(own, u"c"_s)->file, file);
    EXPECT_FALSE(OwnProfiles::find(own, u"c"_s)->standsIn);
    EXPECT_TRUE(OwnProfiles::find(own, u"b"_s)->standsIn);
    EXPECT_EQ(OwnProfiles::find(own, u"a"_s), nullptr);
}

TEST_F(ProfilesOfOnesOwn, OneThatCannotBeReadIsNamedAndTakesNoOtherAlong)
{
    write("mine.json", profile(u"c"_s, u"Mine"_s));
    const fs::path broken = m_home.write("Vantroque/Profiles/it's broken.json", R"({"id": 5})");
    EXPECT_THAT(problems(), ElementsAre(AllOf(HasSubstr(broken.native() + ": .id: "),
                                              HasSubstr("vantroque-cli profiles --check '"
                                                        + broken.parent_path().native()
                                                        + "/it'\\''s broken.json'"))));
    EXPECT_THAT(names(), ElementsAre(u"Mine"_s, u"Shipped A"_s, u"Shipped B"_s));
}

TEST_F(ProfilesOfOnesOwn, OfTwoWithOneIdTheFirstCounts)
{
    write("1.json", profile(u"c"_s, u"First"_s));
    write("2.json", profile(u"c"_s, u"Second"_s));
    EXPECT_THAT(names(), ElementsAre(u"First"_s, u"Shipped A"_s, u"Shipped B"_s));
    EXPECT_THAT(problems(), ElementsAre(AllOf(HasSubstr("2.json: .id: \"c\" is the id of 1.json"),
                                              HasSubstr("Give one of them another id."))));
}

TEST_F(ProfilesOfOnesOwn, AFileInPlaceOfTheFolderIsNamed)
{
    m_home.write("Vantroque/Profiles", "");
    EXPECT_THAT(problems(), ElementsAre(HasSubstr("/Vantroque/Profiles: Not a directory\n")));
    EXPECT_THAT(names(), ElementsAre(u"Shipped A"_s, u"Shipped B"_s));
}

} // namespace
} // namespace vantroque
