#include "Signal/SignalMatches.h"

#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque::SignalAnalyzer {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Matches, GiveTheGroupsThatTookPart)
{
    EXPECT_THAT(
        matches(u"(a)|(b)(c)?"_s, u"a b bc"_s),
        ElementsAre(QStringList{u"a"_s}, QStringList{u"b"_s}, (QStringList{u"b"_s, u"c"_s})));
    EXPECT_THAT(matches(u"a"_s, u"a"_s), ElementsAre(QStringList{}));
    EXPECT_THAT(matches(u"(x*)b"_s, u"b"_s), ElementsAre(QStringList{QString()}))
        << "an empty group took part";
}

TEST(Matches, ABrokenPatternMatchesNothing)
{
    EXPECT_THAT(matches(u"(a"_s, u"a"_s), IsEmpty());
    EXPECT_EQ(firstMatch(u"(a"_s, u"a"_s), std::nullopt);
}

TEST(Matches, LookBehindAndLettersOfAnyLanguageWork)
{
    EXPECT_EQ(firstMatch(uR"((?<=Titel: )(\w+))"_s, u"Titel: Frühling"_s), u"Frühling"_s);
}

TEST(Matches, TheFirstMatchIsItsFirstGroup)
{
    EXPECT_EQ(firstMatch(uR"((\d+):(\d+))"_s, u"1:2 3:4"_s), u"1"_s);
    EXPECT_EQ(firstMatch(u"a"_s, u"a"_s), std::nullopt) << "no group";
    EXPECT_EQ(firstMatch(u"(b)"_s, u"a"_s), std::nullopt);
}

} // namespace vantroque::SignalAnalyzer
