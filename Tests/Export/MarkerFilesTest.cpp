#include "Base/ScopedVariable.h"
#include "Export/MarkerExport.h"
#include "Support/Program.h"
#include "Support/TestFolder.h"

#include <QXmlStreamReader>

#include <ctime>

// Whole files of markers, beside ones that were made independently of this program.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using MarkerExport::Format;
using testing::HasSubstr;
namespace fs = std::filesystem;

const QUuid id(0x3f2504e0, 0x4f89, 0x41d3, 0x9a, 0x0c, 0x03, 0x05, 0xe8, 0x2c, 0x33, 0x01);
const QDateTime analysed({2026, 3, 1}, {22, 30, 15}, Qt::UTC);
const QDateTime noted({2026, 1, 5}, {9, 5, 59, 999}, Qt::UTC);

std::vector<Marker> sample()
{
    using enum Verdict;
    using enum Marker::Kind;
    return {
        {0, 1, u"Black frames"_s, u"First frame is black"_s, pass, finding, analysed},
        {10, 20, u"Picture levels"_s, u"Luma 104% & \"hot\" <legal>"_s, fail, finding, analysed},
        {48, 1, u"Flash frame"_s, u"It's 8.5 times brighter"_s, warn, finding, analysed},
        {60, 12, u"Captions"_s, u"Misspelt: \u201Ccaf\u00E9\u201D \U0001F3AC"_s, info, finding,
         analysed},
        {100, 1, u"=Ada, \"QC\""_s, u"  Line one\r\nline\ttwo\nthree\rfour "_s, info, note, noted},
        {107892, 1, u"@Bo"_s, u"=SUM(A1)"_s, info, note, noted},
    };
}

/// The zone of dates is three hours before UTC.
class MarkerFiles : public testing::Test {
protected:
    MarkerFiles() { ::tzset(); }

    static MarkerContext contextAt(double rate)
    {
        MarkerContext context{u"Autumn Sale & Co.mov"_s, rate, 750, 0, 1920, 1080};
        context.startFrame = 36'000 * context.timebase();
        return context;
    }
    static std::string write(const std::vector<Marker>& markers, Format format,
                             const MarkerContext& context)
    {
        return MarkerExport::write(markers, format, context, id).toStdString();
    }
    static std::string one(const Marker& marker, Format format)
    {
        return write({marker}, format, contextAt(25));
    }
    static std::string expected(const std::string& name)
    {
        const QByteArray bytes = contents(fs::path(VANTROQUE_MARKER_FIXTURES) / name);
        EXPECT_FALSE(bytes.isEmpty()) << name;
        return bytes.toStdString();
    }

private:
    const ScopedVariable m_zone{"TZ", "XXX-3"};
};

struct Rate {
    std::string name;
    double value;
};

class MarkerFilesAtRate : public MarkerFiles, public testing::WithParamInterface<Rate> {};

INSTANTIATE_TEST_SUITE_P(Rates, MarkerFilesAtRate,
                         testing::Values(Rate{"23.976", 24000.0 / 1001}, Rate{"25", 25},
                                         Rate{"29.97", 30000.0 / 1001}, Rate{"50", 50},
                                         Rate{"59.94", 60000.0 / 1001}),
                         [](const auto& test) {
                             std::string name = test.param.name;
                             std::ranges::replace(name, '.', '_');
                             return "Of" + name;
                         });

TEST_P(MarkerFilesAtRate, ForAvidAreExact)
{
    EXPECT_EQ(write(sample(), Format::avid, contextAt(GetParam().value)), expected("avid.xml"));
}

TEST_P(MarkerFilesAtRate, ForPremiereAreExact)
{
    EXPECT_EQ(write(sample(), Format::premiere, contextAt(GetParam().value)),
              expected(GetParam().name + " premiere.xml"));
}

TEST_P(MarkerFilesAtRate, ForResolveAreExact)
{
    EXPECT_EQ(write(sample(), Format::resolve, contextAt(GetParam().value)),
              expected(GetParam().name + " resolve.edl"));
}

TEST_P(MarkerFilesAtRate, ForSpreadsheetsAreExact)
{
    EXPECT_EQ(write(sample(), Format::csv, contextAt(GetParam().value)),
              expected(GetParam().name + ".csv"));
}

/// Text of whatever a name or a note may hold.
QString awkward()
{
    QString text;
    for (char16_t c = 0; c < 0x100; ++c)
        text += c;
    return text + QChar(0xD800) + QChar(0xFFFE) + QChar(0xFFFF)
           + u"\u2028\u2029 ]]> &amp; %1 {in}"_s;
}

TEST_F(MarkerFiles, AreValidXmlWhateverTheyHold)
{
    const TestFolder folder;
    for (const Format format : {Format::avid, Format::premiere})
        for (const auto& markers : {std::vector<Marker>(), sample(),
                                    std::vector<Marker>{{0, 1, awkward(), awkward(), Verdict::info,
                                                         Marker::Kind::note, noted}}}) {
            MarkerContext context = contextAt(25);
            context.fileName = awkward();
            const auto file = folder.write(
                "markers.xml", QByteArray::fromStdString(write(markers, format, context)));
            const auto run = runProgram({"xmllint", "--noout", "--nonet", file.native()});
            EXPECT_EQ(run.status, 0) << run.err.toStdString();
        }
}

/// The texts of all elements of that name, as a reader of XML sees them.
std::vector<QString> textsOf(const std::string& document, const QString& element)
{
    std::vector<QString> texts;
    QXmlStreamReader reader(QByteArray::fromStdString(document));
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == element)
            texts.push_back(reader.readElementText());
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return texts;
}

TEST_F(MarkerFiles, ForPremiereHoldTheMarkersTwiceAndTheirTextUnchanged)
{
    const QString text = u"100% {in} %1 <b>&amp;</b> \"q\""_s;
    const std::string file =
        one({5, 2, text, text, Verdict::warn, Marker::Kind::finding, noted}, Format::premiere);
    EXPECT_THAT(textsOf(file, u"comment"_s), testing::ElementsAre(text, text));
    EXPECT_THAT(textsOf(file, u"pproColor"_s),
                testing::ElementsAre(u"4294759245"_s, u"4294759245"_s));
}

TEST_F(MarkerFiles, OfANoteWithALineBreakHaveItOnOneLine)
{
    for (const QString& text :
         {u"one\ntwo"_s, u"one\r\ntwo"_s, u"one\rtwo"_s, u"one\ttwo"_s, u" one\u2028two\n"_s}) {
        const Marker marker{0, 1, text, text, Verdict::info, Marker::Kind::note, noted};
        for (const Format format : {Format::avid, Format::premiere, Format::resolve, Format::csv})
            EXPECT_THAT(one(marker, format), HasSubstr("one two"));
        const std::string edl = one(marker, Format::resolve);
        EXPECT_EQ(std::ranges::count(edl, '\n'), 7);
        EXPECT_THAT(edl, HasSubstr("\n@one two, jan 05 26 12:05pm\none two |C:"));
        EXPECT_EQ(std::ranges::count(one(marker, Format::csv), '\n'), 2);
    }
}

std::string csvName(const QString& name, const std::string& line)
{
    EXPECT_THAT(line, HasSubstr("info,")) << name.toStdString();
    const auto start = line.find("info,") + 5;
    return line.substr(start, line.find(",x,0,1,") - start);
}

TEST_F(MarkerFiles, ForSpreadsheetsHoldNoFormula)
{
    for (const auto& [name, field] :
         std::vector<std::pair<QString, std::string>>{{u"=SUM(A1)"_s, "'=SUM(A1)"},
                                                      {u"+1"_s, "'+1"},
                                                      {u"-1"_s, "'-1"},
                                                      {u"@x"_s, "'@x"},
                                                      {u" \n=1"_s, "'=1"},
                                                      {u"=A,B"_s, "\"'=A,B\""},
                                                      {u"a,b"_s, "\"a,b\""},
                                                      {u"say \"so\""_s, "\"say \"\"so\"\"\""},
                                                      {u"it's"_s, "\"it's\""},
                                                      {u"a=b"_s, "a=b"},
                                                      {u""_s, ""}})
        EXPECT_EQ(csvName(name, one({0, 1, name, u"x"_s, Verdict::info, Marker::Kind::note, noted},
                                    Format::csv)),
                  field);
}

TEST_F(MarkerFiles, OfNoMarkersAreStillFiles)
{
    EXPECT_EQ(write({}, Format::resolve, contextAt(25)),
              "TITLE: Autumn Sale & Co.mov\nFCM: NON DROP FRAME\n\n");
    EXPECT_EQ(std::ranges::count(write({}, Format::csv, contextAt(25)), '\n'), 1);
    EXPECT_THAT(write({}, Format::avid, contextAt(25)),
                testing::EndsWith("</AvProp>\n</Avid:XMLFileData></Avid:StreamItems>\n"));
}

TEST_F(MarkerFiles, CutTheSecondsOfADateDownAlsoBefore1970)
{
    const Marker marker{0,
                        1,
                        u"a"_s,
                        {},
                        Verdict::info,
                        Marker::Kind::note,
                        QDateTime({1969, 12, 31}, {23, 59, 59, 500}, Qt::UTC)};
    EXPECT_THAT(one(marker, Format::avid), HasSubstr("\"int32\">-1</AvProp>"));
}

TEST_F(MarkerFiles, TellMidnightAndNoonOnAClockOfTwelveHours)
{
    const auto dated = [](int hour) {
        return one({0,
                    1,
                    u"a"_s,
                    {},
                    Verdict::info,
                    Marker::Kind::note,
                    QDateTime({2026, 12, 9}, {hour, 0}, Qt::UTC)},
                   Format::csv);
    };
    EXPECT_THAT(dated(21), HasSubstr("Dec 10 26 12:00AM\n"));
    EXPECT_THAT(dated(9), HasSubstr("Dec 09 26 12:00PM\n"));
}

TEST_F(MarkerFiles, WithoutAStartTimecodeHaveTheSameTimesTwice)
{
    MarkerContext context = contextAt(25);
    context.startFrame = 0;
    EXPECT_THAT(write({{30, 5, u"a"_s, u"b"_s, Verdict::info, Marker::Kind::note, noted}},
                      Format::csv, context),
                HasSubstr(",30,5,00:00:01:05,00:00:01:10,00:00:01:05,00:00:01:10,"));
}

TEST_F(MarkerFiles, SurviveFramesBeyondAllBounds)
{
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t frame : {Limits::max(), Limits::min()}) {
        const Marker marker{frame,         Limits::max(),      u"a"_s, u"b"_s,
                            Verdict::info, Marker::Kind::note, noted};
        for (const Format format : {Format::avid, Format::premiere, Format::resolve, Format::csv})
            EXPECT_THAT(one(marker, format), HasSubstr("a"));
    }
}

} // namespace
} // namespace vantroque
