#include "Model/ModelFixture.h"

#include <QSignalSpy>

namespace vantroque {
namespace {

class SavedSetsOfPlatforms : public ModelTest {
protected:
    ProfileSets& begin()
    {
        return startHeld({plainProfile(u"a"_s), plainProfile(u"b"_s), plainProfile(u"c"_s)})
            .profileSets();
    }
    void choose(const std::set<QString>& ids) { model().profiles().setEnabledProfileIDs(ids); }
    QStringList setNames()
    {
        QStringList names;
        for (const ProfileSet& set : model().profileSets().sets())
            names << set.name;
        return names;
    }
    /// What an earlier or another version left.
    ProfileSets& beginWith(const QString& stored)
    {
        {
            UserDefaults defaults(QString::fromStdString((m_folder / "settings").native()));
            defaults.setText(u"profiles.sets"_s, stored);
        }
        return begin();
    }
};

TEST_F(SavedSetsOfPlatforms, AFreshInstallHasNone)
{
    EXPECT_TRUE(begin().sets().empty());
}

TEST_F(SavedSetsOfPlatforms, KeepTheChoiceUnderAPlainName)
{
    auto& sets = begin();
    choose({u"a"_s, u"c"_s});
    sets.save(u"  US \n broadcast "_s);
    ASSERT_EQ(setNames(), QStringList{u"US broadcast"_s});
    EXPECT_EQ(sets.count(0), 2U);
    EXPECT_EQ(sets.current(), 0U);
    choose({u"b"_s});
    EXPECT_EQ(sets.current(), std::nullopt);
    sets.choose(0);
    EXPECT_EQ(model().profiles().enabledProfileIDs(), (std::set{u"a"_s, u"c"_s}));
}

TEST_F(SavedSetsOfPlatforms, AreThereAfterTheNextStart)
{
    auto& sets = begin();
    choose({u"b"_s});
    sets.save(u"One"_s);
    quit();
    begin();
    EXPECT_EQ(setNames(), QStringList{u"One"_s});
    EXPECT_EQ(model().profileSets().current(), 0U);
}

TEST_F(SavedSetsOfPlatforms, AnEmptyChoiceAndOneThatHasANameAreNotWorthAnother)
{
    auto& sets = begin();
    choose({});
    EXPECT_FALSE(sets.canSave());
    sets.save(u"Nothing"_s);
    choose({u"a"_s});
    EXPECT_TRUE(sets.canSave());
    sets.save(u"  "_s);
    EXPECT_TRUE(sets.sets().empty());
    sets.save(u"A"_s);
    EXPECT_FALSE(sets.canSave());
    sets.save(u"A again"_s);
    EXPECT_EQ(setNames(), QStringList{u"A"_s});
}

TEST_F(SavedSetsOfPlatforms, SavingUnderATakenNameReplacesIt)
{
    auto& sets = begin();
    choose({u"a"_s});
    sets.save(u"Mine"_s);
    choose({u"b"_s, u"c"_s});
    sets.save(u"mine"_s);
    EXPECT_EQ(setNames(), QStringList{u"Mine"_s});
    EXPECT_EQ(sets.current(), 0U);
    EXPECT_EQ(sets.count(0), 2U);
}

TEST_F(SavedSetsOfPlatforms, CanBeRenamedButNotToATakenName)
{
    auto& sets = begin();
    choose({u"a"_s});
    sets.save(u"A"_s);
    choose({u"b"_s});
    sets.save(u"B"_s);
    sets.rename(1, u"a"_s);
    EXPECT_EQ(setNames(), (QStringList{u"A"_s, u"B"_s}));
    sets.rename(1, u" "_s);
    EXPECT_EQ(setNames(), (QStringList{u"A"_s, u"B"_s}));
    sets.rename(1, u"b"_s);
    EXPECT_EQ(setNames(), (QStringList{u"A"_s, u"b"_s})) << "its own";
    EXPECT_EQ(sets.current(), 1U);
}

TEST_F(SavedSetsOfPlatforms, CanBeUpdatedAndDeleted)
{
    auto& sets = begin();
    choose({u"a"_s});
    sets.save(u"A"_s);
    choose({u"a"_s, u"b"_s});
    const QSignalSpy changes(&sets, &ProfileSets::changed);
    sets.update(0);
    EXPECT_EQ(sets.current(), 0U);
    EXPECT_EQ(sets.count(0), 2U);
    sets.remove(0);
    EXPECT_TRUE(sets.sets().empty());
    EXPECT_TRUE(sets.canSave());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(SavedSetsOfPlatforms, KeepWhatThisVersionDoesNotKnowAndDoNotCountIt)
{
    auto& sets = beginWith(uR"([{"name":"Old","profileIDs":["gone","a"]}])"_s);
    EXPECT_EQ(sets.count(0), 1U);
    choose({u"a"_s});
    EXPECT_EQ(sets.current(), 0U);
    choose({u"b"_s});
    sets.update(0);
    EXPECT_EQ(sets.count(0), 1U);
    quit();
    begin();
    EXPECT_EQ(model().profileSets().sets().at(0).profileIDs, (std::vector{u"b"_s, u"gone"_s}));
}

TEST_F(SavedSetsOfPlatforms, OneOfUnknownPlatformsNeverEqualsTheChoice)
{
    auto& sets = beginWith(uR"([{"name":"Old","profileIDs":["gone"]}])"_s);
    choose({});
    EXPECT_EQ(sets.current(), std::nullopt);
    EXPECT_EQ(sets.count(0), 0U);
}

TEST_F(SavedSetsOfPlatforms, WhatCannotBeReadIsIgnored)
{
    for (const QString& damaged :
         {u"not JSON"_s, u"{}"_s, u"[1,null,[],{}]"_s, u"[{\"name\":\"A\"}]"_s,
          u"[{\"name\":3,\"profileIDs\":[]}]"_s, u"[{\"name\":\"A\",\"profileIDs\":[1]}]"_s,
          u"[{\"name\":\" \",\"profileIDs\":[\"a\"]}]"_s})
        EXPECT_TRUE(beginWith(damaged).sets().empty()) << damaged.toStdString();
    beginWith(uR"([{"name":"A","profileIDs":["a"]},7,{"name":"a","profileIDs":["b"]},
                   {"name":"B","profileIDs":["b"]}])"_s);
    EXPECT_EQ(setNames(), (QStringList{u"A"_s, u"B"_s})) << "each by itself, no name twice";
}

TEST_F(SavedSetsOfPlatforms, EndlessNamesAndNumbersOfSetsAreCut)
{
    QStringList stored;
    for (int i = 0; i < 300; ++i)
        stored << uR"({"name":"%1 %2","profileIDs":["a"]})"_s.arg(i).arg(QString(5000, u'x'));
    auto& sets = beginWith(u'[' + stored.join(u',') + u']');
    EXPECT_EQ(sets.sets().size(), ProfileSets::most);
    EXPECT_EQ(sets.sets().front().name.size(), ProfileSets::longestName);
    choose({u"b"_s});
    EXPECT_FALSE(sets.canSave());
}

} // namespace
} // namespace vantroque
