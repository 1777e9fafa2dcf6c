#include "Analysis/Analyzer.h"
#include "Base/Json.h"
#include "Base/Text.h"
#include "Profiles/ProfileStore.h"
#include "Support/Media.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <stdexcept>

// Each case is a fault of known place and size in a generated clip, and the same clip without it.
// The report must find the fault where it was planted, say nothing else about the clip, and keep
// silent about its twin. docs/PLANTED-FAULTS.md lists the cases.

namespace vantroque {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

/// A row of the report. A "#" in the text stands for a whole number that no recipe determines.
struct ExpectedRow {
    QString section;
    QString id;
    Verdict verdict = Verdict::info;
    QString measured;
    std::optional<QString> expected; ///< The row's own expectation, where it matters.
    std::optional<QString> fix;      ///< What the row advises, where it matters.

    VANTROQUE_RECORD(ExpectedRow, section, id, verdict, measured, expected, fix)
};

struct ExpectedEvent {
    SignalEvent::Kind kind = SignalEvent::Kind::levels;
    std::int64_t frame = 0;
    std::optional<std::int64_t> endFrame;
    Verdict verdict = Verdict::info;
    QString text;

    VANTROQUE_RECORD(ExpectedEvent, kind, frame, endFrame, verdict, text)
};

/// To a tenth, as EBU Tech 3341 and 3342 ask of a meter.
struct ExpectedLoudness {
    std::optional<double> integratedLKFS;
    std::optional<double> loudnessRangeLU;

    VANTROQUE_RECORD(ExpectedLoudness, integratedLKFS, loudnessRangeLU)
};

/// No row but these may warn or fail, and there are no other events.
struct ExpectedReport {
    std::vector<ExpectedRow> rows;
    std::vector<ExpectedEvent> events;
    std::optional<ExpectedLoudness> loudness;

    VANTROQUE_RECORD(ExpectedReport, rows, events, loudness)
};

struct Expectation {
    QString profile;
    ExpectedReport faulty;
    ExpectedReport clean;

    VANTROQUE_RECORD(Expectation, profile, faulty, clean)
};

namespace {

const fs::path home = VANTROQUE_PLANTED_FAULTS;

template<typename T>
T valueOf(const Result<T>& result, const std::string& what)
{
    if (!result)
        throw std::runtime_error(what + ": " + result.error().description.toStdString());
    return *result;
}

std::vector<std::string> caseNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(home / "Cases"))
        names.push_back(entry.path().filename().native());
    std::ranges::sort(names);
    return names;
}

/// A misspelt key would otherwise be an expectation that nothing checks.
Expectation expectationOf(const std::string& name)
{
    const QByteArray text = contents(home / "Cases" / name / "expected.json");
    const auto expectation = valueOf(Json::read<Expectation>(text), name);
    const QByteArray read = valueOf(Json::write(expectation), name);
    if (valueOf(Json::parse(text), name) != valueOf(Json::parse(read), name))
        throw std::runtime_error(name + ": expected.json holds a key that nothing reads");
    return expectation;
}

Profile profileOf(const QString& id)
{
    const auto profiles = valueOf(ProfileStore::loadFrom(home / "Profiles"), "Profiles");
    const auto found = std::ranges::find(profiles, id, &Profile::id);
    if (found == profiles.end())
        throw std::runtime_error("no profile " + id.toStdString());
    return *found;
}

/// The folder with both clips of a case.
fs::path clipsOf(const std::string& name)
{
    const fs::path recipe = home / "Cases" / name / "recipe";
    const std::vector<std::string> key{contents(recipe).toStdString(),
                                       contents(home / "recipes.sh").toStdString()};
    return Media::make(name, key, [&](const fs::path& folder) {
        fs::remove_all(folder);
        fs::create_directory(folder);
        const ProgramRun run = runProgram({"bash", recipe.native(), folder.native()});
        if (run.status != 0)
            throw std::runtime_error(name + ": " + run.err.toStdString());
    });
}

fs::path clip(const std::string& name, const std::string& stem)
{
    for (const auto& entry : fs::directory_iterator(clipsOf(name)))
        if (entry.path().stem() == stem)
            return entry.path();
    throw std::runtime_error(name + " makes no clip " + stem);
}

// Reports are compared as lines, so that a difference reads well.

QString verdictText(Verdict verdict)
{
    const std::string_view name = enumName(verdict);
    return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

QString line(const QString& section, const QString& id, Verdict verdict, const QString& measured,
             const QString& expected = {}, const QString& fix = {})
{
    return u"%1 / %2: %3: %4"_s.arg(section, id, verdictText(verdict), measured)
           + (expected.isEmpty() ? QString() : u" (asked for: %1)"_s.arg(expected))
           + (fix.isEmpty() ? QString() : u" (fix: %1)"_s.arg(fix));
}

/// For an `ExpectedEvent` as for a `SignalEvent`.
template<typename Event>
QString line(const Event& event)
{
    const std::string_view kind = enumName(event.kind);
    return u"%1 %2 to %3: %4: %5"_s.arg(
        QString::fromLatin1(kind.data(), static_cast<qsizetype>(kind.size())),
        QString::number(event.frame), event.endFrame ? QString::number(*event.endFrame) : u"-"_s,
        verdictText(event.verdict), event.text);
}

template<typename Event>
QStringList lines(const std::vector<Event>& events)
{
    QStringList all;
    for (const Event& event : events)
        all << line(event);
    return all;
}

bool matches(const QString& measured, const QString& expected)
{
    const QString pattern = QRegularExpression::escape(expected).replace(u"\\#"_s, uR"(\d+)"_s);
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern))
        .match(measured)
        .hasMatch();
}

/// What the report says in place of a row's text.
QString found(const FileReport& report, const ExpectedRow& expected)
{
    for (const ProfileReport& section : report.allRows())
        for (const CheckResult& row : section.checks)
            if (section.profileID == expected.section && row.id == expected.id)
                return line(section.profileID, row.id, row.verdict,
                            matches(row.measured, expected.measured) ? expected.measured
                                                                     : row.measured,
                            expected.expected ? row.expected : u""_s,
                            expected.fix ? row.fix.value_or(u""_s) : u""_s);
    return u"%1 / %2: no such row"_s.arg(expected.section, expected.id);
}

/// Rows that raise something and are not among those named.
QStringList unnamedProblems(const FileReport& report, const std::vector<ExpectedRow>& named)
{
    QStringList problems;
    for (const ProfileReport& section : report.allRows())
        for (const CheckResult& row : section.checks) {
            const bool isNamed = std::ranges::any_of(named, [&](const ExpectedRow& each) {
                return each.section == section.profileID && each.id == row.id;
            });
            if (!isNamed && (row.verdict == Verdict::warn || row.verdict == Verdict::fail))
                problems << line(section.profileID, row.id, row.verdict, row.measured);
        }
    return problems;
}

void expectLoudness(const std::optional<double>& measured, const std::optional<double>& expected)
{
    if (!expected)
        return;
    ASSERT_TRUE(measured);
    EXPECT_NEAR(*measured, *expected, 0.1 + 1e-9);
}

void expectReport(const fs::path& file, const Profile& profile, const ExpectedReport& expected)
{
    SCOPED_TRACE(file.native());
    const auto analysis = Analyzer::analyze(FileUrl::fromPath(file), {profile});
    ASSERT_TRUE(analysis) << analysis.error().description.toStdString();
    const FileReport& report = analysis->report;
    for (const ExpectedRow& row : expected.rows)
        EXPECT_EQ(found(report, row), line(row.section, row.id, row.verdict, row.measured,
                                           row.expected.value_or(u""_s), row.fix.value_or(u""_s)));
    EXPECT_EQ(unnamedProblems(report, expected.rows).join(u'\n'), u""_s);
    ASSERT_TRUE(report.events);
    EXPECT_EQ(lines(*report.events).join(u'\n'), lines(expected.events).join(u'\n'));
    if (expected.loudness) {
        const SignalInfo& signal = analysis->media.signal.value();
        expectLoudness(signal.integratedLKFS, expected.loudness->integratedLKFS);
        expectLoudness(signal.loudnessRangeLU, expected.loudness->loudnessRangeLU);
    }
}

class PlantedFault : public testing::TestWithParam<std::string> {};

std::string testName(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    std::ranges::replace(name, '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, PlantedFault, testing::ValuesIn(caseNames()), testName);

TEST_P(PlantedFault, IsFoundAndItsTwinIsClean)
{
    const Expectation expectation = expectationOf(GetParam());
    const Profile profile = profileOf(expectation.profile);
    expectReport(clip(GetParam(), "faulty"), profile, expectation.faulty);
    expectReport(clip(GetParam(), "clean"), profile, expectation.clean);
}

TEST(PlantedFaults, ThePageListsExactlyTheCases)
{
    static const QRegularExpression row(uR"(^\| `([\w.-]+)` \|)"_s,
                                        QRegularExpression::MultilineOption);
    std::vector<std::string> listed;
    for (const auto& match :
         row.globalMatch(QString::fromUtf8(contents(VANTROQUE_PLANTED_FAULTS_PAGE))))
        listed.push_back(match.captured(1).toStdString());
    EXPECT_THAT(listed, testing::UnorderedElementsAreArray(caseNames()));
}

TEST(PlantedFaults, EachCaseExpectsMoreOfItsFaultThanOfItsTwin)
{
    for (const std::string& name : caseNames()) {
        const Expectation expectation = expectationOf(name);
        EXPECT_FALSE(expectation.faulty == expectation.clean) << name;
    }
}

} // namespace
} // namespace vantroque
