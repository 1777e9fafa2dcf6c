#include "Profiles/ProfileStore.h"

#include "Base/FileUrl.h"
#include "Base/Files.h"
#include "Base/Json.h"
#include "Base/ResourceFolder.h"
#include "Base/Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <system_error>

namespace vantroque::ProfileStore {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

std::vector<fs::path> programRoots()
{
    std::vector<fs::path> roots;
    if (auto resources = ResourceFolder::path())
        roots.push_back(*std::move(resources));
    roots.push_back(ResourceFolder::executableFolder());
    return roots;
}

QString display(const fs::path& path)
{
    return FileUrl::fromPath(path).displayPath();
}

Error profilesMissing(const std::vector<fs::path>& searched)
{
    return {u"Could not find the platform profiles. Looked in:\n"_s
            + Text::joined(searched, u"\n"_s, display)};
}

/// A pattern that is none would let no file pass, and nobody would know why.
Result<void> requirePattern(const Profile& profile)
{
    if (!profile.file || !profile.file->namePattern)
        return {};
    const QRegularExpression pattern(*profile.file->namePattern);
    if (pattern.isValid())
        return {};
    return failure(u".file.namePattern: no regular expression: %1 at character %2"_s.arg(
        pattern.errorString(), QString::number(pattern.patternErrorOffset() + 1)));
}

/// A file for one platform may be the master of another, also of one that nobody chose.
void shareLeaders(std::vector<Profile>& profiles)
{
    std::vector<LeaderLengths> leaders;
    for (const Profile& profile : profiles)
        if (const auto& content = profile.content;
            content && content->slateSeconds && content->slateBlackSeconds)
            if (const LeaderLengths leader{*content->slateSeconds, *content->slateBlackSeconds};
                std::ranges::find(leaders, leader) == leaders.end())
                leaders.push_back(leader);
    for (Profile& profile : profiles)
        if (profile.content)
            profile.content->installedLeaders = leaders;
}

bool precedes(const Profile& a, const Profile& b)
{
    if (a.group != b.group)
        return a.group < b.group;
    // By code point, unlike QString's order, which is by UTF-16 unit.
    return std::ranges::lexicographical_compare(a.name.toUcs4(), b.name.toUcs4());
}

} // namespace

QString noneFoundText()
{
    return u"No platform profiles were found in the app bundle."_s;
}

Result<Profile> parse(const QByteArray& text)
{
    const Profile profile = TRY(Json::read<Profile>(text));
    TRY(requirePattern(profile));
    return profile;
}

QString checkCommand(const fs::path& file)
{
    QString name = display(file);
    if (static const QRegularExpression plain(u"^[\\w./+,=-]+$"_s); !plain.match(name).hasMatch())
        name = u'\'' + name.replace(u'\'', u"'\\''"_s) + u'\'';
    return u"vantroque-cli profiles --check "_s + name;
}

Result<Profile> readFile(const fs::path& file)
{
    auto profile = parse(TRY(Files::read(file, Json::maxBytes)));
    if (!profile)
        return failure(u"%1: %2\nThis tells on which line, and what else is wrong: %3"_s.arg(
            display(file), profile.error().description, checkCommand(file)));
    return profile;
}

Result<std::vector<fs::path>> filesIn(const fs::path& directory)
{
    std::error_code error;
    std::vector<fs::path> files;
    for (fs::directory_iterator entry(directory, error); !error && entry != fs::end(entry);
         entry.increment(error))
        if (FileUrl::fromPath(entry->path()).extension() == "json"_L1)
            files.push_back(entry->path());
    if (error)
        return failure(display(directory) + u": "_s + Files::systemMessage(error.value()));
    std::ranges::sort(files);
    return files;
}

std::vector<Profile> arranged(std::vector<Profile> profiles)
{
    std::ranges::stable_sort(profiles, precedes);
    shareLeaders(profiles);
    return profiles;
}

Directory profilesDirectory()
{
    return profilesDirectory(programRoots());
}

Directory profilesDirectory(const std::vector<fs::path>& roots)
{
    Directory found;
    for (const fs::path& root : roots)
        for (const fs::path& folder : {root / "Vantroque_VantroqueKit.bundle", root})
            found.searched.push_back(folder / "Profiles");
    std::error_code error;
    const auto first = std::ranges::find_if(
        found.searched, [&](const fs::path& path) { return fs::is_directory(path, error); });
    if (first != found.searched.end())
        found.url = *first;
    return found;
}

Result<std::vector<Profile>> loadAll()
{
    return loadAll(programRoots());
}

Result<std::vector<Profile>> loadAll(const std::vector<fs::path>& roots)
{
    const Directory directory = profilesDirectory(roots);
    if (!directory.url)
        return tl::unexpected(profilesMissing(directory.searched));
    return loadFrom(*directory.url);
}

Result<std::vector<Profile>> loadFrom(const fs::path& directory)
{
    std::vector<Profile> profiles;
    for (const fs::path& file : TRY(filesIn(directory)))
        profiles.push_back(TRY(readFile(file)));
    return arranged(std::move(profiles));
}

Result<std::optional<Profile>> profile(const QString& id)
{
    const std::vector<Profile> profiles = TRY(loadAll());
    const auto found = std::ranges::find(profiles, id, &Profile::id);
    return found == profiles.end() ? std::nullopt : std::optional(*found);
}

} // namespace vantroque::ProfileStore
