#include "Slated.h"

namespace vantroque::Checker {

using namespace Qt::StringLiterals;

namespace {

const std::vector<QString> mustShow{u"Ad-ID"_s, u"Advertiser"_s, u"Title"_s};

struct Slate {
    std::optional<std::vector<QString>> lines;
    QString fileName = u"ABCD1234000H"_s;
    double adSeconds = 30;

    CheckResult row() const
    {
        SignalInfo signal;
        signal.slateTextLines = lines;
        Rows rows;
        checkSlateContents(mustShow, signal, fileName, adSeconds, rows);
        EXPECT_EQ(rows.size(), 1U);
        return rows.at(0);
    }
};

CheckResult slateText(Verdict verdict, const char* measured, const char* fix = nullptr)
{
    return row("slate-text", "Slate contents", verdict, measured,
               "a slate showing Ad-ID, Advertiser, Title", fix);
}

/// What is said of the length when the slate has this one line.
QString lengthFinding(const QString& line, double adSeconds = 30)
{
    return Slate{{{line}}, u"other"_s, adSeconds}.row().measured.section(u"; "_s, 1, 1);
}

bool findsAdID(const QString& fileName, const QString& line)
{
    return Slate{{{line}}, fileName}.row().measured.startsWith(u"Ad-ID matches"_s);
}

const char* const confirmFix = "Confirm the slate shows Ad-ID, Advertiser, Title. The reader could "
                               "not verify every field.";

} // namespace

TEST(SlateContents, ASlateThatWasNotReadIsInfo)
{
    EXPECT_EQ(Slate{}.row(), slateText(Verdict::info, "slate frame not read"));
}

TEST(SlateContents, LinesWithoutTwoLettersOrDigitsAreNotLegible)
{
    const auto illegible =
        slateText(Verdict::warn, "no legible text on the slate frame",
                  "Confirm the slate shows Ad-ID, Advertiser, Title by eye. Stylized type can "
                  "defeat the reader.");
    EXPECT_EQ((Slate{std::vector<QString>{}}.row()), illegible);
    EXPECT_EQ((Slate{{{u"A"_s, u"-- 7 --"_s, u"ß"_s, u"½²"_s}}}.row()), illegible);
    EXPECT_EQ((Slate{{{u"A"_s, u"日本"_s}}}.row().measured.section(u"; "_s, 2)),
              u"1 lines of text"_s);
}

TEST(SlateContents, ASlateWithAdIDLengthAndEnoughLinesPasses)
{
    EXPECT_EQ((Slate{{{u"Acme"_s, u"abcd 1234-000h"_s, u"Length :30"_s}}}.row()),
              slateText(Verdict::pass, "Ad-ID matches the file name (ABCD1234000H); stated "
                                       "duration matches the ad (:30); 3 lines of text"));
}

TEST(SlateContents, ASlateThatContradictsTheFileFails)
{
    EXPECT_EQ((Slate{{{u"ABCD1234000H"_s, u"Acme"_s, u":15"_s, u"1:00"_s}}}.row()),
              slateText(Verdict::fail,
                        "Ad-ID matches the file name (ABCD1234000H); slate states :15 / 1:00 but "
                        "the ad measures :30; 4 lines of text",
                        "Fix the slate, or deliver the right cut. The stated duration must match "
                        "the ad's length."));
}

TEST(SlateContents, WhatTheReaderMayHaveMissedOnlyWarns)
{
    EXPECT_EQ((Slate{{{u"ABCD1234000H"_s, u"Acme"_s, u"Summer"_s}}}.row()),
              slateText(Verdict::warn,
                        "Ad-ID matches the file name (ABCD1234000H); no stated duration read; 3 "
                        "lines of text",
                        confirmFix));
    EXPECT_EQ((Slate{{{u"XYZ"_s, u"Acme"_s, u":30"_s}}}.row()),
              slateText(Verdict::warn,
                        "no Ad-ID matching the file name (ABCD1234000H) was read; stated duration "
                        "matches the ad (:30); 3 lines of text",
                        confirmFix));
    EXPECT_EQ((Slate{{{u"ABCD1234000H"_s, u":30"_s, u"*"_s}}}.row()),
              slateText(Verdict::warn,
                        "Ad-ID matches the file name (ABCD1234000H); stated duration matches the "
                        "ad (:30); 2 lines of text",
                        confirmFix));
}

TEST(SlateContents, AnAdIDMayRunOverLines)
{
    EXPECT_EQ((Slate{{{u"ABCD1234"_s, u"000H :30"_s, u"Acme"_s}}}.row().verdict), Verdict::pass);
}

TEST(SlateContents, AnAdIDHasFourToSixteenLettersAndDigits)
{
    EXPECT_FALSE(findsAdID(u"ABC"_s, u"ABC ABC"_s));
    EXPECT_TRUE(findsAdID(u"A-B_C 1"_s, u"abc1"_s));
    EXPECT_TRUE(findsAdID(u"ABCDEFGH12345678"_s, u"ABCDEFGH12345678"_s));
    EXPECT_FALSE(findsAdID(u"ABCDEFGH123456789"_s, u"ABCDEFGH123456789"_s));
    EXPECT_TRUE(findsAdID(u"öl42"_s, u"Öl 42"_s));
    EXPECT_FALSE(findsAdID(u"öl4"_s, u"ÖL4"_s));
}

TEST(SlateContents, AFileNameThatLooksLikeAPlaceholderStaysWhole)
{
    EXPECT_EQ((Slate{{{u"Acme"_s}}, u"%1 %2 spot"_s}.row().measured),
              u"no Ad-ID matching the file name (%1 %2 spot) was read; no stated duration read; 1 "
              u"lines of text"_s);
}

TEST(SlateContents, LengthsAreReadInAllTheirSpellings)
{
    for (const QString& line :
         {u":30"_s, u".30"_s, u":030"_s, u"0:30"_s, u"00:30 min"_s, u"30 SEC"_s, u"30s"_s,
          u"30 Secs"_s, u"30 seconds"_s, u"TRT 30"_s, u"Duration: 30"_s, u"Length - 30"_s})
        EXPECT_EQ(lengthFinding(line), u"stated duration matches the ad (:30)"_s)
            << line.toStdString();
    EXPECT_EQ(lengthFinding(u"TRT 1:30"_s, 90), u"stated duration matches the ad (1:30)"_s);
    EXPECT_EQ(lengthFinding(u"65 sec"_s, 65), u"stated duration matches the ad (1:05)"_s);
}

TEST(SlateContents, OtherNumbersAreNoLength)
{
    for (const QString& line :
         {u"01:00:00:30"_s, u"12.05.30"_s, u"12/30"_s, u"1:75"_s, u"TAKE 30"_s, u"30 SPOTS"_s,
          u"TRT ABCD 30"_s, u"720x576"_s, u"TRT ٣٠"_s, u"1080-30"_s})
        EXPECT_EQ(lengthFinding(line), u"no stated duration read"_s) << line.toStdString();
}

TEST(SlateContents, LengthsBeyondOneSecondToTenMinutesAreDropped)
{
    EXPECT_EQ(lengthFinding(u":00"_s), u"no stated duration read"_s);
    EXPECT_EQ(lengthFinding(u"601 sec"_s), u"no stated duration read"_s);
    EXPECT_EQ(lengthFinding(u"600 sec"_s), u"slate states 10:00 but the ad measures :30"_s);
    EXPECT_EQ(lengthFinding(u":01"_s), u"slate states :01 but the ad measures :30"_s);
}

TEST(SlateContents, TheAdsLengthIsTakenInWholeSeconds)
{
    EXPECT_EQ(lengthFinding(u":30"_s, 29.5), u"stated duration matches the ad (:30)"_s);
    EXPECT_EQ(lengthFinding(u":30"_s, 30.5), u"slate states :30 but the ad measures :31"_s);
    EXPECT_EQ(lengthFinding(u":05"_s, 5), u"stated duration matches the ad (:05)"_s);
}

TEST(SlateContents, DigitsOfAnyScriptAreLegibleAndStateNoLength)
{
    EXPECT_EQ(
        (Slate{{{u"ABCD1234000H"_s, u"Acme"_s, u"TRT \u0663\u0660"_s, u"\u0663\u0660"_s}}}.row()),
        slateText(Verdict::warn,
                  "Ad-ID matches the file name (ABCD1234000H); no stated duration read; 4 "
                  "lines of text",
                  confirmFix));
}

} // namespace vantroque::Checker
