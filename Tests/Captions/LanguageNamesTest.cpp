#include "Captions/LanguageNames.h"

#include "Support/TestFolder.h"
#include "Support/UserLocale.h"

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using LanguageNames::bareCode;
using LanguageNames::displayName;
using testing::Optional;

TEST(LanguageNames, EveryFormOfACodeHasItsName)
{
    const UserLocale english("en_GB");
    for (const QString& code : {u"de"_s, u"deu"_s, u"ger"_s, u"de-AT"_s, u"de_DE"_s, u"DEU"_s})
        EXPECT_THAT(displayName(code), Optional(u"German"_s)) << code.toStdString();
    EXPECT_THAT(displayName(u"gsw"_s), Optional(u"Swiss German"_s));
    EXPECT_THAT(displayName(u"mul"_s), Optional(u"Multiple languages"_s));
}

TEST(LanguageNames, AreInTheUsersLanguage)
{
    const UserLocale german("de_DE");
    EXPECT_THAT(displayName(u"eng"_s), Optional(u"Englisch"_s));
}

TEST(LanguageNames, ACodeThatNamesNoLanguageHasNone)
{
    for (const QString& code : {u""_s, u"und"_s, u"qaa"_s, u"xx"_s, u"English"_s, u"-"_s, u"日本"_s,
                                u"\u0000"_s, QString(100'000, u'a')})
        EXPECT_EQ(displayName(code), std::nullopt) << code.left(20).toStdString();
}

TEST(LanguageNames, ABareCodeIsTheShortestOfItsLanguage)
{
    EXPECT_EQ(bareCode(u"en-US"_s), u"en"_s);
    EXPECT_EQ(bareCode(u"eng"_s), u"en"_s);
    EXPECT_EQ(bareCode(u"ger"_s), u"de"_s);
    EXPECT_EQ(bareCode(u"zh_Hans_CN"_s), u"zh"_s);
    EXPECT_EQ(bareCode(u"gsw"_s), u"gsw"_s);
    EXPECT_EQ(bareCode(u"und"_s), u""_s);
    EXPECT_EQ(bareCode(u""_s), u""_s);
    EXPECT_EQ(bareCode(QString(100'000, u'a')), u""_s);
}

} // namespace
} // namespace vantroque
