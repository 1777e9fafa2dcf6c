#include "Profiles/ProfileStore.h"

#include "Base/FileUrl.h"
#include "Base/Json.h"
#include "Support/TestFolder.h"

#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

QByteArray profileText(const QString& id, ProfileGroup group = ProfileGroup::digital,
                       const QString& name = u"Name"_s)
{
    Profile profile;
    profile.id = id;
    profile.name = name;
    profile.group = group;
    return Json::write(profile).value();
}

std::vector<QString> idsOf(const Result<std::vector<Profile>>& profiles)
{
    std::vector<QString> ids;
    if (!profiles)
        return {profiles.error().description};
    for (const Profile& profile : *profiles)
        ids.push_back(profile.id);
    return ids;
}

QString display(const fs::path& path)
{
    return FileUrl::fromPath(path).displayPath();
}

/// What is said after the mistake in a file.
QString whatToDo(const fs::path& file)
{
    return u"\nThis tells on which line, and what else is wrong: vantroque-cli profiles --check "_s
           + display(file);
}

/// Ends a child process with what `loadFrom` says to a user whom permissions bind.
[[noreturn]] void loadAsNobody(const fs::path& directory)
{
    if (::geteuid() == 0 && ::setuid(65534) != 0)
        std::_Exit(2);
    const auto profiles = ProfileStore::loadFrom(directory);
    std::cerr << (profiles ? "loaded" : profiles.error().description.toStdString()) << std::flush;
    std::_Exit(profiles ? 1 : 0);
}

TEST(ProfileStore, ProfilesComeByGroupAndThenByName)
{
    const TestFolder folder;
    folder.write("1.json", profileText(u"advice"_s, ProfileGroup::recommendation, u"A"_s));
    folder.write("2.json", profileText(u"antenna"_s, ProfileGroup::broadcast, u"B"_s));
    folder.write("3.json", profileText(u"second"_s, ProfileGroup::digital, u"Beta"_s));
    folder.write("4.json", profileText(u"first"_s, ProfileGroup::digital, u"Alpha"_s));
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())),
                ElementsAre(u"first"_s, u"second"_s, u"antenna"_s, u"advice"_s));
}

TEST(ProfileStore, AProfileKnowsTheLeadersOfAllThatAreLoadedWithIt)
{
    const TestFolder folder;
    const auto add = [&folder](const char* name, double slate, double black) {
        Profile profile;
        profile.id = QString::fromLatin1(name);
        profile.content.emplace();
        if (slate > 0) {
            profile.content->slateSeconds = slate;
            profile.content->slateBlackSeconds = black;
        }
        folder.write(name + std::string(".json"), Json::write(profile).value());
    };
    add("a", 0, 0);
    add("b", 4, 2);
    add("c", 4, 2);
    add("d", 12, 3);
    folder.write("e.json", profileText(u"e"_s));
    const auto profiles = ProfileStore::loadFrom(folder.path()).value();
    for (const Profile& profile : profiles) {
        if (profile.content) {
            EXPECT_THAT(profile.content->installedLeaders,
                        ElementsAre(LeaderLengths{4, 2}, LeaderLengths{12, 3}));
        }
    }
    EXPECT_FALSE(profiles.back().content);
}

TEST(ProfileStore, NamesCompareByCodePointAndEqualOnesKeepTheOrderOfTheFiles)
{
    const TestFolder folder;
    // U+1F4FA lies above U+FF21, yet its first UTF-16 unit lies below.
    folder.write("1.json", profileText(u"emoji"_s, ProfileGroup::digital, u"\U0001F4FA"_s));
    folder.write("2.json", profileText(u"fullwidth"_s, ProfileGroup::digital, u"\uFF21"_s));
    folder.write("3.json", profileText(u"small"_s, ProfileGroup::digital, u"a"_s));
    folder.write("4.json", profileText(u"capital"_s, ProfileGroup::digital, u"Z"_s));
    folder.write("5.json", profileText(u"capital twin"_s, ProfileGroup::digital, u"Z"_s));
    EXPECT_THAT(
        idsOf(ProfileStore::loadFrom(folder.path())),
        ElementsAre(u"capital"_s, u"capital twin"_s, u"small"_s, u"fullwidth"_s, u"emoji"_s));
}

TEST(ProfileStore, OnlyTheExtensionInSmallLettersCounts)
{
    const TestFolder folder;
    folder.write("a.json", profileText(u"a"_s));
    folder.write("b.JSON", profileText(u"b"_s));
    folder.write("c.json.bak", "damaged");
    folder.write("json", "damaged");
    folder.write(".json", "damaged");
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())), ElementsAre(u"a"_s));
}

TEST(ProfileStore, AnEmptyFolderHoldsNoProfiles)
{
    const TestFolder folder;
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())), IsEmpty());
    EXPECT_EQ(ProfileStore::noneFoundText(),
              u"No platform profiles were found in the app bundle."_s);
}

TEST(ProfileStore, AMissingFolderIsNamed)
{
    const TestFolder folder;
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder / "none")),
                ElementsAre(display(folder / "none") + u": No such file or directory"_s));
}

TEST(ProfileStore, AFileInPlaceOfTheFolderIsNamed)
{
    const TestFolder folder;
    const fs::path file = folder.write("Profiles", "");
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(file)),
                ElementsAre(display(file) + u": Not a directory"_s));
}

TEST(ProfileStore, AFolderThatCannotBeListedIsNamed)
{
    const TestFolder folder;
    folder.write("closed/a.json", profileText(u"a"_s));
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(folder / "closed", fs::perms::none);
    EXPECT_EXIT(loadAsNobody(folder / "closed"), testing::ExitedWithCode(0),
                "/closed: Permission denied$");
    fs::permissions(folder / "closed", fs::perms::owner_all);
}

TEST(ProfileStore, AFileThatCannotBeReadIsNamed)
{
    const TestFolder folder;
    const fs::path file = folder.write("a.json", profileText(u"a"_s));
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(file, fs::perms::none);
    EXPECT_EXIT(loadAsNobody(folder.path()), testing::ExitedWithCode(0),
                "/a\\.json: Permission denied$");
}

TEST(ProfileStore, OneDamagedFileStopsAllAndIsNamed)
{
    const TestFolder folder;
    folder.write("a.json", profileText(u"a"_s));
    const fs::path file = folder.write("b.json", R"({"id": )");
    const auto profiles = ProfileStore::loadFrom(folder.path());
    ASSERT_FALSE(profiles);
    EXPECT_TRUE(profiles.error().description.startsWith(display(file) + u": not valid JSON"_s))
        << profiles.error().description.toStdString();
}

TEST(ProfileStore, AFileThatIsNoProfileStopsAllWithThePlaceInIt)
{
    const TestFolder folder;
    folder.write("a.json", profileText(u"a"_s));
    QByteArray text = profileText(u"b"_s);
    text.insert(1, R"("video": {"codecs": [{}], "resolutions": []},)");
    const fs::path file = folder.write("b.json", text);
    EXPECT_THAT(
        idsOf(ProfileStore::loadFrom(folder.path())),
        ElementsAre(display(file) + u": .video.codecs[0].codec: missing"_s + whatToDo(file)));
}

TEST(ProfileStore, APatternForNamesThatIsNoneStopsAllWithThePlaceInIt)
{
    const auto withPattern = [](const QString& pattern) {
        Profile profile;
        profile.id = u"b"_s;
        profile.file = FileRule();
        profile.file->namePattern = pattern;
        return Json::write(profile).value();
    };
    const TestFolder folder;
    const fs::path file = folder.write("b.json", withPattern(u"^[a-z]+_\\d{2}$"_s));
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())), ElementsAre(u"b"_s));
    for (const QString& pattern : {u"("_s, u"[a"_s, u"*"_s, u"a{2,1}"_s, u"\\"_s}) {
        folder.write("b.json", withPattern(pattern));
        const auto profiles = ProfileStore::loadFrom(folder.path());
        ASSERT_FALSE(profiles) << pattern.toStdString();
        EXPECT_TRUE(profiles.error().description.startsWith(
            display(file) + u": .file.namePattern: no regular expression: "_s))
            << profiles.error().description.toStdString();
    }
}

TEST(ProfileStore, TheFirstDamagedFileByNameIsTheOneNamed)
{
    const TestFolder folder;
    folder.write("c.json", "{}");
    folder.write("b.json", "{}");
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())),
                ElementsAre(display(folder / "b.json") + u": .id: missing"_s
                            + whatToDo(folder / "b.json")));
}

TEST(ProfileStore, ASubfolderNamedLikeAProfileStopsAll)
{
    const TestFolder folder;
    folder.write("x.json/a.json", profileText(u"a"_s));
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())),
                ElementsAre(display(folder / "x.json") + u": not a file"_s));
}

TEST(ProfileStore, ALinkToNowhereStopsAll)
{
    const TestFolder folder;
    fs::create_symlink("gone", folder / "a.json");
    EXPECT_THAT(idsOf(ProfileStore::loadFrom(folder.path())),
                ElementsAre(display(folder / "a.json") + u": No such file or directory"_s));
}

TEST(ProfileStore, EachRootIsSearchedInItsBundleFirst)
{
    const TestFolder folder;
    fs::create_directories(folder / "two/Profiles");
    folder.write("one/Profiles", "a file");
    const std::vector roots{folder / "one", folder / "two"};
    auto found = ProfileStore::profilesDirectory(roots);
    EXPECT_EQ(found.url, folder / "two/Profiles");
    EXPECT_THAT(found.searched, ElementsAre(folder / "one/Vantroque_VantroqueKit.bundle/Profiles",
                                            folder / "one/Profiles",
                                            folder / "two/Vantroque_VantroqueKit.bundle/Profiles",
                                            folder / "two/Profiles"));
    fs::create_directories(found.searched[2]);
    EXPECT_EQ(ProfileStore::profilesDirectory(roots).url, found.searched[2]);
}

TEST(ProfileStore, WithoutAnyFolderTheErrorListsWhereItLooked)
{
    const TestFolder folder;
    EXPECT_THAT(idsOf(ProfileStore::loadAll({folder / "a", folder / "b"})),
                ElementsAre(u"Could not find the platform profiles. Looked in:\n"
                            "%1/a/Vantroque_VantroqueKit.bundle/Profiles\n%1/a/Profiles\n"
                            "%1/b/Vantroque_VantroqueKit.bundle/Profiles\n%1/b/Profiles"_s.arg(
                                display(folder.path()))));
}

TEST(ProfileStore, TheProgramFindsItsOwnProfiles)
{
    const auto directory = ProfileStore::profilesDirectory();
    ASSERT_TRUE(directory.url);
    EXPECT_EQ(directory.searched.size(), 4U);
    EXPECT_EQ(idsOf(ProfileStore::loadAll()), idsOf(ProfileStore::loadFrom(*directory.url)));
}

TEST(ProfileStore, AProfileIsFoundByItsId)
{
    const auto found = ProfileStore::profile(u"tiktok-in-feed"_s);
    ASSERT_TRUE(found && *found);
    EXPECT_EQ((*found)->id, u"tiktok-in-feed"_s);
    EXPECT_EQ(ProfileStore::profile(u"no such profile"_s).value(), std::nullopt);
}

} // namespace
} // namespace vantroque
