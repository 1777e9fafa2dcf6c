#include "Profiles/SpecFreshness.h"

#include "Support/TestFolder.h"

#include <QTimeZone>

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

Profile verified(const QString& date, const QString& id = u"one"_s)
{
    Profile profile;
    profile.id = id;
    profile.name = u"Name of "_s + id;
    profile.sourceURL = u"https://example.org/"_s + id;
    profile.verifiedDate = date;
    return profile;
}

QDateTime utc(int year, int month, int day, int hour = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, 0), QTimeZone::utc());
}

SpecFreshness freshnessAfter(int days)
{
    return freshness(verified(u"2025-01-01"_s), utc(2025, 1, 1).addDays(days));
}

TEST(SpecFreshness, AWrittenDayIsRead)
{
    EXPECT_EQ(verifiedOn(verified(u"2026-09-01"_s)), QDate(2026, 9, 1));
    EXPECT_EQ(verifiedOn(verified(u"2024-02-29"_s)), QDate(2024, 2, 29));
}

TEST(SpecFreshness, ATextThatIsNoDayIsUnreadable)
{
    for (const QString& text : {u""_s, u"soon"_s, u"2026-02-29"_s, u"2026-13-01"_s, u"2026-9-1"_s,
                                u"26-09-01"_s, u"2026-09-01T00:00:00"_s, u" 2026-09-01"_s,
                                u"2026-09-01\n"_s, u"2026/09/01"_s, u"٢٠٢٦-٠٩-٠١"_s}) {
        EXPECT_EQ(verifiedOn(verified(text)), std::nullopt) << text.toStdString();
        EXPECT_EQ(daysSinceVerified(verified(text), utc(2026, 1, 1)), std::nullopt);
        EXPECT_EQ(freshness(verified(text), utc(2026, 1, 1)), SpecFreshness::unreadable);
    }
}

TEST(SpecFreshness, AHalfYearIsFreshAndAYearStaleToTheDay)
{
    EXPECT_EQ(freshnessAfter(0), SpecFreshness::fresh);
    EXPECT_EQ(freshnessAfter(180), SpecFreshness::fresh);
    EXPECT_EQ(freshnessAfter(181), SpecFreshness::stale);
    EXPECT_EQ(freshnessAfter(365), SpecFreshness::stale);
    EXPECT_EQ(freshnessAfter(366), SpecFreshness::expired);
}

TEST(SpecFreshness, ADayToComeIsFresh)
{
    EXPECT_EQ(freshnessAfter(-400), SpecFreshness::fresh);
}

TEST(SpecFreshness, OnlyWholeDaysCount)
{
    const Profile profile = verified(u"2026-09-02"_s);
    EXPECT_EQ(daysSinceVerified(profile, utc(2026, 9, 3, 23)), 1);
    EXPECT_EQ(daysSinceVerified(profile, utc(2026, 9, 1, 1)), 0);
    EXPECT_EQ(daysSinceVerified(profile, utc(2026, 8, 31, 23)), -1);
}

TEST(SpecFreshness, DaysAreCountedInUtcWhereverTheClockStands)
{
    const QDateTime tokyo(QDate(2026, 9, 2), QTime(8, 0), QTimeZone(9 * 3600));
    EXPECT_EQ(daysSinceVerified(verified(u"2026-09-01"_s), tokyo), 0);
    EXPECT_EQ(daysSinceVerified(verified(u"2026-09-01"_s), tokyo.addSecs(3600)), 1);
}

TEST(SpecFreshnessReport, UnreadableDatesComeFirstThenTheOldest)
{
    const std::vector profiles{verified(u"2026-08-31"_s, u"new"_s), verified(u"never"_s, u"a"_s),
                               verified(u"2025-01-01"_s, u"old"_s), verified(u"?"_s, u"b"_s),
                               verified(u"2026-08-31"_s, u"newer"_s)};
    const auto rows = SpecFreshnessReport::rows(profiles, utc(2026, 9, 1));
    std::vector<QString> ids;
    for (const SpecFreshnessRow& row : rows)
        ids.push_back(row.id);
    EXPECT_THAT(ids, ElementsAre(u"a"_s, u"b"_s, u"old"_s, u"new"_s, u"newer"_s));
    EXPECT_EQ(rows[2], (SpecFreshnessRow{u"old"_s, u"Name of old"_s, u"https://example.org/old"_s,
                                         u"2025-01-01"_s, 608, SpecFreshness::expired}));
}

TEST(SpecFreshnessReport, TheSummaryHasOneLineAProfileInColumns)
{
    const std::vector profiles{verified(u"2026-08-31"_s, u"new"_s),
                               verified(u"2026-02-30"_s, u"odd"_s)};
    EXPECT_EQ(SpecFreshnessReport::summary(profiles, utc(2026, 9, 1)),
              u"  unreadableunreadable  2026-02-30  Name of odd\n"
              "  fresh     1d          2026-08-31  Name of new"_s);
}

TEST(SpecFreshnessReport, WithoutProfilesTheReportIsEmpty)
{
    EXPECT_THAT(SpecFreshnessReport::rows({}, utc(2026, 9, 1)), IsEmpty());
    EXPECT_EQ(SpecFreshnessReport::summary({}, utc(2026, 9, 1)), QString());
}

} // namespace
} // namespace vantroque
