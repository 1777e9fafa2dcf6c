#include "Base/Text.h"
#include "Support/TestFolder.h"

#include <QRegularExpression>
#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

using namespace vantroque;
using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

const fs::path source = VANTROQUE_SOURCE;

struct Floor {
    int number = 0;
    std::set<QString> mayUse; ///< Folders named in the row.
};

QString text(const fs::path& file)
{
    return QString::fromUtf8(contents(file));
}

/// The tables of folders in the architecture page: those of the kit, and the rooms of the window's
/// model and views, which are called "Model/Room" and "Views/Room".
std::map<QString, Floor> floors()
{
    static const QRegularExpression row(uR"(^\| (\d) \| `([\w/]+)` \|.*\| ([^|]+) \|$)"_s,
                                        QRegularExpression::MultilineOption);
    std::map<QString, Floor> table;
    for (const auto& match : row.globalMatch(text(source / "docs/ARCHITECTURE.md"))) {
        Floor floor{match.captured(1).toInt(), {}};
        for (const QString& name : match.captured(3).split(u", "_s))
            floor.mayUse.insert(name);
        table[match.captured(2)] = floor;
    }
    return table;
}

/// What a folder may include: itself, what its row names, and what those may.
std::set<QString> reach(const std::map<QString, Floor>& table, const QString& folder)
{
    std::set<QString> found{folder};
    if (const auto floor = table.find(folder); floor != table.end())
        for (const QString& used : floor->second.mayUse)
            found.merge(reach(table, used));
    return found;
}

QStringList includedFolders(const fs::path& file)
{
    static const QRegularExpression include(
        uR"(^#include "(?:VantroqueApp/(?=(?:Model|Views)/\w+/))?((?:(?:Model|Views)/)?\w+)/)"_s,
        QRegularExpression::MultilineOption);
    QStringList folders;
    for (const auto& match : include.globalMatch(text(file)))
        folders << match.captured(1);
    return folders;
}

bool isRoomOfModel(const QString& folder)
{
    return folder.startsWith(u"Model/"_s);
}

bool isRoomOfViews(const QString& folder)
{
    return folder.startsWith(u"Views/"_s);
}

fs::path placeOf(const QString& folder)
{
    const bool isInWindow = isRoomOfModel(folder) || isRoomOfViews(folder);
    return source / (isInWindow ? "VantroqueApp" : "VantroqueKit") / folder.toStdString();
}

bool isInKit(const std::map<QString, Floor>& table, const QString& folder)
{
    return table.contains(folder) && !isRoomOfModel(folder) && !isRoomOfViews(folder);
}

/// What the window may use without being told: the kit, but not the adapters, which only the
/// start-up links. The model as a whole stands in the row of who may use it.
bool mayUse(const std::map<QString, Floor>& table, const QString& folder, const QString& included)
{
    const auto allowed = reach(table, folder);
    const bool isInWindow = isRoomOfModel(folder) || isRoomOfViews(folder);
    return allowed.contains(included) || (isInWindow && isInKit(table, included))
           || (included == u"VantroqueApp"_s && allowed.contains(u"the model"_s));
}

std::vector<fs::path> sourcesUnder(const fs::path& folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files.push_back(entry.path());
    return files;
}

} // namespace

TEST(IncludeFloors, ThePageListsExactlyTheFoldersThatAreThere)
{
    std::set<QString> listed;
    for (const auto& [folder, floor] : floors())
        listed.insert(folder);
    std::set<QString> present;
    for (const QString& rooms : {QString(), u"Model/"_s, u"Views/"_s})
        for (const auto& entry : fs::directory_iterator(placeOf(rooms)))
            if (entry.is_directory())
                present.insert(rooms + QString::fromStdString(entry.path().filename().native()));
    EXPECT_EQ(listed, present);
}

TEST(IncludeFloors, ArrowsBetweenFoldersLeadDown)
{
    const auto table = floors();
    for (const auto& [folder, floor] : table)
        for (const QString& used : floor.mayUse) {
            const auto below = table.find(used);
            EXPECT_TRUE(below == table.end() || below->second.number < floor.number)
                << folder.toStdString() << " uses " << used.toStdString();
        }
}

TEST(IncludeFloors, FilesIncludeOnlyWhatTheirFolderMayUse)
{
    const auto table = floors();
    for (const auto& [folder, floor] : table) {
        for (const fs::path& file : sourcesUnder(placeOf(folder)))
            for (const QString& included : includedFolders(file))
                EXPECT_TRUE(mayUse(table, folder, included))
                    << file << " includes " << included.toStdString();
    }
}

TEST(IncludeFloors, TheModelOfTheWindowKnowsNoViewsAndNoAdapters)
{
    const auto table = floors();
    for (const fs::path& file : sourcesUnder(source / "VantroqueApp/Model"))
        for (const QString& included : includedFolders(file))
            EXPECT_TRUE(included == u"VantroqueApp"_s || isRoomOfModel(included)
                        || isInKit(table, included))
                << file << " includes " << included.toStdString();
}
