#include "Check/SignalEvents.h"
#include "Builders.h"

namespace vantroque {

inline void PrintTo(const SignalEvent& event, std::ostream* out)
{
    *out << event.id.toStdString() << " | " << enumName(event.kind) << " | " << event.frame << "-"
         << event.endFrame.value_or(-1) << " | " << enumName(event.verdict) << " | "
         << event.text.toStdString();
}

} // namespace vantroque

namespace vantroque::SignalEvents {

using namespace Qt::StringLiterals;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Kind = SignalEvent::Kind;

namespace {

SignalEvent event(const char* id, Kind kind, std::int64_t frame,
                  std::optional<std::int64_t> endFrame, Verdict verdict, const char* text)
{
    return {QString::fromUtf8(id), kind, frame, endFrame, verdict, QString::fromUtf8(text), {}};
}

MediaInfo withCadence(const FrameCadence& cadence)
{
    MediaInfo media = measuredSpot();
    media.signal->cadence = cadence;
    return media;
}

MediaInfo withBlack(const std::vector<TimeSpan>& runs)
{
    FrameCadence cadence;
    cadence.interiorBlackRuns = runs;
    return withCadence(cadence);
}

MediaInfo withDuplicates(std::int64_t count)
{
    FrameCadence cadence;
    for (std::int64_t frame = 0; frame < count; ++frame)
        cadence.duplicateFrames.push_back(frame * 2);
    cadence.duplicateCount = count;
    cadence.duplicateCause = DuplicateCause::scattered;
    return withCadence(cadence);
}

MediaInfo withLevels(const std::vector<LevelRun>& luma, const std::vector<LevelRun>& rgb,
                     bool assumed = false)
{
    MediaInfo media = measuredSpot();
    media.signal->levels = PictureLevels{};
    media.signal->levels->yRejectRuns = luma;
    media.signal->levels->rgbRejectRuns = rgb;
    media.signal->levels->matrixAssumed = assumed;
    return media;
}

std::vector<QString> textsOf(const std::vector<SignalEvent>& events)
{
    std::vector<QString> texts;
    for (const SignalEvent& each : events)
        texts.push_back(each.text);
    return texts;
}

QString deadText(const std::vector<ChannelLevel>& levels, const std::optional<QString>& layout = {})
{
    MediaInfo media = measuredSpot();
    media.audio->channels = static_cast<int>(levels.size());
    media.audio->channelLayout = layout;
    media.signal->channelLevels = levels;
    return events(media, 0).at(0).text;
}

} // namespace

TEST(SignalEvents, WithoutMeasurementThereAreNone)
{
    EXPECT_THAT(events(hdSpot(), 0), IsEmpty());
    EXPECT_THAT(events(measuredSpot(), 0), IsEmpty());
}

TEST(SignalEvents, LumaOutOfLimitsFailsFromFourSecondsOn)
{
    EXPECT_THAT(events(withLevels({{1, 5, 0.125}, {10, 13.9, 0.02}}, {}), 0),
                ElementsAre(event("levels-25-0", Kind::levels, 25, 125, Verdict::fail,
                                  "Luma beyond EBU R 103 tolerance on 12.5% of the picture for "
                                  "4.0 s"),
                            event("levels-250-1", Kind::levels, 250, 348, Verdict::warn,
                                  "Luma beyond EBU R 103 tolerance on 2.0% of the picture for "
                                  "3.9 s")));
}

TEST(SignalEvents, RGBOutOfGamutFailsOnlyThroughTheFilesOwnMatrix)
{
    const std::vector<LevelRun> runs{{1, 13, 0.5}};
    EXPECT_THAT(events(withLevels({}, runs), 0),
                ElementsAre(event("levels-25-0", Kind::levels, 25, 325, Verdict::fail,
                                  "RGB out of gamut on 50.0% of the picture for 12 s")));
    EXPECT_THAT(events(withLevels({}, runs, true), 0),
                ElementsAre(event("levels-25-0", Kind::levels, 25, 325, Verdict::warn,
                                  "RGB out of gamut on 50.0% of the picture for 12 s (assuming "
                                  "Rec.709)")));
    EXPECT_EQ(events(withLevels({}, {{1, 4, 0.5}}), 0).at(0).verdict, Verdict::warn);
}

TEST(SignalEvents, LumaAndRGBFromOneFrameOnStayTwoEvents)
{
    const auto found = events(withLevels({{1, 2, 0.1}}, {{1, 3, 0.2}}), 0);
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].id, u"levels-25-0"_s);
    EXPECT_EQ(found[1].id, u"levels-25-1"_s);
}

TEST(SignalEvents, AGapWarnsAndADipIsInfo)
{
    EXPECT_THAT(events(withBlack({{1, 1.12}, {2, 2.16}, {3, 3.04}, {4, 3.5}}), 0),
                ElementsAre(event("blackFrame-25-0", Kind::blackFrame, 25, 28, Verdict::warn,
                                  "3 black frames inside the picture"),
                            event("blackFrame-50-1", Kind::blackFrame, 50, 54, Verdict::info,
                                  "Dip to black for 0.2 s"),
                            event("blackFrame-75-2", Kind::blackFrame, 75, 76, Verdict::warn,
                                  "1 black frame inside the picture"),
                            event("blackFrame-100-3", Kind::blackFrame, 100, 88, Verdict::warn,
                                  "1 black frame inside the picture")));
}

TEST(SignalEvents, BlackUpToHalfASecondBehindTheLeaderIsTheLeaders)
{
    EXPECT_THAT(events(withBlack({{5, 7.5}}), 7), IsEmpty());
    EXPECT_THAT(events(withBlack({{5, 7.54}}), 7), SizeIs(1));
    EXPECT_THAT(events(withBlack({{0.1, 0.4}}), 0), SizeIs(1));
}

TEST(SignalEvents, AFlashFrameIsInfo)
{
    FrameCadence cadence;
    cadence.flashFrames = {{30, 12.5}};
    EXPECT_THAT(events(withCadence(cadence), 0),
                ElementsAre(event("flashFrame-30-0", Kind::flashFrame, 30, {}, Verdict::info,
                                  "Flash frame: it matches neither the frame before nor the one "
                                  "after, by 13× the motion around it")));
}

TEST(SignalEvents, AConversionIsOneEvent)
{
    FrameCadence cadence;
    cadence.duplicateFrames = {4, 9, 14};
    cadence.duplicateCount = 3;
    cadence.duplicatePeriod = 5;
    cadence.duplicateCause = DuplicateCause::conversion;
    EXPECT_THAT(events(withCadence(cadence), 0),
                ElementsAre(event("duplicateFrame-4-0", Kind::duplicateFrame, 4, {}, Verdict::warn,
                                  "Duplicate frames every 5th frame: 24 or 23.976 fps content "
                                  "delivered at 30 or 29.97")));
    cadence.duplicateFrames.clear();
    EXPECT_THAT(events(withCadence(cadence), 0), IsEmpty());
}

TEST(SignalEvents, ARetimedShotIsOneEvent)
{
    FrameCadence cadence;
    cadence.duplicateFrames = {100, 102};
    cadence.duplicateCount = 2;
    cadence.duplicateCause = DuplicateCause::retimedShot;
    cadence.duplicateSpan = {100, 102};
    EXPECT_THAT(
        events(withCadence(cadence), 0),
        ElementsAre(event("duplicateFrame-100-0", Kind::duplicateFrame, 100, {}, Verdict::warn,
                          "2 duplicated frames: a shot slowed by repeating frames")));
    cadence.duplicateSpan.reset();
    EXPECT_THAT(
        textsOf(events(withCadence(cadence), 0)),
        ElementsAre(u"Frame repeats the one before it"_s, u"Frame repeats the one before it"_s));
}

TEST(SignalEvents, ScatteredDuplicatesAreOneEventEach)
{
    EXPECT_THAT(events(withDuplicates(2), 0),
                ElementsAre(event("duplicateFrame-0-0", Kind::duplicateFrame, 0, {}, Verdict::warn,
                                  "Frame repeats the one before it"),
                            event("duplicateFrame-2-1", Kind::duplicateFrame, 2, {}, Verdict::warn,
                                  "Frame repeats the one before it")));
}

TEST(SignalEvents, WithoutPictureSoundStillHasEventsAtTwentyFour)
{
    MediaInfo media = measuredSpot();
    media.video.reset();
    media.signal->phase = StereoPhase{};
    media.signal->phase->outOfPhaseRuns = {{1.5, 2.5}};
    media.signal->channelLevels = {{-20, -3, {}}, {-70, -40, {}}};
    EXPECT_THAT(events(media, 0),
                ElementsAre(event("deadChannel-0-0", Kind::deadChannel, 0, {}, Verdict::warn,
                                  "Silent right channel for the whole file"),
                            event("phase-36-1", Kind::phase, 36, 60, Verdict::warn,
                                  "Left and right inverted for 1.0 s: cancels in mono")));
}

TEST(SignalEvents, DeadChannelsAreNamed)
{
    EXPECT_EQ(deadText({{}, {-20, -3, {}}}), u"Silent left channel for the whole file"_s);
    EXPECT_EQ(deadText({{}, {}, {}, {-20, -3, {}}}),
              u"Silent left, right, channel 3 channel for the whole file"_s);
    EXPECT_EQ(
        deadText({{}, {-20, -3, {}}, {-20, -3, {}}, {}, {-20, -3, {}}, {-20, -3, {}}}, u"5.1"_s),
        u"Silent left channel for the whole file"_s)
        << "an LFE may be silent";
}

TEST(SignalEvents, ALostChannelIsFoundWhereItStops)
{
    MediaInfo media = measuredSpot();
    media.signal->channelLevels = {{-20, -3, {}}, {-25, -3, {}}};
    media.signal->lostChannels = {{1, 2.48}};
    EXPECT_THAT(events(media, 0),
                ElementsAre(event("deadChannel-62-0", Kind::deadChannel, 62, {}, Verdict::warn,
                                  "Lost right channel: silent from here on while the rest play")));
}

TEST(SignalEvents, EventsStandInTheOrderOfFramesAndThenOfSubjects)
{
    MediaInfo media = withLevels({{2, 3, 0.1}}, {{1, 2, 0.1}});
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->interiorBlackRuns = {{2, 2.04}};
    media.signal->cadence->flashFrames = {{50, 9}};
    media.signal->cadence->duplicateFrames = {50};
    media.signal->phase = StereoPhase{};
    media.signal->phase->outOfPhaseRuns = {{2, 3}};
    std::vector<QString> ids;
    for (const SignalEvent& each : events(media, 0))
        ids.push_back(each.id);
    EXPECT_THAT(ids, ElementsAre(u"levels-25-0"_s, u"levels-50-1"_s, u"blackFrame-50-2"_s,
                                 u"flashFrame-50-3"_s, u"duplicateFrame-50-4"_s, u"phase-50-5"_s));
}

TEST(SignalEvents, ALongListIsCutAndEndsInAMarker)
{
    const auto found = events(withDuplicates(250), 0);
    ASSERT_THAT(found, SizeIs(201));
    EXPECT_EQ(found.back(), event("duplicateFrame-398-200", Kind::duplicateFrame, 398, {},
                                  Verdict::info, "and 50 more"));
    EXPECT_THAT(std::vector(found.begin(), found.end() - 1),
                Each(Field(&SignalEvent::verdict, Verdict::warn)));
}

TEST(SignalEvents, AListAtTheCapHasNoMarker)
{
    const auto found = events(withDuplicates(200), 0);
    ASSERT_THAT(found, SizeIs(200));
    EXPECT_EQ(found.back().text, u"Frame repeats the one before it"_s);
}

TEST(SignalEvents, LevelsOfTheLeaderAreInfo)
{
    EXPECT_THAT(events(withLevels({{0, 5, 0.125}, {8, 13, 0.125}}, {{6, 8, 0.5}}), 7),
                ElementsAre(event("levels-0-0", Kind::levels, 0, 125, Verdict::info,
                                  "Luma beyond EBU R 103 tolerance on 12.5% of the picture for "
                                  "5.0 s, in the leader"),
                            event("levels-150-1", Kind::levels, 150, 175, Verdict::info,
                                  "RGB out of gamut on 50.0% of the picture for 1.0 s, in the "
                                  "leader"),
                            event("levels-175-2", Kind::levels, 175, 200, Verdict::warn,
                                  "RGB out of gamut on 50.0% of the picture for 1.0 s"),
                            event("levels-200-3", Kind::levels, 200, 325, Verdict::fail,
                                  "Luma beyond EBU R 103 tolerance on 12.5% of the picture for "
                                  "5.0 s")));
}

TEST(SignalEvents, NoEventReachesPastTheLastFrame)
{
    MediaInfo media = withLevels({{28, 30.2, 0.125}}, {});
    media.signal->cadence = FrameCadence{};
    media.signal->cadence->frameCountSeen = 750;
    media.signal->phase = StereoPhase{};
    media.signal->phase->outOfPhaseRuns = {{31, 32}};
    EXPECT_THAT(events(media, 0), ElementsAre(testing::AllOf(Field(&SignalEvent::frame, 700),
                                                             Field(&SignalEvent::endFrame, 749)),
                                              testing::AllOf(Field(&SignalEvent::frame, 749),
                                                             Field(&SignalEvent::endFrame, 749))));
}

TEST(SignalEvents, AnAlternationOfTwoAndThreeIsOneEvent)
{
    FrameCadence cadence;
    cadence.duplicateFrames = {1, 3, 4, 6, 8, 9};
    cadence.duplicateCount = 6;
    cadence.duplicateCause = DuplicateCause::conversion;
    cadence.framesPerPicture = 2.5;
    EXPECT_THAT(events(withCadence(cadence), 0),
                ElementsAre(event("duplicateFrame-1-0", Kind::duplicateFrame, 1, {}, Verdict::warn,
                                  "Duplicate frames every picture 2 or 3 times: 24 or 23.976 fps "
                                  "content delivered at 60 or 59.94")));
}

} // namespace vantroque::SignalEvents
