#include "VantroquePlatform/Spelling/WordLookup.h"

#include "Support/TestFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::Not;
using testing::Property;

/// What a dictionary without any word is asked for.
std::vector<QString> asked(const QString& word, const QString& language = u"en"_s)
{
    std::vector<QString> words;
    const WordLookup lookup(
        [&](const QString& each) {
            words.push_back(each);
            return false;
        },
        language);
    EXPECT_THAT(lookup.unknownParts(word, {0, word.size()}), Not(IsEmpty()));
    return words;
}

} // namespace

TEST(WordLookup, AsksForNoEmptyWord)
{
    for (const QString& language : {u"en"_s, u"de"_s, u"fr"_s, u"es"_s})
        for (const QString& word : {u"mé"_s, u"se"_s, u"a-b"_s, u"a''b"_s, u"a\u200F"_s, u"x--y"_s})
            EXPECT_THAT(asked(word, language),
                        AllOf(Not(IsEmpty()), Each(Property(&QString::size, Ge(1)))));
}

TEST(WordLookup, AsksForNoEndlessWord)
{
    for (const QString& word :
         {QString(1000, u'w'), u"abc-"_s.repeated(1000) + u'd', u"abc'"_s.repeated(1000) + u'd'})
        EXPECT_THAT(asked(word), Each(Property(&QString::size, Le(100))));
}

TEST(WordLookup, AsksForPlainWords)
{
    EXPECT_THAT(asked(u"cat\u2019\u00ADs"_s), testing::Contains(u"cat's"_s));
    EXPECT_THAT(asked(u"dark\u2011red"_s), testing::Contains(u"dark-red"_s));
}

} // namespace vantroque
