#include "Base/Timecode.h"
#include "TextRegions.h"

// The rows of a file whose text was read.

namespace vantroque::Checker {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

namespace {

constexpr const char* bothLimits = "text and graphics inside 90%, rejected past 95%";
constexpr const char* safeOnly =
    "text and graphics inside 90%, and anything up to 100% is accepted";
constexpr const char* rejectOnly = "text and graphics inside 95%";

const std::vector<QString> tiktok{u"tiktok"_s};
const std::vector<QString> everyZone{u"tiktok"_s, u"meta-reels-stories"_s};

CheckResult safeArea(Verdict verdict, const char* measured, const char* expected,
                     const char* fix = nullptr)
{
    return row("text-safe", "Safe area", verdict, measured, expected, fix);
}

CheckResult zones(Verdict verdict, const char* measured, const char* fix = nullptr,
                  const char* expected = "text clear of the TikTok controls")
{
    return row("text-zones", "Safe zones", verdict, measured, expected, fix);
}

/// The one row of a profile.
CheckResult rowOf(const Profile& profile, const MediaInfo& media)
{
    const Rows rows = rowsOf(checkTextPlacement, profile, media);
    return rows.size() == 1 ? rows[0] : CheckResult{};
}

/// The safe area row with a limit of 90 and one of 95 %.
CheckResult strictRow(const std::vector<TextRegion>& regions)
{
    return rowOf(withPlacement(0.9, 0.95), spotWith(regions));
}

CheckResult zonesRow(const std::vector<TextRegion>& regions,
                     const std::vector<QString>& ids = tiktok)
{
    return rowOf(withPlacement({}, {}, ids), uprightWith(regions));
}

/// Text of a tenth of the picture's height at its right edge, with that share under the lower band
/// of TikTok's controls, which begins at 0.65625, and clear of the columns at the sides.
TextRegion underControls(double share, double start = 10, const QString& text = u"SALE"_s)
{
    return textAt({0.3, 0.65625 - 0.1 * (1 - share), 0.3, 0.1}, start, start + 2, text);
}

} // namespace

TEST(TextPlacement, WithoutHeldTextPasses)
{
    EXPECT_EQ(strictRow({}),
              safeArea(Verdict::pass, "no text held on screen for a second or longer", bothLimits));
    EXPECT_EQ(zonesRow({}), zones(Verdict::pass, "no text held on screen for a second or longer"));
}

TEST(TextPlacement, OneTextInsidePasses)
{
    EXPECT_EQ(strictRow({reaching(0.8)}),
              safeArea(Verdict::pass, "The text reaches 80%, inside 90%.", bothLimits));
}

TEST(TextPlacement, SeveralTextsInsidePass)
{
    EXPECT_EQ(strictRow({reaching(0.8), reaching(0.855), reaching(0.7)}),
              safeArea(Verdict::pass,
                       "All 3 text elements are inside 90%. The furthest reaches 85.5%.",
                       bothLimits));
    EXPECT_EQ(strictRow({reaching(0.8), reaching(0.7)}).measured,
              u"All 2 text elements are inside 90%. The furthest reaches 80%."_s);
}

TEST(TextPlacement, AHairBeyondCountsAsInside)
{
    const auto verdict = [](double reach) {
        return rowOf(withPlacement(0.9, {}), spotWith({reaching(reach)})).verdict;
    };
    EXPECT_EQ(verdict(0.904), Verdict::pass);
    EXPECT_EQ(verdict(0.905), Verdict::info);
    EXPECT_EQ(strictRow({reaching(0.954)}).verdict, Verdict::warn);
    EXPECT_EQ(strictRow({reaching(0.955)}).verdict, Verdict::fail);
}

TEST(TextPlacement, BetweenTheLimitsWarns)
{
    EXPECT_EQ(strictRow({reaching(0.93)}),
              safeArea(Verdict::warn,
                       "Accepted. \"SALE\" reaches 93% at 00:00:10:00, past the 90% title-safe "
                       "area.",
                       bothLimits,
                       "This is inside 95%, so it will not be rejected for placement. On a TV that "
                       "overscans, the edge of \"SALE\" may be cut."));
}

TEST(TextPlacement, PastTheOuterLimitFails)
{
    EXPECT_EQ(strictRow({reaching(0.98, 10.04)}),
              safeArea(Verdict::fail, "\"SALE\" reaches 98% at 00:00:10:01, past 95%.", bothLimits,
                       "Test TV will reject this. Move \"SALE\" inside 90% and re-export."));
}

TEST(TextPlacement, WithoutAnOuterLimitNothingFails)
{
    EXPECT_EQ(rowOf(withPlacement(0.9, {}), spotWith({reaching(1)})),
              safeArea(Verdict::info,
                       "Accepted. \"SALE\" reaches 100% at 00:00:10:00, past the 90% Test TV "
                       "recommends.",
                       safeOnly));
}

TEST(TextPlacement, WithoutAnInnerLimitTheOuterOneCountsForBoth)
{
    const Profile profile = withPlacement({}, 0.95);
    EXPECT_EQ(rowOf(profile, spotWith({reaching(0.93)})),
              safeArea(Verdict::pass, "The text reaches 93%, inside 95%.", rejectOnly));
    EXPECT_EQ(rowOf(profile, spotWith({reaching(0.96)})),
              safeArea(Verdict::fail, "\"SALE\" reaches 96% at 00:00:10:00, past 95%.", rejectOnly,
                       "Test TV will reject this. Move \"SALE\" inside 95% and re-export."));
}

TEST(TextPlacement, TellsOfTheFurthestOfSeveral)
{
    const TextRegion inside = reaching(0.5);
    const TextRegion far = reaching(0.97, 12, u"FAR"_s);
    const TextRegion further = reaching(0.99, 20, u"FURTHER"_s);
    EXPECT_EQ(strictRow({inside, far}).measured,
              u"\"FAR\" reaches 97% at 00:00:12:00, past 95%."_s);
    EXPECT_EQ(strictRow({far, further}).measured,
              u"Both text elements are past 95%. \"FURTHER\" goes furthest, reaching 99% at "
              "00:00:20:00."_s);
    EXPECT_EQ(strictRow({inside, far, further}).measured,
              u"2 of 3 text elements are past 95%. \"FURTHER\" goes furthest, reaching 99% at "
              "00:00:20:00."_s);
    EXPECT_EQ(strictRow({far, further, far}).measured,
              u"All 3 text elements are past 95%. \"FURTHER\" goes furthest, reaching 99% at "
              "00:00:20:00."_s);
}

TEST(TextPlacement, TextBeyondTheOuterLimitAloneIsCountedForIt)
{
    const TextRegion accepted = reaching(0.93);
    const TextRegion far = reaching(0.97, 12, u"FAR"_s);
    EXPECT_EQ(strictRow({accepted, far}).measured,
              u"\"FAR\" reaches 97% at 00:00:12:00, past 95%."_s);
    EXPECT_EQ(strictRow({accepted, reaching(0.94, 12, u"NEAR"_s), reaching(0.5)}).measured,
              u"Accepted. 2 of 3 text elements are past the 90% title-safe area. \"NEAR\" goes "
              "furthest, reaching 94% at 00:00:12:00."_s);
}

TEST(TextPlacement, OfEquallyFarTextsTheFirstIsNamed)
{
    EXPECT_EQ(strictRow({reaching(0.97, 5, u"FIRST"_s), reaching(0.97, 6, u"OTHER"_s)}).measured,
              u"Both text elements are past 95%. \"FIRST\" goes furthest, reaching 97% at "
              "00:00:05:00."_s);
}

TEST(TextPlacement, TheTextOfTheLeaderIsNoMatter)
{
    const auto verdict = [](double start) {
        Profile profile = withPlacement({}, 0.95);
        MediaInfo media = spotWith({reaching(1, start)});
        addLeader(profile, media);
        return rowOf(profile, media).verdict;
    };
    EXPECT_EQ(verdict(2), Verdict::pass);
    EXPECT_EQ(verdict(6.49), Verdict::pass);
    EXPECT_EQ(verdict(6.5), Verdict::fail);
    EXPECT_EQ(verdict(7), Verdict::fail);
}

TEST(TextPlacement, WithoutItsBlackThereIsNoLeader)
{
    Profile profile = withPlacement({}, 0.95);
    MediaInfo media = spotWith({reaching(1, 2)});
    addLeader(profile, media);
    media.signal->blackRuns = {{8, 9}};
    EXPECT_EQ(rowOf(profile, media).verdict, Verdict::fail);
}

TEST(TextPlacement, LongTextIsCut)
{
    const QString forty(40, u'x');
    const QString fortyOne(41, u'x');
    const auto measured = [](const QString& text) {
        return strictRow({reaching(0.97, 10, text)}).measured;
    };
    EXPECT_EQ(measured(u" \n"_s + forty + u"\t "_s),
              u'"' + forty + u"\" reaches 97% at 00:00:10:00, past 95%."_s);
    EXPECT_EQ(measured(fortyOne),
              u'"' + QString(38, u'x') + u"..\" reaches 97% at 00:00:10:00, past 95%."_s);
}

TEST(TextPlacement, TextMayHoldPlaceholders)
{
    EXPECT_EQ(strictRow({reaching(0.97, 10, u"%1 %2 %L3"_s)}),
              safeArea(Verdict::fail, "\"%1 %2 %L3\" reaches 97% at 00:00:10:00, past 95%.",
                       bothLimits,
                       "Test TV will reject this. Move \"%1 %2 %L3\" inside 90% and re-export."));
    EXPECT_EQ(zonesRow({underControls(0.5, 10, u"%4 %1"_s)}).measured,
              u"\"%4 %1\" sits 50% under the TikTok controls at 00:00:10:00."_s);
}

TEST(TextPlacement, WithoutPictureTheSafeAreaIsScoredAt24Frames)
{
    MediaInfo media = spotWith({reaching(0.97, 10.5)});
    media.video.reset();
    EXPECT_EQ(rowOf(withPlacement(0.9, 0.95), media).measured,
              u"\"SALE\" reaches 97% at 00:00:10:12, past 95%."_s);
}

TEST(TextPlacement, TheTimecodeOfBroadcastRatesDropsNumbers)
{
    MediaInfo media = spotWith({reaching(0.97, 60.5)});
    media.video->nominalFrameRate = 30000 / 1001.0;
    EXPECT_EQ(rowOf(withPlacement(0.9, 0.95), media).measured,
              u"\"SALE\" reaches 97% at %1, past 95%."_s.arg(
                  Timecode::fromSeconds(60.5, 30000 / 1001.0).text()));
}

// Platform zones.

TEST(TextUnderControls, AWidePictureIsNotTheZonesMatter)
{
    EXPECT_EQ(
        rowOf(withPlacement({}, {}, tiktok), spotWith({reaching(1)})),
        zones(Verdict::info, "This is a 1920x1080 frame. The TikTok zones apply to 9:16 cuts."));
    EXPECT_EQ(
        rowOf(withPlacement({}, {}, everyZone), spotWith({})),
        zones(Verdict::info,
              "This is a 1920x1080 frame. The TikTok and Reels / Stories zones apply to 9:16 cuts.",
              nullptr, "text clear of the TikTok and Reels / Stories controls"));
}

TEST(TextUnderControls, ClearTextPasses)
{
    const TextRegion clear = textAt({0.3, 0.3, 0.3, 0.1});
    EXPECT_EQ(zonesRow({clear}), zones(Verdict::pass, "The text is clear of the TikTok controls."));
    EXPECT_EQ(zonesRow({clear, clear}, everyZone),
              zones(Verdict::pass,
                    "All 2 text elements are clear of the TikTok and Reels / Stories controls.",
                    nullptr, "text clear of the TikTok and Reels / Stories controls"));
}

TEST(TextUnderControls, ATwentiethOfTheTextFails)
{
    EXPECT_EQ(zonesRow({underControls(0.049)}).verdict, Verdict::pass);
    EXPECT_EQ(zonesRow({underControls(0.05)}),
              zones(Verdict::fail, "\"SALE\" sits 5% under the TikTok controls at 00:00:10:00.",
                    "Move the text clear of where TikTok draw their controls. Turn the zone guides "
                    "on to see where they sit."));
}

TEST(TextUnderControls, TheWorstOfSeveralIsNamed)
{
    const TextRegion clear = textAt({0.3, 0.3, 0.3, 0.1});
    EXPECT_EQ(
        zonesRow({underControls(0.25, 5, u"A"_s), clear, underControls(0.75, 8, u"B"_s)}).measured,
        u"\"B\" sits 75% under the TikTok controls at 00:00:08:00. 2 of 3 text elements are "
        "affected."_s);
    EXPECT_EQ(zonesRow({underControls(0.5, 5, u"A"_s), underControls(0.5, 8, u"B"_s)}).measured,
              u"\"A\" sits 50% under the TikTok controls at 00:00:05:00. 2 of 2 text elements are "
              "affected."_s)
        << "the first of equals";
}

TEST(TextUnderControls, TextsThatStartTogetherCountOnce)
{
    EXPECT_EQ(zonesRow({underControls(0.25, 5, u"A"_s), underControls(0.75, 5, u"B"_s)}).measured,
              u"\"B\" sits 75% under the TikTok controls at 00:00:05:00."_s);
}

TEST(TextUnderControls, OneTextUnderTwoPlatformsNamesBoth)
{
    // The lower band of Reels begins a little higher, at 0.65.
    EXPECT_EQ(zonesRow({underControls(0.5)}, everyZone),
              zones(Verdict::fail,
                    "\"SALE\" sits 56.2% under the Reels / Stories controls at 00:00:10:00.",
                    "Move the text clear of where Reels / Stories and TikTok draw their controls. "
                    "Turn the zone guides on to see where they sit.",
                    "text clear of the TikTok and Reels / Stories controls"));
}

TEST(TextUnderControls, TheTextOfTheLeaderIsNoMatter)
{
    Profile profile = withPlacement({}, {}, tiktok);
    MediaInfo media = uprightWith({underControls(1, 2)});
    addLeader(profile, media);
    EXPECT_EQ(rowOf(profile, media).measured, u"no text held on screen for a second or longer"_s);
}

TEST(TextUnderControls, WithoutPictureThereIsNoScoredRow)
{
    MediaInfo media = spotWith({reaching(1)});
    media.video.reset();
    EXPECT_THAT(rowsOf(checkTextPlacement, withPlacement({}, {}, tiktok), media), IsEmpty());
}

TEST(TextUnderControls, ComesBehindTheSafeArea)
{
    EXPECT_THAT(rowsOf(checkTextPlacement, withPlacement(0.9, 0.95, tiktok),
                       uprightWith({underControls(0.5)})),
                ElementsAre(Field(&CheckResult::id, u"text-safe"_s),
                            Field(&CheckResult::id, u"text-zones"_s)));
}

} // namespace vantroque::Checker
