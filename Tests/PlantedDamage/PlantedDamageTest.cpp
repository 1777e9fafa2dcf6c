#include "Analysis/Analyzer.h"
#include "Base/Text.h"
#include "PlantedDamage/DamagedClips.h"
#include "Support/TestFolder.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

// Clips of known damage. The table of docs/DAMAGE.md says what becomes of each; what the analysis
// really does must be what the page says.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using namespace DamagedClips;

/// A group of pictures, and a window of sound.
constexpr double tolerance = 0.48 + 0.1;

Profile gate()
{
    Profile profile;
    profile.id = u"gate"_s;
    profile.name = u"Gate"_s;
    profile.loudness = LoudnessRule();
    return profile;
}

/// The line of the page that begins with that cell.
QString pageLine(const QString& cell)
{
    const QString page = QString::fromUtf8(contents(VANTROQUE_DAMAGE_PAGE));
    for (const QString& line : page.split(u'\n'))
        if (line.startsWith(u"| "_s + cell + u" |"_s))
            return line;
    return {};
}

QString lineOf(const QStringList& cells)
{
    return u"| "_s + cells.join(u" | "_s) + u" |"_s;
}

/// Where the first thing that is wrong was found.
std::optional<double> foundAt(const DecodeHealth& health)
{
    std::optional<double> place = health.endsAt;
    if (!health.places.empty())
        place = std::min(place.value_or(health.places.front().start), health.places.front().start);
    return place;
}

bool endsWithDecoding(const ProfileReport& report)
{
    return !report.checks.empty() && report.checks.back().id == u"decoding"
           && report.checks.back().verdict == Verdict::fail;
}

bool tellsOf(const Analyzer::Analysis& analysis)
{
    const FileReport& report = analysis.report;
    const auto events = report.events.value_or(std::vector<SignalEvent>());
    const bool hasEvent = std::ranges::any_of(
        events, [](const auto& event) { return event.kind == SignalEvent::Kind::decoding; });
    const bool hasSection = report.sections && endsWithDecoding(report.sections->front());
    const bool hasGate = endsWithDecoding(report.profiles.front());
    EXPECT_EQ(hasGate, !analysis.media.signal->decodeHealth->isWhole());
    EXPECT_EQ(hasGate, hasSection);
    EXPECT_EQ(hasGate, hasEvent);
    return hasGate;
}

QString outcome(const std::filesystem::path& file, const std::optional<double>& planted)
{
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {gate()});
    if (!analysis)
        return u"no report"_s;
    if (!tellsOf(*analysis))
        return u"not seen"_s;
    const auto place = foundAt(analysis->media.signal->decodeHealth.value());
    const bool isThere =
        planted && place && std::abs(*place - std::max(*planted, 0.0)) <= tolerance;
    // A lost index or footer takes no frame: the file is cut off, and that is all.
    return isThere || !planted ? u"found"_s : u"found, elsewhere"_s;
}

class PlantedDamage : public testing::TestWithParam<std::size_t> {};

std::string testName(const testing::TestParamInfo<std::size_t>& info)
{
    std::string name = clips().at(info.param).file;
    std::ranges::replace_if(
        name, [](char c) { return c == '-' || c == '.'; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, PlantedDamage,
                         testing::Range(std::size_t{0}, DamagedClips::clips().size()), testName);

TEST_P(PlantedDamage, IsFoundAsThePageSays)
{
    const Clip& clip = clips().at(GetParam());
    const auto path = intact(clip);
    const QByteArray whole = contents(path);
    const auto list = packets(path);
    const TestFolder folder;
    QStringList heading{u"Clip"_s};
    QStringList row{Text::utf8(clip.name)};
    for (const Planted& planted : faults(whole, list)) {
        const auto file = folder.write(clip.file, damaged(whole, planted.fault));
        heading << Text::utf8(planted.name);
        row << outcome(file, firstTouched(list, planted.fault));
    }
    EXPECT_EQ(lineOf(heading), pageLine(heading.front()));
    EXPECT_EQ(lineOf(row), pageLine(row.front()));
}

TEST_P(PlantedDamage, IsNotSeenInTheIntactClip)
{
    const auto analysis =
        Analyzer::analyze(FileUrl::fromPath(intact(clips().at(GetParam()))), {gate()});
    ASSERT_TRUE(analysis);
    EXPECT_FALSE(tellsOf(*analysis));
}

} // namespace
} // namespace vantroque
