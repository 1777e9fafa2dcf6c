#include "Base/Text.h"

#include "Support/TestFolder.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;

const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
const QString flag = u"\U0001F1E9\U0001F1EA"_s;
const QString accented = u"e\u0301"_s;

TEST(Text, InvalidUtf8BecomesTheReplacementCharacter)
{
    EXPECT_EQ(Text::utf8("caf\xC3\xA9"), u"caf\u00E9"_s);
    EXPECT_EQ(Text::utf8("a\xFFz"), u"a\uFFFDz"_s);
    EXPECT_EQ(Text::utf8({}), QString());
    EXPECT_EQ(Text::utf8({"a\0b", 3}).size(), 3);
}

TEST(Text, ACharacterIsWhatPeopleSeeAsOne)
{
    EXPECT_EQ(Text::characterCount(QString()), 0);
    EXPECT_EQ(Text::characterCount(u"abc"_s), 3);
    EXPECT_EQ(Text::characterCount(u"\U0001F600"_s), 1);
    EXPECT_EQ(Text::characterCount(accented), 1);
    EXPECT_EQ(Text::characterCount(flag), 1);
    EXPECT_EQ(Text::characterCount(family), 1);
    EXPECT_EQ(Text::characterCount(u'x' + family + accented + flag), 4);
}

TEST(Text, CuttingKeepsCharactersWhole)
{
    const QString text = accented + u'b' + family;
    EXPECT_EQ(Text::firstCharacters(text, 0), QString());
    EXPECT_EQ(Text::firstCharacters(text, 1), accented);
    EXPECT_EQ(Text::firstCharacters(text, 2), accented + u'b');
    EXPECT_EQ(Text::firstCharacters(text, 3), text);
    EXPECT_EQ(Text::firstCharacters(text, 99), text);
    EXPECT_EQ(Text::lastCharacters(text, 0), QString());
    EXPECT_EQ(Text::lastCharacters(text, 1), family);
    EXPECT_EQ(Text::lastCharacters(text, 2), u'b' + family);
    EXPECT_EQ(Text::lastCharacters(text, 3), text);
    EXPECT_EQ(Text::lastCharacters(text, 99), text);
    EXPECT_EQ(Text::lastCharacters(QString(), 5), QString());
}

TEST(Text, FittedTextHasTheWidthAskedFor)
{
    EXPECT_EQ(Text::fitted(u"abc"_s, 5), u"abc  "_s);
    EXPECT_EQ(Text::fitted(u"abc"_s, 3), u"abc"_s);
    EXPECT_EQ(Text::fitted(u"abcdef"_s, 3), u"abc"_s);
    EXPECT_EQ(Text::fitted(accented, 3), accented + u"  "_s);
    EXPECT_EQ(Text::fitted(QString(), 2), u"  "_s);
}

TEST(Text, ListsAreJoinedInOrder)
{
    EXPECT_EQ(Text::joined({}, u", "_s), QString());
    EXPECT_EQ(Text::joined({u"a"_s}, u", "_s), u"a"_s);
    EXPECT_EQ(Text::joined({u"b"_s, u"a"_s}, u", "_s), u"b, a"_s);
    const auto doubled = [](int number) { return QString::number(2 * number); };
    EXPECT_EQ(Text::joined(std::vector{1, 2}, u" or "_s, doubled), u"2 or 4"_s);
}

TEST(Text, ControlCharactersDoNotReachATerminal)
{
    EXPECT_EQ(Text::printable(u"a\u001b[31mb\nc\u009dé🎬"_s), u"a?[31mb?c?é🎬"_s);
    EXPECT_EQ(Text::printable(u"spot\u202evom.4pm\u2066x\u2029y"_s), u"spot?vom.4pm?x?y"_s);
    EXPECT_EQ(Text::printable(u"עברית\u200f\u200dفارسی"_s), u"עברית\u200f\u200dفارسی"_s);
}

TEST(Text, OnlyOneIsSingular)
{
    EXPECT_EQ(Text::plural(0), u"s"_s);
    EXPECT_EQ(Text::plural(1), QString());
    EXPECT_EQ(Text::plural(2), u"s"_s);
}

TEST(Text, SizesOnDiskAreDecimal)
{
    EXPECT_EQ(Text::byteCount(0), u"0 bytes"_s);
    EXPECT_EQ(Text::byteCount(999), u"999 bytes"_s);
    EXPECT_EQ(Text::byteCount(1'000), u"1.0 kB"_s);
    EXPECT_EQ(Text::byteCount(1'200'000'000), u"1.2 GB"_s);
}

} // namespace
} // namespace vantroque
