#include "Profiles/ProfileSelection.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

Profile make(const QString& id, ProfileGroup group)
{
    Profile profile;
    profile.id = id;
    profile.group = group;
    return profile;
}

const Profile social = make(u"social"_s, ProfileGroup::digital);
const Profile streaming = make(u"streaming"_s, ProfileGroup::digital);
const Profile antenna = make(u"antenna"_s, ProfileGroup::broadcast);
const Profile cable = make(u"cable"_s, ProfileGroup::broadcast);
const Profile advice = make(u"advice"_s, ProfileGroup::recommendation);

class ProfileSelection : public testing::Test {
protected:
    TestFolder folder;
    UserDefaults defaults{QString::fromStdString((folder / "defaults.ini").native())};
    ProfileSelectionStore store{defaults};
};

TEST_F(ProfileSelection, AtFirstStartTheDigitalProfilesAreOn)
{
    EXPECT_THAT(store.load({social, streaming, antenna, advice}),
                ElementsAre(u"social"_s, u"streaming"_s));
}

TEST_F(ProfileSelection, TheSavedChoiceComesBack)
{
    store.save({u"antenna"_s, u"streaming"_s}, {social, streaming, antenna, advice});
    EXPECT_THAT(store.load({social, streaming, antenna, advice}),
                ElementsAre(u"antenna"_s, u"streaming"_s));
}

TEST_F(ProfileSelection, NothingChosenStaysNothing)
{
    store.save({}, {social, antenna});
    EXPECT_THAT(store.load({social, antenna}), IsEmpty());
}

TEST_F(ProfileSelection, ANewDigitalProfileComesOnAndANewBroadcastOneStaysOff)
{
    store.save({u"antenna"_s}, {social, antenna});
    EXPECT_THAT(store.load({social, streaming, antenna, cable, advice}),
                ElementsAre(u"antenna"_s, u"streaming"_s));
}

TEST_F(ProfileSelection, AProfileThatNoLongerExistsDropsOut)
{
    store.save({u"antenna"_s, u"social"_s}, {social, antenna});
    EXPECT_THAT(store.load({antenna}), ElementsAre(u"antenna"_s));
}

TEST_F(ProfileSelection, WithoutTheKnownIdsNoProfileCountsAsNew)
{
    defaults.setTextList(u"profiles.enabled"_s, {u"antenna"_s});
    EXPECT_THAT(store.load({social, antenna}), ElementsAre(u"antenna"_s));
}

TEST_F(ProfileSelection, KnownIdsOfAnotherTypeCountAsAbsent)
{
    defaults.setTextList(u"profiles.enabled"_s, {u"antenna"_s});
    defaults.setText(u"profiles.known"_s, u"antenna"_s);
    EXPECT_THAT(store.load({social, antenna}), ElementsAre(u"antenna"_s));
}

TEST_F(ProfileSelection, AnEnabledEntryOfAnotherTypeGivesTheDefault)
{
    defaults.setText(u"profiles.enabled"_s, u"antenna"_s);
    EXPECT_THAT(store.load({social, antenna}), ElementsAre(u"social"_s));
}

TEST_F(ProfileSelection, AnEnabledIdThatIsNotKnownStaysOn)
{
    defaults.setTextList(u"profiles.enabled"_s, {u"cable"_s});
    defaults.setTextList(u"profiles.known"_s, {});
    EXPECT_THAT(store.load({antenna, cable}), ElementsAre(u"cable"_s));
}

TEST_F(ProfileSelection, BothListsAreSavedAscending)
{
    store.save({u"streaming"_s, u"antenna"_s}, {streaming, social, antenna});
    EXPECT_EQ(defaults.textList(u"profiles.enabled"_s),
              (QStringList{u"antenna"_s, u"streaming"_s}));
    EXPECT_EQ(defaults.textList(u"profiles.known"_s),
              (QStringList{u"antenna"_s, u"social"_s, u"streaming"_s}));
}

TEST_F(ProfileSelection, TheChoiceOutlivesTheProgram)
{
    const auto file = QString::fromStdString((folder / "kept.ini").native());
    {
        UserDefaults earlier(file);
        ProfileSelectionStore(earlier).save({u"antenna"_s}, {social, antenna});
    }
    UserDefaults later(file);
    EXPECT_THAT(ProfileSelectionStore(later).load({social, antenna}), ElementsAre(u"antenna"_s));
}

} // namespace
} // namespace vantroque
