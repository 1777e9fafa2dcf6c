#include "Base/Json.h"
#include "CLI/Cli.h"
#include "CLI/RecordSchemas.h"
#include "Captions/CaptionHealth.h"
#include "Captions/CaptionTrack.h"
#include "Records/CaptionCue.h"
#include "Records/MediaInfo.h"
#include "Support/Clips.h"
#include "Support/Media.h"

// Resources/Schemas tells other programs what ours print. It says so of every record, and nothing
// that is printed is missing in it.

namespace vantroque {
namespace {

using Media::operator+;
using testing::HasSubstr;
namespace fs = std::filesystem;
using Words = std::vector<std::string>;

fs::path schemaFile(const std::string& name)
{
    return fs::path(VANTROQUE_SCHEMAS) / (name + ".schema.json");
}

QJsonObject schema(const std::string& name)
{
    return Json::parse(contents(schemaFile(name))).value().toObject();
}

/// What a reader is told beside the shape.
QJsonObject withoutWords(QJsonObject definition)
{
    definition.remove(u"description"_s);
    QJsonObject properties = definition.value(u"properties"_s).toObject();
    for (auto property = properties.begin(); property != properties.end(); ++property) {
        QJsonObject described = property->toObject();
        described.remove(u"description"_s);
        *property = described;
    }
    if (!properties.isEmpty())
        definition.insert(u"properties"_s, properties);
    return definition;
}

/// These records and no others, but for what is not printed as a record.
void expectDefined(const QJsonObject& expected, const std::string& name,
                   const QStringList& others = {})
{
    const QJsonObject found = schema(name).value(u"$defs"_s).toObject();
    for (auto record = expected.begin(); record != expected.end(); ++record)
        EXPECT_EQ(Json::print(withoutWords(found.value(record.key()).toObject())).toStdString(),
                  Json::print(record->toObject()).toStdString())
            << record.key().toStdString() << " in the schema of " << name;
    for (const QString& record : found.keys())
        EXPECT_TRUE(expected.contains(record) || others.contains(record))
            << record.toStdString() << " is nothing we print";
}

class Schemas : public testing::Test {
protected:
    /// What is wrong with a document by the schema, which must name all that it holds.
    static QByteArray problems(const std::string& name, const std::vector<fs::path>& documents)
    {
        Words command{VANTROQUE_VALID_JSON, schemaFile(name)};
        for (const fs::path& document : documents)
            command.push_back(document);
        const ProgramRun run = runProgram(command);
        EXPECT_EQ(run.status, run.out.isEmpty() ? 0 : 1) << run.err.toStdString();
        return run.out + run.err;
    }
    QByteArray problemsWith(const std::string& name, const char* document)
    {
        return problems(name, {m_folder.write("told.json", document)});
    }
    /// The output of the words in a file of the folder.
    fs::path told(const char* name, const Words& words) const
    {
        return m_folder.write(name, Cli::run(words).out);
    }

    const TestFolder m_folder;
};

TEST_F(Schemas, DescribeEveryRecordThatIsPrinted)
{
    RecordSchemas check;
    check.of<FileReport>();
    check.of<MediaInfo>();
    expectDefined(check.definitions(), "check", {u"Document"_s, u"Result"_s});
    RecordSchemas probe;
    probe.of<MediaInfo>();
    expectDefined(probe.definitions(), "probe");
    RecordSchemas captions;
    captions.of<CaptionCue>();
    captions.of<CaptionHealth>();
    captions.of<ProfileReport>();
    captions.of<CaptionTrack::Format>();
    expectDefined(captions.definitions(), "captions");
}

TEST_F(Schemas, SayTheSameOfARecordInEachFile)
{
    const QJsonObject check = schema("check").value(u"$defs"_s).toObject();
    for (const char* name : {"probe", "captions"}) {
        const QJsonObject other = schema(name).value(u"$defs"_s).toObject();
        for (auto record = other.begin(); record != other.end(); ++record)
            if (check.contains(record.key()))
                EXPECT_EQ(check.value(record.key()), *record)
                    << record.key().toStdString() << " in the schema of " << name;
    }
}

TEST_F(Schemas, HoldWhatCheckPrints)
{
    const Words all{"check", "--all", "--media", "--format"};
    const Words films{Clips::mpeg2InMxf(), m_folder.write("torn.mp4", "no film")};
    const auto document = told("check.json", all + Words{"json", Clips::hdr10P3()} + films);
    const auto lines = told("check.jsonl", all + Words{"jsonl"} + films);
    const auto joined = told("joined.json", {"collect", "--format", "json", lines});
    EXPECT_EQ(Json::parse(contents(document)).value()[u"files"_s].toArray().size(), 3);
    for (const char* folder : {"watched", "passed", "rejected"})
        fs::create_directory(m_folder / folder);
    m_folder.write("watched/a.mp4", contents(Clips::plain()));
    told("watch", {"watch", "--once", "--settle", "0", "--all", "--done", m_folder / "passed",
                   "--failed", m_folder / "rejected", m_folder / "watched"});
    const auto watched = m_folder / "rejected" / "a.mp4.json";
    EXPECT_EQ(problems("check", {document, lines, joined, watched}), "");
}

TEST_F(Schemas, HoldWhatProbePrints)
{
    EXPECT_EQ(problems("probe", {told("probe.json", {"probe", Clips::plain()})}), "");
}

TEST_F(Schemas, HoldWhatCaptionsPrints)
{
    const std::string captions = m_folder.write(
        "spot.vtt", "WEBVTT\n\n00:01.000 --> 00:02.000\nThe <i>whether</i> is nice.\n");
    const Words json{"captions", "--format", "json"};
    EXPECT_EQ(problems("captions", {told("captions.json", json + Words{captions}),
                                    told("none.json", json + Words{m_folder / "none.srt"})}),
              "");
}

TEST_F(Schemas, RefuseWhatIsNotPrinted)
{
    EXPECT_THAT(problemsWith("check", R"({"version": "1", "files": [{"path": "a.mp4",
        "status": "done"}]})"),
                HasSubstr("$.files[0]: 'report' is a required property"));
    EXPECT_THAT(problemsWith("check", R"({"version": "1", "path": "a", "status": "went well",
        "error": "none"})"),
                HasSubstr("$.status: 'went well' is not one of"));
    EXPECT_THAT(problemsWith("check", R"({"path": "a", "status": "failed", "error": "e"})"),
                HasSubstr("'version' is a required property"));
    EXPECT_THAT(problemsWith("captions", R"({"error": "none", "colour": "red"})"),
                HasSubstr("'colour' was unexpected"));
}

} // namespace
} // namespace vantroque
