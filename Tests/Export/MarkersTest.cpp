#include "Export/MarkerExport.h"
#include "Support/Clips.h"
#include "Support/FakeTools.h"

// How findings and notes become markers, and what is known of their file.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using MarkerExport::Format;
using MarkerExport::markers;
using testing::ElementsAre;
using testing::IsEmpty;
using Limits = std::numeric_limits<std::int64_t>;

const QDateTime now({2026, 3, 1}, {12, 0}, Qt::UTC);
const QDateTime earlier({2026, 2, 1}, {12, 0}, Qt::UTC);

SignalEvent event(SignalEvent::Kind kind, std::int64_t frame,
                  std::optional<std::int64_t> endFrame = {})
{
    return {u"id"_s, kind, frame, endFrame, Verdict::warn, u"text"_s, {}};
}

FileReport reportOf(const std::vector<SignalEvent>& events)
{
    FileReport report;
    report.events = events;
    return report;
}

ReviewComment comment(std::int64_t frame, double rate, const QString& text = u"note"_s)
{
    ReviewComment comment;
    comment.frame = frame;
    comment.frameRate = rate;
    comment.text = text;
    comment.createdAt = earlier;
    return comment;
}

FileReview reviewOf(const std::vector<ReviewComment>& comments)
{
    FileReview review;
    review.comments = comments;
    return review;
}

Marker markerOf(const SignalEvent& event)
{
    const FileReport report = reportOf({event});
    return markers({.report = &report}, 25, now).at(0);
}

Marker markerOf(const ReviewComment& comment, double rate)
{
    const FileReview review = reviewOf({comment});
    return markers({.review = &review}, rate, now).at(0);
}

MediaInfo media(double rate)
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/v/spot.mov");
    media.durationSeconds = 10;
    media.startTimecode = u"01:00:00:00"_s;
    media.video = VideoStreamInfo();
    media.video->width = 1280;
    media.video->height = 720;
    media.video->nominalFrameRate = rate;
    return media;
}

TEST(Markers, AFindingHasTheNameOfItsKind)
{
    using enum SignalEvent::Kind;
    for (const auto& [kind, name] :
         std::vector<std::pair<SignalEvent::Kind, QString>>{{levels, u"Picture levels"_s},
                                                            {blackFrame, u"Black frames"_s},
                                                            {flashFrame, u"Flash frame"_s},
                                                            {duplicateFrame, u"Duplicate frames"_s},
                                                            {phase, u"Stereo phase"_s},
                                                            {deadChannel, u"Channels"_s},
                                                            {safeArea, u"Safe area"_s},
                                                            {safeZone, u"Safe zones"_s},
                                                            {captionSpelling, u"Captions"_s},
                                                            {captionDoubled, u"Doubled words"_s},
                                                            {decoding, u"Decoding"_s}})
        EXPECT_EQ(markerOf(event(kind, 7)),
                  (Marker{7, 1, name, u"text"_s, Verdict::warn, Marker::Kind::finding, now}));
}

TEST(Markers, AFindingLastsToItsLastFrame)
{
    const auto duration = [](std::int64_t first, std::int64_t last) {
        return markerOf(event(SignalEvent::Kind::phase, first, last)).duration;
    };
    EXPECT_EQ(duration(10, 19), 10);
    EXPECT_EQ(duration(10, 10), 1);
    EXPECT_EQ(duration(10, 5), 1);
    EXPECT_EQ(duration(Limits::min(), Limits::max()), Limits::max());
}

TEST(Markers, ANoteIsOfItsAuthor)
{
    ReviewComment note = comment(30, 25, u" Too loud \n"_s);
    EXPECT_EQ(markerOf(note, 25), (Marker{30, 1, u"Note"_s, u"Too loud"_s, Verdict::info,
                                          Marker::Kind::note, earlier}));
    note.author = u"  Ada L. "_s;
    EXPECT_EQ(markerOf(note, 25).name, u"Ada L."_s);
    note.author = u" \t"_s;
    EXPECT_EQ(markerOf(note, 25).name, u"Note"_s);
}

TEST(Markers, ANoteMadeAtAnotherRateKeepsItsTime)
{
    EXPECT_EQ(markerOf(comment(30, 25), 50).frame, 60);
    EXPECT_EQ(markerOf(comment(31, 50), 25).frame, 16) << "the nearest, ties up";
    EXPECT_EQ(markerOf(comment(100'000, 29.97), 30000.0 / 1001).frame, 100'000);
    EXPECT_EQ(markerOf(comment(25, 0), 50).frame, 50) << "no rate counts at 25";
    EXPECT_EQ(markerOf(comment(Limits::max(), 25), 25).frame, Limits::max());
}

TEST(Markers, ARateThatIsNoneIs25)
{
    EXPECT_EQ(markerOf(comment(60, 50), 0).frame, 30);
    EXPECT_EQ(markerOf(comment(60, 50), -1).frame, 30);
}

TEST(Markers, StandByFrameAndOnOneFrameFindingsFirst)
{
    const FileReport report =
        reportOf({event(SignalEvent::Kind::phase, 50), event(SignalEvent::Kind::levels, 10)});
    const FileReview review = reviewOf({comment(50, 25, u"b"_s), comment(10, 25, u"c"_s),
                                        comment(50, 25, u"a"_s), comment(5, 25, u"d"_s)});
    std::vector<std::string> order;
    for (const Marker& marker : markers({.review = &review,
                                .report = &report,
                                .extraEvents = {event(SignalEvent::Kind::captionSpelling, 50)}},
                                        25, now))
        order.push_back(
            (marker.kind == Marker::Kind::note ? marker.comment : marker.name).toStdString());
    EXPECT_THAT(order,
                ElementsAre("d", "Picture levels", "c", "Stereo phase", "Captions", "b", "a"));
}

TEST(Markers, ComeOnlyFromWhatIsThereAndWanted)
{
    const FileReport report = reportOf({event(SignalEvent::Kind::phase, 50)});
    const FileReport without;
    const FileReview review = reviewOf({comment(50, 25)});
    const std::vector extra{event(SignalEvent::Kind::captionSpelling, 1)};
    EXPECT_THAT(markers({}, 25), IsEmpty());
    EXPECT_THAT(markers({.report = &without}, 25), IsEmpty());
    EXPECT_THAT(markers({.extraEvents = extra}, 25), IsEmpty()) << "without a report";
    EXPECT_EQ(markers({.report = &without, .extraEvents = extra}, 25).size(), 1U);
    EXPECT_EQ(
        markers({.review = &review, .report = &report, .includeFindings = false}, 25).at(0).kind,
        Marker::Kind::note);
    const auto findings =
        markers({.review = &review, .report = &report, .includeNotes = false}, 25);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind, Marker::Kind::finding);
}

TEST(MarkerText, CountsTheMarkings)
{
    ReviewComment note = comment(0, 25, u"  Logo off centre\n"_s);
    EXPECT_EQ(MarkerExport::text(note), u"Logo off centre"_s);
    note.strokes.resize(1);
    EXPECT_EQ(MarkerExport::text(note), u"Logo off centre (1 marking on this frame)"_s);
    note.strokes.resize(2);
    EXPECT_EQ(MarkerExport::text(note), u"Logo off centre (2 markings on this frame)"_s);
    note.text = u" \n"_s;
    EXPECT_EQ(MarkerExport::text(note), u"2 markings on this frame"_s);
    note.strokes.clear();
    EXPECT_EQ(MarkerExport::text(note), u""_s);
}

TEST(MarkerContext, IsOfTheVideoStream)
{
    MediaInfo spot = media(25);
    spot.video->frameCount = 249;
    EXPECT_EQ(MarkerExport::context(spot),
              (MarkerContext{u"spot.mov"_s, 25, 249, 90'000, 1280, 720}));
}

TEST(MarkerContext, CountsFramesByTheDurationWhenNobodyElseHas)
{
    EXPECT_EQ(MarkerExport::context(media(30000.0 / 1001)).frameCount, 300);
    EXPECT_EQ(MarkerExport::context(media(0.5)).frameCount, 10);
    MediaInfo empty = media(25);
    empty.durationSeconds = 0;
    EXPECT_EQ(MarkerExport::context(empty).frameCount, 1);
    empty.video->frameCount = 0;
    EXPECT_EQ(MarkerExport::context(empty).frameCount, 1);
}

TEST(MarkerContext, OfSoundIsThatOfAFullPictureAt25)
{
    MediaInfo sound = media(0);
    sound.video.reset();
    EXPECT_EQ(MarkerExport::context(sound),
              (MarkerContext{u"spot.mov"_s, 25, 250, 90'000, 1920, 1080}));
    EXPECT_EQ(MarkerExport::context(media(0)).frameRate, 25);
}

TEST(MarkerContext, NtscRatesRunSlowerThanTheirTimebase)
{
    const auto of = [](double rate) { return MarkerExport::context(media(rate)); };
    for (const auto& [rate, timebase, isNTSC] :
         {std::tuple{30000.0 / 1001, 30, true}, std::tuple{29.97, 30, true},
          std::tuple{24000.0 / 1001, 24, true}, std::tuple{60000.0 / 1001, 60, true},
          std::tuple{25.0, 25, false}, std::tuple{50.0, 50, false}, std::tuple{30.0, 30, false},
          std::tuple{24.0005, 24, false}}) {
        EXPECT_EQ(of(rate).timebase(), timebase) << rate;
        EXPECT_EQ(of(rate).isNTSC(), isNTSC) << rate;
    }
}

TEST(MarkerContext, StartsAtZeroWithoutAUsableTimecode)
{
    MediaInfo spot = media(25);
    for (const QString& text : {u"soon"_s, u""_s, u"-5"_s, u"99:00:00:00"_s}) {
        spot.startTimecode = text;
        EXPECT_EQ(MarkerExport::context(spot).startFrame, 0) << text.toStdString();
    }
}

TEST(MarkerContext, AsksTheFileWhenTheRecordHasNoTimecode)
{
    MediaInfo spot = media(25);
    spot.startTimecode.reset();
    spot.url = FileUrl::fromPath(Clips::withTimecode());
    EXPECT_EQ(MarkerExport::context(spot).startFrame, 90'000);
    spot.url = FileUrl::fromPath(Clips::plain());
    EXPECT_EQ(MarkerExport::context(spot).startFrame, 0);
    spot.url = FileUrl::fromPath("/nowhere.mov");
    EXPECT_EQ(MarkerExport::context(spot).startFrame, 0);
}

TEST(MarkerContext, WithATimecodeInTheRecordStartsNoTool)
{
    const FakeTools tools;
    tools.record("ffprobe");
    MarkerExport::context(media(25));
    EXPECT_THAT(tools.calls("ffprobe"), IsEmpty());
}

TEST(MarkerFormats, HaveNames)
{
    struct Names {
        Format format;
        std::string_view key;
        QString display, extension, suffix;
    };
    for (const Names& names :
         {Names{Format::avid, "avid", u"Avid Media Composer"_s, u"xml"_s, u" markers (Avid)"_s},
          Names{Format::premiere, "premiere", u"Premiere Pro"_s, u"xml"_s,
                u" markers (Premiere)"_s},
          Names{Format::resolve, "resolve", u"DaVinci Resolve"_s, u"edl"_s,
                u" markers (Resolve)"_s},
          Names{Format::csv, "csv", u"Comma separated"_s, u"csv"_s, u" markers"_s}}) {
        EXPECT_EQ(enumName(names.format), names.key);
        EXPECT_EQ(MarkerExport::displayName(names.format), names.display);
        EXPECT_EQ(MarkerExport::fileExtension(names.format), names.extension);
        EXPECT_EQ(MarkerExport::fileSuffix(names.format), names.suffix);
    }
}

} // namespace
} // namespace vantroque
