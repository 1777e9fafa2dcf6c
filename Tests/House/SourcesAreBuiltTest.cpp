#include "Base/Text.h"
#include "Support/TestFolder.h"

#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantroque;
using namespace Qt::StringLiterals;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace {

const fs::path source = VANTROQUE_SOURCE;
const std::vector<std::string> folders{"VantroqueKit", "VantroquePlatform", "VantroquePlay",
                                       "VantroqueCLI", "VantroqueApp",      "Tests"};

std::vector<fs::path> files(bool (*isWanted)(const fs::path&))
{
    std::vector<fs::path> found;
    for (const auto& folder : folders)
        for (const auto& entry : fs::recursive_directory_iterator(source / folder))
            if (isWanted(entry.path()))
                found.push_back(entry.path());
    return found;
}

/// The sources that a build file names, whichever folder it names them from.
QSet<QString> namesInBuildFiles()
{
    static const QRegularExpression name(uR"(([\w-]+\.cpp)\b)"_s);
    QSet<QString> names;
    for (const auto& file :
         files([](const fs::path& path) { return path.filename() == "CMakeLists.txt"; }))
        for (const auto& match : name.globalMatch(QString::fromUtf8(contents(file))))
            names.insert(match.captured(1));
    return names;
}

} // namespace

// A test that a merge dropped from its list would never fail again.
TEST(Sources, AreAllNamedInABuildFile)
{
    const QSet<QString> named = namesInBuildFiles();
    ASSERT_GT(named.size(), 100);
    QStringList missing;
    for (const auto& file : files([](const fs::path& path) { return path.extension() == ".cpp"; }))
        if (!named.contains(QString::fromStdString(file.filename().native())))
            missing << QString::fromStdString(fs::relative(file, source).native());
    EXPECT_THAT(missing, IsEmpty()) << missing.join(u", "_s).toStdString();
}
