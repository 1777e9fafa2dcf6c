#include "Base/Json.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::StartsWith;

/// Why the text was refused; empty when it was not.
std::string problemOf(const QByteArray& text)
{
    const auto value = Json::parse(text);
    return value ? std::string() : value.error().description.toStdString();
}

QByteArray nested(int depth, char open, char close)
{
    return QByteArray(depth, open) + QByteArray(depth, close);
}

QByteArray nestedObjects(int depth)
{
    return QByteArray("{\"a\":").repeated(depth - 1) + "{}" + QByteArray(depth - 1, '}');
}

TEST(Json, ObjectsAndListsAreRead)
{
    EXPECT_EQ(Json::parse("{\"a\": [1, null]}").value(),
              QJsonValue(QJsonObject{{u"a"_s, QJsonArray{1, QJsonValue::Null}}}));
    EXPECT_EQ(Json::parse(" [] \n").value(), QJsonValue(QJsonArray()));
    EXPECT_EQ(Json::parse("{}").value(), QJsonValue(QJsonObject()));
}

TEST(Json, PrintingIsIndentedAndOrderedByKey)
{
    EXPECT_EQ(Json::print(QJsonObject{{u"b"_s, 1}, {u"a"_s, QJsonArray{true}}}),
              "{\n    \"a\": [\n        true\n    ],\n    \"b\": 1\n}\n");
    EXPECT_EQ(Json::print(QJsonArray()), "[\n]\n");
}

TEST(Json, NestingIsBounded)
{
    const std::string refusal = "JSON nested deeper than 512 levels";
    EXPECT_EQ(problemOf(nested(512, '[', ']')), "");
    EXPECT_EQ(problemOf(nested(513, '[', ']')), refusal);
    EXPECT_EQ(problemOf(nestedObjects(512)), "");
    EXPECT_EQ(problemOf(nestedObjects(513)), refusal);
    EXPECT_EQ(problemOf(QByteArray(5'000'000, '[')), refusal);
}

TEST(Json, OnlyOpenBracketsCountForNesting)
{
    EXPECT_EQ(problemOf('[' + QByteArray("[],").repeated(2000) + "{}]"), "");
}

TEST(Json, BracketsInsideStringsDoNotNest)
{
    const QByteArray brackets(2000, '[');
    EXPECT_EQ(problemOf("[\"" + brackets + "\"]"), "");
    EXPECT_EQ(problemOf("[\"\\\"" + brackets + "\\\\\", \"{{\"]"), "");
    EXPECT_EQ(problemOf("{\"" + brackets + "\": 1}"), "");
    // The string ends before the brackets: an escaped backslash does not escape the quote.
    EXPECT_THAT(problemOf("[\"\\\\\"" + brackets), HasSubstr("deeper"));
}

TEST(Json, TooLargeATextIsRefusedBeforeItIsRead)
{
    EXPECT_EQ(problemOf(QByteArray(100'000'001, '?')), "JSON larger than 100 MB");
    EXPECT_EQ(problemOf(QByteArray("[]").leftJustified(100'000'000, ' ')), "");
}

TEST(Json, MalformedTextIsRefusedWithItsPlace)
{
    for (const char* text :
         {"",          " ",        "[1, 2", "{\"a\": ", "{\"a\"",  "[\"abc", "[1,]",
          "{\"a\" 1}", "[tru]",    "[01]",  "[1e]",     "[1e999]", "[nan]",  "[] x",
          "12",        "\"text\"", "null",  "{'a': 1}", "[1] [2]", "]",      "// comment\n[]"})
        EXPECT_THAT(problemOf(text), StartsWith("not valid JSON at byte ")) << text;
    EXPECT_EQ(problemOf("[1, x]").substr(0, 27), "not valid JSON at byte 4: i");
}

TEST(Json, EveryCutOfADocumentIsRefused)
{
    const QByteArray whole =
        "{\"a\": [1.5, true, null, \"\\u00e9\\n\"], \"b\": {\"c\": \"\xC3\xA9\"}}";
    ASSERT_EQ(problemOf(whole), "");
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_NE(problemOf(whole.left(size)), "") << size;
}

TEST(Json, MalformedUtf8IsRefused)
{
    for (const char* bytes :
         {"\xFF", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\x80"})
        EXPECT_THAT(problemOf(QByteArray("[\"a") + bytes + "\"]"),
                    StartsWith("not valid JSON at byte "));
}

TEST(Json, EverythingThatUnicodeHasIsKept)
{
    const QJsonArray texts{u"\u00E9\U0001F3AC\u0000\u001F\uFFFF"_s, u"\"\\/\b\f\n\r\t"_s, u""_s};
    EXPECT_EQ(Json::parse(Json::print(texts)).value(), QJsonValue(texts));
}

} // namespace
} // namespace vantroque
