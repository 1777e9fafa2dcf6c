#include "CLI/Cli.h"
#include "Support/Clips.h"
#include "Support/Media.h"

#include <QXmlStreamReader>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using Media::operator+;
using testing::HasSubstr;
using Words = std::vector<std::string>;

struct Case {
    QString classname;
    QString name;
    QString outcome; ///< The element inside, if any.
    QString message;
    QString type;
    QString text;
};

struct Suite {
    QString name;
    int tests = 0;
    int failures = 0;
    int errors = 0;
    std::vector<Case> cases;
};

Case readCase(QXmlStreamReader& xml)
{
    Case read{xml.attributes().value("classname"_L1).toString(),
              xml.attributes().value("name"_L1).toString(),
              {},
              {},
              {},
              {}};
    while (xml.readNextStartElement()) {
        read.outcome = xml.name().toString();
        read.message = xml.attributes().value("message"_L1).toString();
        read.type = xml.attributes().value("type"_L1).toString();
        read.text = xml.readElementText();
    }
    return read;
}

Suite readSuite(QXmlStreamReader& xml)
{
    const auto count = [&](QLatin1StringView name) { return xml.attributes().value(name).toInt(); };
    Suite suite{xml.attributes().value("name"_L1).toString(),
                count("tests"_L1),
                count("failures"_L1),
                count("errors"_L1),
                {}};
    while (xml.readNextStartElement()) {
        EXPECT_EQ(xml.name(), u"testcase"_s);
        suite.cases.push_back(readCase(xml));
    }
    return suite;
}

/// The suites of a well-formed document.
std::vector<Suite> suites(const ProgramRun& run)
{
    QXmlStreamReader xml(run.out);
    std::vector<Suite> found;
    EXPECT_TRUE(xml.readNextStartElement());
    EXPECT_EQ(xml.name(), u"testsuites"_s);
    while (xml.readNextStartElement()) {
        EXPECT_EQ(xml.name(), u"testsuite"_s);
        found.push_back(readSuite(xml));
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_TRUE(xml.readNext() == QXmlStreamReader::EndDocument) << "more after the root";
    return found;
}

class JUnit : public testing::Test {
protected:
    ProgramRun run(const Words& files) const
    {
        return Cli::run(Words{"check", "--format", "junit", "--all"} + m_profiles.words() + files);
    }
    const Cli::ProfilesFolder m_profiles;
};

TEST_F(JUnit, EveryFileIsASuiteAndEveryRowACase)
{
    const std::string clip = Clips::plain();
    const auto result = run({clip, Clips::wav().native()});
    EXPECT_EQ(result.status, 1);
    const auto found = suites(result);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name.toStdString(), clip);
    EXPECT_EQ(found[0].tests, 3);
    EXPECT_EQ(found[0].failures, 1);
    EXPECT_EQ(found[0].errors, 0);
    ASSERT_EQ(found[0].cases.size(), 3U);
    for (const Case& each : found[0].cases)
        EXPECT_EQ(each.name, u"Container"_s);
    EXPECT_EQ(found[0].cases[0].classname, u"Test mp4-only"_s);
}

TEST_F(JUnit, OnlyARowThatFailsAPlatformIsAFailure)
{
    const auto cases = suites(run({Clips::plain().native()})).at(0).cases;
    EXPECT_EQ(cases.at(0).outcome, QString());
    EXPECT_EQ(cases.at(1).outcome, u"failure"_s);
    EXPECT_EQ(cases.at(1).message, u"mp4"_s);
    EXPECT_EQ(cases.at(1).type, u"container"_s);
    EXPECT_EQ(cases.at(1).text,
              u"fail: measured mp4, expected mxf\nfix: Remux or re-export as .mxf."_s);
    EXPECT_EQ(cases.at(2).outcome, u"system-out"_s); // a recommendation
}

TEST_F(JUnit, AFileThatCannotBeAnalysedIsAnError)
{
    const auto result = run({"/nowhere.mp4", Clips::wav().native()});
    EXPECT_EQ(result.status, 2);
    const auto found = suites(result);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].tests, 1);
    EXPECT_EQ(found[0].failures, 0);
    EXPECT_EQ(found[0].errors, 1);
    ASSERT_EQ(found[0].cases.size(), 1U);
    EXPECT_EQ(found[0].cases[0].outcome, u"error"_s);
    EXPECT_THAT((found[0].cases[0].message + found[0].cases[0].text).toStdString(),
                HasSubstr("No such file or directory"));
}

TEST_F(JUnit, CharactersThatXmlCannotHoldOrATerminalActsOnAreReplaced)
{
    const TestFolder folder;
    const auto file = folder.write("a\x01\x1b<&\"'>\x7f\n\xEF\xBF\xBE.wav", contents(Clips::wav()));
    const auto found = suites(run({file.native(), (folder / "\x02 none").native()}));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_TRUE(found[0].name.endsWith(u"/a\uFFFD\uFFFD<&\"'>\uFFFD\n\uFFFD.wav"_s))
        << found[0].name.toStdString();
    EXPECT_EQ(found[0].errors, 0);
    EXPECT_EQ(found[1].errors, 1);
}

TEST_F(JUnit, ProfileTextsAreEscapedToo)
{
    auto profile = Cli::containerProfile("odd", ProfileGroup::digital, "<mxf>\x01");
    profile.name = u"A & B \u0007 \"C\""_s;
    m_profiles.add(profile);
    const auto cases = suites(run({Clips::wav().native()})).at(0).cases;
    EXPECT_EQ(cases.at(0).classname, u"A & B \uFFFD \"C\""_s);
    EXPECT_THAT(cases.at(0).text.toStdString(), HasSubstr("expected <mxf>\xEF\xBF\xBD"));
}

} // namespace
} // namespace vantroque
