#include "CLI/Cli.h"
#include "Support/TestFolder.h"

#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What the user's guide says can be done.

namespace vantroque {
namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

const fs::path guide = VANTROQUE_GUIDE;

struct Page {
    std::string name;
    QString text;
};

std::vector<Page> pages(const fs::path& folder, const std::string& extension)
{
    std::vector<Page> pages;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension)
            pages.push_back({entry.path().filename(), QString::fromUtf8(contents(entry.path()))});
    return pages;
}

TEST(Guide, LeadsToPagesAndPicturesThatAreThere)
{
    static const QRegularExpression link(uR"re((?:href|src)="([^"]*)")re"_s);
    QSet<QString> met;
    for (const Page& page : pages(guide, ".html"))
        for (const auto& match : link.globalMatch(page.text)) {
            const QString target = match.captured(1);
            met.insert(target);
            EXPECT_TRUE(fs::exists(guide / target.toStdString()))
                << page.name << ": " << target.toStdString();
        }
    for (const auto& entry : fs::directory_iterator(guide))
        EXPECT_TRUE(met.contains(QString::fromStdString(entry.path().filename())))
            << "no page shows " << entry.path().filename();
}

/// Each command alone and with each of its options, as fish is told of them: a line for each.
QSet<QString> knownWords()
{
    static const QRegularExpression command(uR"(__fish_use_subcommand -a (\S+))"_s);
    static const QRegularExpression option(uR"(__fish_seen_subcommand_from (\S+)' -l (\S+))"_s);
    const QString told = QString::fromUtf8(Cli::run({"--completion", "fish"}).out);
    QSet<QString> known{u"--help"_s};
    for (const auto& match : command.globalMatch(told))
        known << match.captured(1);
    for (const auto& match : option.globalMatch(told))
        known << match.captured(1) + u" --"_s + match.captured(2);
    return known;
}

TEST(Guide, CallsCommandsWithOptionsThatTheyHave)
{
    static const QRegularExpression call(uR"(vantroque-cli (--?[a-z]+|[a-z]+)([^<;|\n]*))"_s);
    static const QRegularExpression option(uR"((?<=\s)(--[a-z][a-z-]*))"_s);
    const QSet<QString> known = knownWords();
    auto all = pages(guide, ".html");
    std::ranges::copy(pages(VANTROQUE_CI_EXAMPLES, ".yml"), std::back_inserter(all));
    int calls = 0;
    for (const Page& page : all)
        for (const auto& match : call.globalMatch(page.text)) {
            ++calls;
            const QString command = match.captured(1);
            EXPECT_TRUE(known.contains(command)) << page.name << ": " << command.toStdString();
            for (const auto& word : option.globalMatch(match.captured(2)))
                EXPECT_TRUE(known.contains(command + u' ' + word.captured(1)))
                    << page.name << ": " << match.captured(0).toStdString();
        }
    EXPECT_GT(calls, 10);
}

TEST(Guide, ShowsAProfileThatIsRead)
{
    const fs::path folder = VANTROQUE_EXAMPLE_PROFILES;
    const auto listed = Cli::run({"profiles", "--profiles-dir", folder.native()});
    EXPECT_EQ(listed.status, 0) << listed.err.toStdString();
    EXPECT_THAT(
        QString::fromUtf8(contents(guide / "profiles.html")).toStdString(),
        testing::HasSubstr(contents(folder / "northlight-online.json").trimmed().toStdString()));
}

} // namespace
} // namespace vantroque
