#include "Base/RecordCoding.h"

#include "Base/Json.h"
#include "Support/TestFolder.h"

#include <cmath>

namespace vantroque {

enum class Colour { red, green, darkBlue };
VANTROQUE_ENUM_NAMES(Colour, red, green, darkBlue)

namespace {

using namespace Qt::StringLiterals;

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Codec {
    QString codec;
    std::optional<double> level;

    VANTROQUE_RECORD(Codec, codec, level)
};

struct Video {
    std::vector<Codec> codecs;
    std::map<QString, std::vector<double>> series;

    VANTROQUE_RECORD(Video, codecs, series)
};

struct Media {
    Video video;
    std::optional<Codec> audio;

    VANTROQUE_RECORD(Media, video, audio)
};

/// One member of each leaf type.
struct Leaves {
    bool flag = false;
    int small = 0;
    std::int64_t large = 0;
    double number = 0;
    float single = 0;
    QString text;
    FileUrl file;
    Colour colour = Colour::red;
    std::pair<double, double> bounds;
    std::map<QString, int> counts;
    std::vector<Colour> colours;

    VANTROQUE_RECORD(Leaves, flag, small, large, number, single, text, file, colour, bounds, counts,
                     colours)
};

template<typename T>
struct Holder {
    T value{};

    VANTROQUE_RECORD(Holder, value)
};

template<typename T>
QString readProblem(const QByteArray& json)
{
    const auto record = Json::read<T>(json);
    return record ? u"none"_s : record.error().description;
}

template<typename T>
QString readProblemOf(const QByteArray& value)
{
    return readProblem<Holder<T>>("{\"value\": " + value + '}');
}

template<typename T>
std::optional<T> readValue(const QByteArray& value)
{
    const auto holder = Json::read<Holder<T>>("{\"value\": " + value + '}');
    return holder ? std::optional(holder->value) : std::nullopt;
}

template<typename T>
QString writeProblem(const T& record)
{
    const auto json = Json::write(record);
    return json ? u"none"_s : json.error().description;
}

template<typename T>
QByteArray written(const T& value)
{
    return Json::write(Holder<T>{value}).value_or("failed").simplified();
}

template<typename T>
std::optional<T> copied(const T& value)
{
    const auto json = Json::write(Holder<T>{value});
    const auto back = Json::read<Holder<T>>(json.value_or(QByteArray()));
    return back ? std::optional(back->value) : std::nullopt;
}

TEST(RecordCoding, EveryLeafHasOneForm)
{
    Leaves leaves;
    leaves.flag = true;
    leaves.small = -7;
    leaves.large = 9007199254740993;
    leaves.number = 23.976;
    leaves.single = 0.1F;
    leaves.text = u"\u00E9 \"quoted\""_s;
    leaves.file = FileUrl::fromPath("/v/a b.mov");
    leaves.colour = Colour::darkBlue;
    leaves.bounds = {0.5, 2};
    leaves.counts = {{u"b"_s, 2}, {u"a"_s, 1}};
    leaves.colours = {Colour::green, Colour::red};
    const QByteArray golden = R"({
    "bounds": [
        0.5,
        2
    ],
    "colour": "darkBlue",
    "colours": [
        "green",
        "red"
    ],
    "counts": {
        "a": 1,
        "b": 2
    },
    "file": "file:///v/a%20b.mov",
    "flag": true,
    "large": 9007199254740993,
    "number": 23.976,
    "single": 0.1,
    "small": -7,
    "text": ")"
                              "\xC3\xA9"
                              R"( \"quoted\""
}
)";
    EXPECT_EQ(Json::write(leaves).value_or("failed"), golden);
    EXPECT_EQ(Json::read<Leaves>(golden).value(), leaves);
}

TEST(RecordCoding, IntegersKeep64Bits)
{
    using Limits = std::numeric_limits<std::int64_t>;
    for (const std::int64_t number : {Limits::max(), Limits::min(), std::int64_t{9007199254740993},
                                      std::int64_t{-9007199254740993}, std::int64_t{0}})
        EXPECT_EQ(copied(number), number);
    EXPECT_EQ(readValue<std::int64_t>("9223372036854775807"), Limits::max());
    EXPECT_EQ(written(Limits::max()), "{ \"value\": 9223372036854775807 }");
}

TEST(RecordCoding, AWholeValuedNumberServesAnInteger)
{
    EXPECT_EQ(readValue<int>("24"), 24);
    EXPECT_EQ(readValue<int>("24.0"), 24);
    EXPECT_EQ(readValue<int>("2.4e1"), 24);
    EXPECT_EQ(readValue<int>("-0.0"), 0);
    EXPECT_EQ(readValue<int>("0"), 0);
    EXPECT_EQ(readValue<int>("1"), 1);
}

TEST(RecordCoding, NothingElseServesAnInteger)
{
    EXPECT_EQ(readProblemOf<int>("24.5"), u".value: expected a whole number"_s);
    EXPECT_EQ(readProblemOf<int>("0.5"), u".value: expected a whole number"_s);
    EXPECT_EQ(readProblemOf<int>("true"), u".value: expected a whole number, found a bool"_s);
    EXPECT_EQ(readProblemOf<int>("\"24\""), u".value: expected a whole number, found text"_s);
    EXPECT_EQ(readProblemOf<int>("null"), u".value: expected a whole number, found null"_s);
    EXPECT_EQ(readProblemOf<int>("[1]"), u".value: expected a whole number, found a list"_s);
}

TEST(RecordCoding, AnIntegerMustFitItsType)
{
    EXPECT_EQ(readValue<int>("2147483647"), 2147483647);
    EXPECT_EQ(readValue<int>("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(readProblemOf<int>("2147483648"), u".value: out of range"_s);
    EXPECT_EQ(readProblemOf<int>("-2147483649"), u".value: out of range"_s);
    EXPECT_EQ(readProblemOf<int>("1e10"), u".value: out of range"_s);
    EXPECT_FALSE(readValue<std::int64_t>("9223372036854775808"));
    EXPECT_FALSE(readValue<std::int64_t>("1e300"));
}

TEST(RecordCoding, NumbersReadFromWholeOnesAndBack)
{
    EXPECT_EQ(readValue<double>("24"), 24.0);
    EXPECT_EQ(readProblemOf<double>("true"), u".value: expected a number, found a bool"_s);
    EXPECT_EQ(readProblemOf<double>("\"1\""), u".value: expected a number, found text"_s);
    for (const double number : {0.1, 1.0 / 3.0, 23.976023976023978, 5e-324, 1.7976931348623157e308,
                                1e22, 9007199254740993.0, -99.0})
        EXPECT_EQ(copied(number), number);
}

TEST(RecordCoding, SinglePrecisionPrintsShortAndReadsBackTheSame)
{
    EXPECT_EQ(written(0.1F), "{ \"value\": 0.1 }");
    EXPECT_EQ(written(23.976F), "{ \"value\": 23.976 }");
    for (float number : {0.1F, 1.0F / 3.0F, 16777217.0F, 3.4028235e38F, 1e-45F, -0.3F})
        EXPECT_EQ(copied(number), number);
    EXPECT_EQ(readProblemOf<float>("1e300"), u".value: out of range"_s);
    EXPECT_EQ(readValue<float>("1e-300"), 0.0F);
}

TEST(RecordCoding, WhatHasNoJsonFormFailsOnWritingWithItsPath)
{
    Media media;
    media.video.codecs = {{u"h264"_s, 1.0}, {u"hevc"_s, std::nan("")}};
    EXPECT_EQ(writeProblem(media), u".video.codecs[1].level: not a finite number"_s);
    media.video.codecs.clear();
    media.video.series[u"y"_s] = {1, 2, infinity};
    EXPECT_EQ(writeProblem(media), u".video.series.y[2]: not a finite number"_s);
    EXPECT_EQ(writeProblem(Holder<double>{-infinity}), u".value: not a finite number"_s);
    EXPECT_EQ(writeProblem(Holder<float>{std::nanf("")}), u".value: not a finite number"_s);
    EXPECT_EQ(writeProblem(Holder<std::pair<double, double>>{{0, infinity}}),
              u".value[1]: not a finite number"_s);
}

TEST(RecordCoding, AnErrorNamesItsPlace)
{
    EXPECT_EQ(readProblem<Media>(R"({"video": {"codecs": [{}], "series": {}}})"),
              u".video.codecs[0].codec: missing"_s);
    EXPECT_EQ(readProblem<Media>(R"({"video": {"codecs": [{"codec": "a"}, 5], "series": {}}})"),
              u".video.codecs[1]: expected an object, found a number"_s);
    EXPECT_EQ(readProblem<Media>(R"({"video": {"codecs": {}, "series": {}}})"),
              u".video.codecs: expected a list, found an object"_s);
    EXPECT_EQ(readProblem<Media>(R"({"video": {"codecs": [], "series": {"y": [1, "2"]}}})"),
              u".video.series.y[1]: expected a number, found text"_s);
    EXPECT_EQ(readProblem<Media>(R"({"video": {"codecs": [], "series": []}})"),
              u".video.series: expected an object, found a list"_s);
    EXPECT_EQ(
        readProblem<Media>(R"({"video": {"codecs": [], "series": {}}, "audio": {"codec": 1}})"),
        u".audio.codec: expected text, found a number"_s);
    EXPECT_EQ(readProblem<Media>("{}"), u".video: missing"_s);
    EXPECT_EQ(readProblem<Media>("[]"), u"expected an object, found a list"_s);
}

TEST(RecordCoding, TheFirstMemberInErrorIsNamed)
{
    EXPECT_EQ(readProblem<Leaves>("{}"), u".flag: missing"_s);
    EXPECT_EQ(readProblem<Leaves>(R"({"flag": 1})"), u".flag: expected a bool, found a number"_s);
}

TEST(RecordCoding, NullOnARequiredMemberIsAnError)
{
    EXPECT_EQ(readProblemOf<QString>("null"), u".value: expected text, found null"_s);
    EXPECT_EQ(readProblemOf<double>("null"), u".value: expected a number, found null"_s);
    EXPECT_EQ(readProblemOf<Codec>("null"), u".value: expected an object, found null"_s);
    EXPECT_EQ(readProblemOf<std::vector<int>>("[null]"),
              u".value[0]: expected a whole number, found null"_s);
}

TEST(RecordCoding, AnOptionalMemberMayBeAbsentOrNull)
{
    for (const char* json : {R"({"codec": "a"})", R"({"codec": "a", "level": null})"})
        EXPECT_EQ(Json::read<Codec>(json).value(), (Codec{u"a"_s, std::nullopt}));
    EXPECT_EQ(Json::read<Codec>(R"({"codec": "a", "level": 0})").value(), (Codec{u"a"_s, 0.0}));
    EXPECT_EQ(readProblem<Codec>(R"({"codec": "a", "level": "high"})"),
              u".level: expected a number, found text"_s);
}

TEST(RecordCoding, AnAbsentOptionalMemberIsNotWritten)
{
    EXPECT_EQ(Json::write(Codec{u"a"_s, std::nullopt}).value(), "{\n    \"codec\": \"a\"\n}\n");
    EXPECT_EQ(written(std::optional<int>(0)), "{ \"value\": 0 }");
}

TEST(RecordCoding, UnknownKeysAreIgnored)
{
    EXPECT_EQ(Json::read<Codec>(R"({"codec": "a", "later": [1]})").value().codec, u"a"_s);
}

TEST(RecordCoding, EnumerationsGoByTheNamesOfTheirCases)
{
    EXPECT_EQ(enumName(Colour::darkBlue), "darkBlue");
    EXPECT_EQ(readValue<Colour>("\"green\""), Colour::green);
    EXPECT_EQ(readProblemOf<Colour>("\"Green\""), u".value: unknown value \"Green\""_s);
    EXPECT_EQ(readProblemOf<Colour>("\"\""), u".value: unknown value \"\""_s);
    EXPECT_EQ(readProblemOf<Colour>("1"), u".value: expected text, found a number"_s);
}

TEST(RecordCoding, APairHasTwoElements)
{
    using Bounds = std::pair<double, double>;
    EXPECT_EQ(readValue<Bounds>("[1, 2.5]"), Bounds(1, 2.5));
    EXPECT_EQ(readProblemOf<Bounds>("[1]"), u".value: expected two elements"_s);
    EXPECT_EQ(readProblemOf<Bounds>("[1, 2, 3]"), u".value: expected two elements"_s);
    EXPECT_EQ(readProblemOf<Bounds>("[1, true]"), u".value[1]: expected a number, found a bool"_s);
}

TEST(RecordCoding, AMapKeepsAwkwardKeys)
{
    const std::map<QString, int> counts{{u""_s, 1}, {u"a.b \"c\""_s, 2}, {u"\U0001F3AC"_s, 3}};
    EXPECT_EQ(copied(counts), counts);
}

TEST(RecordCoding, AFileMemberMustBeALocalFile)
{
    EXPECT_EQ(readProblemOf<FileUrl>("\"http://x/a\""), u".value: expected a file URL"_s);
    const FileUrl awkward = FileUrl::fromPath("/v/a\xFF\n\"b\".mov");
    EXPECT_EQ(copied(awkward), awkward);
}

TEST(RecordCoding, DatesAreWholeSecondsOfUtc)
{
    const QDateTime date({2026, 3, 1}, {12, 30, 5, 999}, Qt::UTC);
    EXPECT_EQ(written(date), "{ \"value\": \"2026-03-01T12:30:05Z\" }");
    EXPECT_EQ(written(date.toOffsetFromUtc(2 * 3600)), written(date));
    EXPECT_EQ(written(date.toLocalTime()), written(date));
    const QDateTime whole({2026, 3, 1}, {12, 30, 5}, Qt::UTC);
    EXPECT_EQ(copied(whole), whole);
    EXPECT_EQ(copied(whole)->timeSpec(), Qt::UTC);
}

TEST(RecordCoding, ADateMayBeReadWithAnyOffset)
{
    const QDateTime date({2026, 3, 1}, {12, 30}, Qt::UTC);
    for (const char* text : {"2026-03-01T12:30:00Z", "2026-03-01T14:30:00+02:00",
                             "2026-03-01T07:00:00-05:30", "2026-03-01T12:30:00.000Z"})
        EXPECT_EQ(readValue<QDateTime>(QByteArray("\"") + text + '"'), date) << text;
}

TEST(RecordCoding, NothingElseServesADate)
{
    for (const char* text : {"", "soon", "2026-03-01", "2026-03-01T12:30:00",
                             "2026-02-30T12:30:00Z", "12:30:00Z", "1772368200"})
        EXPECT_EQ(readProblemOf<QDateTime>(QByteArray("\"") + text + '"'),
                  u".value: expected a date such as 2026-03-01T12:30:00Z"_s)
            << text;
    EXPECT_EQ(readProblemOf<QDateTime>("1772368200"), u".value: expected text, found a number"_s);
}

TEST(RecordCoding, ADateThatIsNoneFailsOnWriting)
{
    EXPECT_EQ(writeProblem(Holder<QDateTime>{}), u".value: not a date"_s);
    EXPECT_EQ(writeProblem(Holder<QDateTime>{QDateTime({12026, 3, 1}, {0, 0}, Qt::UTC)}),
              u".value: not a date"_s);
}

TEST(RecordCoding, UuidsAreUpperCaseWithoutBraces)
{
    const QUuid id(0x3f2504e0, 0x4f89, 0x41d3, 0x9a, 0x0c, 0x03, 0x05, 0xe8, 0x2c, 0x33, 0x01);
    EXPECT_EQ(written(id), "{ \"value\": \"3F2504E0-4F89-41D3-9A0C-0305E82C3301\" }");
    EXPECT_EQ(copied(id), id);
    EXPECT_EQ(readValue<QUuid>("\"3f2504e0-4f89-41d3-9a0c-0305e82c3301\""), id);
    EXPECT_EQ(copied(QUuid()), QUuid());
    for (const char* text : {"", "3F2504E0", "3F2504E0-4F89-41D3-9A0C-0305E82C330X"})
        EXPECT_EQ(readProblemOf<QUuid>(QByteArray("\"") + text + '"'), u".value: expected a UUID"_s)
            << text;
}

TEST(RecordCoding, ASharedMemberCodesLikeAnOptionalOne)
{
    using Shared = Holder<std::shared_ptr<const Codec>>;
    EXPECT_EQ(Json::write(Shared{}).value(), "{\n}\n");
    const Shared holder{std::make_shared<const Codec>(Codec{u"a"_s, 1.5})};
    const QByteArray json = Json::write(holder).value();
    EXPECT_EQ(json.simplified(), R"({ "value": { "codec": "a", "level": 1.5 } })");
    EXPECT_EQ(*Json::read<Shared>(json)->value, *holder.value);
    EXPECT_EQ(Json::read<Shared>("{}")->value, nullptr);
    EXPECT_EQ(Json::read<Shared>(R"({"value": null})")->value, nullptr);
    EXPECT_EQ(readProblem<Shared>(R"({"value": {}})"), u".value.codec: missing"_s);
    EXPECT_EQ(writeProblem(Shared{std::make_shared<const Codec>(Codec{u"a"_s, infinity})}),
              u".value.level: not a finite number"_s);
}

} // namespace
} // namespace vantroque
