#include "Probe/FFProbeOutput.h"

#include "Probe/Prober.h"
#include "Support/TestFolder.h"

#include <QJsonArray>
#include <QJsonObject>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;

FFProbeOutput decoded(const QByteArray& json)
{
    return FFProbeOutput::decode(json).value();
}

std::string problemOf(const QByteArray& json)
{
    const auto output = FFProbeOutput::decode(json);
    return output ? "none" : output.error().description.toStdString();
}

TEST(FFString, ANumberReadsAsTheSameTextAsAString)
{
    EXPECT_EQ(FFString::fromJson(u"1024"_s).asInt(), 1024);
    EXPECT_EQ(FFString::fromJson(1024).asInt(), 1024);
    EXPECT_EQ(FFString::fromJson(1024), FFString::fromJson(u"1024"_s));
    EXPECT_EQ(FFString::fromJson(qint64{9'007'199'254'740'993}).text, u"9007199254740993"_s);
    EXPECT_EQ(FFString::fromJson(29.97).text, u"29.97"_s);
    EXPECT_EQ(FFString::fromJson(29.97).asDouble(), 29.97);
}

TEST(FFString, AnythingElseReadsAsEmpty)
{
    for (const QJsonValue& value :
         {QJsonValue(true), QJsonValue(QJsonValue::Null), QJsonValue(QJsonArray{1}),
          QJsonValue(QJsonObject{{u"a"_s, 1}})})
        EXPECT_EQ(FFString::fromJson(value).text, QString());
}

TEST(FFString, OnlyAWholeTextIsANumber)
{
    EXPECT_EQ(FFString{u"-12"_s}.asInt(), -12);
    EXPECT_EQ(FFString{u"+12"_s}.asInt(), 12);
    for (const auto& text :
         {u""_s, u"N/A"_s, u"12 "_s, u"1.5"_s, u"0x10"_s, u"1e3"_s, u"99999999999999999999"_s})
        EXPECT_EQ(FFString{text}.asInt(), std::nullopt) << text.toStdString();
    EXPECT_EQ(FFString{u"1e3"_s}.asDouble(), 1000.0);
    for (const auto& text : {u""_s, u"N/A"_s, u"1.5s"_s, u"nan"_s, u"inf"_s, u"1,5"_s})
        EXPECT_EQ(FFString{text}.asDouble(), std::nullopt) << text.toStdString();
}

TEST(FFProbeOutput, AnEmptyObjectIsEnough)
{
    EXPECT_EQ(decoded("{}"), FFProbeOutput());
}

TEST(FFProbeOutput, OnlyTheIndexOfAStreamIsRequired)
{
    const auto output = decoded(R"({"streams": [{"index": 3}], "format": {}})");
    ASSERT_EQ(output.streams->size(), 1U);
    EXPECT_EQ(output.streams->front().index, 3);
    EXPECT_EQ(output.streams->front().codec_name, std::nullopt);
    EXPECT_THAT(problemOf(R"({"streams": [{"index": 0}, {}]})"),
                HasSubstr(".streams[1].index: missing"));
}

TEST(FFProbeOutput, ASizePrintedAsANumberEqualsOnePrintedAsAString)
{
    EXPECT_EQ(decoded(R"({"format": {"size": 1234, "duration": 1.5}})"),
              decoded(R"({"format": {"size": "1234", "duration": "1.5"}})"));
}

TEST(FFProbeOutput, AWrongTypeFails)
{
    EXPECT_THAT(problemOf(R"({"streams": [{"index": "0"}]})"), HasSubstr(".streams[0].index"));
    EXPECT_THAT(problemOf(R"({"streams": [{"index": 0, "width": "64"}]})"), HasSubstr("width"));
    EXPECT_THAT(problemOf(R"({"streams": {}})"), HasSubstr(".streams"));
    EXPECT_THAT(problemOf(R"({"format": {"tags": {"title": 5}}})"), HasSubstr("title"));
    EXPECT_NE(problemOf("[]"), "none");
    EXPECT_NE(problemOf(""), "none");
    EXPECT_NE(problemOf("ffprobe: not JSON"), "none");
}

TEST(FFProbeOutput, AWrongTypeThatNobodyReadsIsPassedOver)
{
    EXPECT_EQ(problemOf(R"({"format": {"probe_score": []}, "programs": 5})"), "none");
}

TEST(StartTimecode, TheFilesTagComesAheadOfTheStreams)
{
    const QByteArray streams = R"("streams": [{"index": 0, "tags": {"timecode": ""}},
        {"index": 1, "tags": {"timecode": "02:00:00:00"}},
        {"index": 2, "tags": {"timecode": "03:00:00:00"}}])";
    EXPECT_EQ(Prober::startTimecode(
                  decoded(R"({"format": {"tags": {"timecode": "01:00:00:00"}}, )" + streams + '}')),
              u"01:00:00:00"_s);
    EXPECT_EQ(Prober::startTimecode(
                  decoded(R"({"format": {"tags": {"timecode": ""}}, )" + streams + '}')),
              u"02:00:00:00"_s);
    EXPECT_EQ(Prober::startTimecode(decoded('{' + streams + '}')), u"02:00:00:00"_s);
}

TEST(StartTimecode, WithoutATagThereIsNone)
{
    EXPECT_EQ(Prober::startTimecode(decoded("{}")), std::nullopt);
    EXPECT_EQ(Prober::startTimecode(decoded(R"({"streams": [{"index": 0, "tags": {}}]})")),
              std::nullopt);
}

} // namespace
} // namespace vantroque
