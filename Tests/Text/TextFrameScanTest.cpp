#include "Text/TextFrameScan.h"
#include "Probe/Prober.h"
#include "Regions.h"
#include "Support/BoxClips.h"
#include "Support/FakeRecognizer.h"

#include <QBuffer>

#include <condition_variable>
#include <fstream>
#include <numeric>
#include <sys/resource.h>

// Frames are fed as files in place of a decode's.

namespace vantroque {
namespace {

using namespace Qt::StringLiterals;
using FakeRecognizer::Lines;
using FakeRecognizer::Subject;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
namespace fs = std::filesystem;

constexpr NormalizedRect place{0.25, 0.4, 0.5, 0.2};

const Lines oneLine{{place, u"SALE"_s}};

QByteArray picture(int gray)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(QColor(gray, gray, gray));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A spot of 25 frames a second that is no file, so that sampled edges stay.
MediaInfo spot(double duration = 30)
{
    MediaInfo media;
    media.url = FileUrl::fromPath("/nowhere/spot.mov");
    media.durationSeconds = duration;
    media.video = VideoStreamInfo();
    media.video->nominalFrameRate = 25;
    return media;
}

/// A folder of frames with a scan over it.
class Feed {
public:
    explicit Feed(RecognizerPool::Start start, const MediaInfo& media = spot(),
                  AnalysisProgress* progress = nullptr)
        : m_media(media),
          m_pool(std::move(start)),
          m_request(TextPlacementReader::request(m_media, m_folder.path())),
          m_scan(std::in_place, m_request, m_media, m_pool, progress)
    {
    }

    TextFrameScan& scan() { return *m_scan; }
    void drop() { m_scan.reset(); }
    const SignalAnalyzer::TextFrameRequest& request() const { return m_request; }
    std::vector<std::string> files() const { return m_folder.names(); }

    void put(int frame, const QByteArray& bytes) const
    {
        std::ofstream file(m_request.path(frame), std::ios::binary);
        file.write(bytes.constData(), bytes.size());
    }
    void put(const std::vector<QByteArray>& frames) const
    {
        for (int number = 0; const QByteArray& bytes : frames)
            put(++number, bytes);
    }

private:
    TestFolder m_folder;
    MediaInfo m_media;
    RecognizerPool m_pool;
    SignalAnalyzer::TextFrameRequest m_request;
    std::optional<TextFrameScan> m_scan;
};

/// Counts, and lets others wait for a count.
class Counter {
public:
    void add()
    {
        const std::scoped_lock lock(m_mutex);
        ++m_count;
        m_changed.notify_all();
    }
    void waitFor(int count)
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_count >= count; });
    }
    int count()
    {
        const std::scoped_lock lock(m_mutex);
        return m_count;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

/// What a scan of four frames gives.
std::optional<std::vector<TextRegion>> scanned(RecognizerPool::Start start)
{
    Feed feed(std::move(start));
    feed.put(std::vector<QByteArray>(4, picture(0)));
    return feed.scan().finish();
}

TEST(TextFrameScan, ReadsWhatStandsInEachFrame)
{
    Feed feed(FakeRecognizer::answering([](const QImage& frame, Subject subject, auto) {
        EXPECT_EQ(subject, Subject::frame);
        return FakeRecognizer::isWhiteIn(frame, place) ? oneLine : Lines();
    }));
    feed.scan().start();
    feed.put({picture(0), picture(255), picture(255), picture(255), picture(255), picture(0)});
    // Every twelfth frame of 25 a second.
    EXPECT_THAT(feed.scan().finish(),
                Optional(ElementsAre(IsRegion(TextRegion{12 / 25.0, 48 / 25.0, place.x, place.y,
                                                         place.width, place.height, u"SALE"_s}))));
}

TEST(TextFrameScan, ReadsASingleFrame)
{
    Counter readings;
    Feed feed(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
        readings.add();
        return oneLine;
    }));
    feed.put(1, picture(0));
    feed.scan().start();
    EXPECT_THAT(feed.scan().finish(), Optional(IsEmpty())) << "seen for a moment only";
    EXPECT_EQ(readings.count(), 1);
}

TEST(TextFrameScan, GivesNothingWithoutFrames)
{
    Feed feed(FakeRecognizer::finding(oneLine));
    feed.scan().start();
    EXPECT_EQ(feed.scan().finish(), std::nullopt);
}

TEST(TextFrameScan, WaitsUntilAFrameIsWhole)
{
    Counter readings;
    std::atomic<int> empty = 0;
    Feed feed(FakeRecognizer::answering([&](const QImage& frame, Subject, auto) {
        empty += frame.width() == 16 ? 0 : 1;
        readings.add();
        return Lines();
    }));
    const QByteArray whole = picture(0);
    feed.put(1, whole.first(20));
    feed.scan().start();
    for (int frame = 1; frame <= 20; ++frame) {
        feed.put(frame, whole);
        feed.put(frame + 1, whole.first(20));
        readings.waitFor(frame);
        EXPECT_EQ(readings.count(), frame);
    }
    feed.put(21, whole);
    EXPECT_THAT(feed.scan().finish(), Optional(IsEmpty()));
    EXPECT_EQ(readings.count(), 21);
    EXPECT_EQ(empty, 0);
}

TEST(TextFrameScan, LeavesTheLatestFrameAloneWhileMoreMayCome)
{
    Counter readings;
    Feed feed(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
        readings.add();
        return Lines();
    }));
    feed.put({picture(0), picture(0)});
    feed.scan().start();
    readings.waitFor(1);
    // The time that another scan takes is time enough to go on.
    Feed other(FakeRecognizer::finding({}));
    other.put(std::vector<QByteArray>(200, picture(0)));
    other.scan().finish();
    EXPECT_EQ(readings.count(), 1);
    EXPECT_THAT(feed.files(), ElementsAre("00002.png"));
    feed.scan().finish();
    EXPECT_EQ(readings.count(), 2);
}

TEST(TextFrameScan, ReadsWithoutAStart)
{
    EXPECT_THAT(scanned(FakeRecognizer::finding(oneLine)), Optional(SizeIs(1)));
}

TEST(TextFrameScan, ASecondStartDoesNothing)
{
    Counter readings;
    Feed feed(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
        readings.add();
        return Lines();
    }));
    feed.put({picture(0), picture(0), picture(0)});
    feed.scan().start();
    feed.scan().start();
    feed.scan().finish();
    EXPECT_EQ(readings.count(), 3);
}

TEST(TextFrameScan, RemovesWhatItHasRead)
{
    Feed feed(FakeRecognizer::finding({}));
    feed.put({picture(0), picture(0), picture(0)});
    feed.scan().finish();
    EXPECT_THAT(feed.files(), IsEmpty());
}

TEST(TextFrameScan, ARecognizerThatFailsFindsNothing)
{
    EXPECT_THAT(scanned(FakeRecognizer::failing()), Optional(IsEmpty()));
    EXPECT_THAT(scanned(FakeRecognizer::throwing()), Optional(IsEmpty()));
}

TEST(TextFrameScan, AFrameMayTakeAFewSeconds)
{
    using namespace std::chrono_literals;
    EXPECT_THAT(scanned(FakeRecognizer::slow(4500ms, oneLine)), Optional(SizeIs(1)));
    EXPECT_THAT(scanned(FakeRecognizer::slow(5500ms, oneLine)), Optional(IsEmpty()));
}

TEST(TextFrameScan, WithoutARecognizerNothingIsRead)
{
    Feed feed(FakeRecognizer::notStarting());
    feed.put(std::vector<QByteArray>(4, picture(0)));
    EXPECT_EQ(feed.scan().finish(), std::nullopt);
    EXPECT_THAT(feed.files(), IsEmpty()) << "the frames take no room all the same";
}

TEST(TextFrameScan, ADamagedFrameHoldsNoText)
{
    std::atomic<int> readings = 0;
    Feed feed(FakeRecognizer::answering([&](const QImage& frame, Subject, auto) {
        EXPECT_FALSE(frame.isNull());
        ++readings;
        return oneLine;
    }));
    std::vector<QByteArray> frames(8, picture(0));
    frames[4] = "no picture";
    feed.put(frames);
    EXPECT_THAT(feed.scan().finish(),
                Optional(ElementsAre(testing::Field(&TextRegion::end, 3 * 12 / 25.0))))
        << "three samples follow, which is too short";
    EXPECT_EQ(readings, 7);
}

TEST(TextFrameScan, EndsUnfinishedWhileItWaits)
{
    Feed feed(FakeRecognizer::finding({}));
    feed.scan().start();
    feed.drop();
    EXPECT_THAT(feed.files(), IsEmpty());
}

TEST(TextFrameScan, EndsUnfinishedWhileItReads)
{
    // The frames never end, since each reading brings another one.
    Counter readings;
    Feed* feed = nullptr;
    const QByteArray frame = picture(0);
    Feed endless(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
        readings.add();
        feed->put(readings.count() + 2, frame);
        return Lines();
    }));
    feed = &endless;
    endless.put({frame, frame});
    endless.scan().start();
    readings.waitFor(5);
    endless.drop();
    EXPECT_THAT(endless.files(), testing::Not(IsEmpty())) << "frames were left";
}

TEST(TextFrameScan, LooksForTheEdgesOfATextThatHasGoneWhileFramesStillCome)
{
    Counter crops;
    const auto look = FakeRecognizer::lookingAt({place});
    MediaInfo media = Prober::probe(FileUrl::fromPath(BoxClips::titled())).value();
    Feed feed(FakeRecognizer::answering([&](const QImage& frame, Subject subject, auto deadline) {
                  if (subject == Subject::frame)
                      return FakeRecognizer::isWhiteIn(frame, place) ? oneLine : Lines();
                  crops.add();
                  return look(frame, subject, deadline).value();
              }),
              media);
    feed.scan().start();
    feed.put({picture(0), picture(0), picture(0), picture(255), picture(255), picture(255),
              picture(255), picture(255), picture(0), picture(0)});
    crops.waitFor(1); // of the last frame alone it is not known yet that it is whole
    feed.put(11, picture(0));
    const auto regions = feed.scan().finish();
    ASSERT_THAT(regions, Optional(SizeIs(1)));
    EXPECT_NEAR(regions->front().start * 25, 30, 1e-6);
    EXPECT_NEAR(regions->front().end * 25, 90, 1e-6);
}

TEST(TextFrameScan, TellsItsProgress)
{
    AnalysisProgress progress;
    Feed feed(FakeRecognizer::finding({}), spot(), &progress);
    feed.put({picture(0), picture(0), picture(0)});
    feed.scan().finish();
    EXPECT_EQ(progress.snapshot().textFramesRead, 3);
    EXPECT_EQ(progress.snapshot().textFramesExtracted, 3);
}

// Long films.

std::int64_t peakKilobytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

#ifdef VANTROQUE_SANITIZED
constexpr std::int64_t allowedKilobytes = 600'000; // freed memory is kept back for a while
#else
constexpr std::int64_t allowedKilobytes = 32'000;
#endif

TEST(TextFrameScan, AFilmOfFourHoursTakesLittleRoom)
{
    constexpr int frames = 14'400;
    constexpr int batch = 800;
    Counter readings;
    // Four lines that change from minute to minute.
    Feed feed(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
                  const int minute = readings.count() / 60;
                  readings.add();
                  Lines lines;
                  for (int line = 0; line < 4; ++line)
                      lines.push_back({{0.2, 0.2 + 0.2 * line, 0.5, 0.05},
                                       u"line %1 of minute %2"_s.arg(line).arg(minute)});
                  return lines;
              }),
              spot(frames));
    ASSERT_EQ(feed.request().step(), 25) << "one frame a second";
    const QByteArray frame = picture(0);
    const std::int64_t before = peakKilobytes();
    feed.scan().start();
    for (int first = 1; first <= frames; first += batch) {
        for (int number = first; number < first + batch; ++number)
            feed.put(number, frame);
        readings.waitFor(first + batch - 2);
    }
    const auto regions = feed.scan().finish();
    EXPECT_EQ(readings.count(), frames);
    EXPECT_THAT(feed.files(), IsEmpty());
    ASSERT_THAT(regions, Optional(SizeIs(4)));
    EXPECT_EQ(regions->back().end, frames - 1);
    const std::int64_t growth = peakKilobytes() - before;
    RecordProperty("growthKilobytes", std::to_string(growth));
    EXPECT_LT(growth, allowedKilobytes);
}

TEST(TextFrameScan, FramesAreGoneSoonAfterTheirReading)
{
    Counter readings;
    Feed feed(FakeRecognizer::answering([&](const QImage&, Subject, auto) {
        readings.add();
        return Lines();
    }));
    feed.scan().start();
    for (int frame = 1; frame <= 20; ++frame) {
        feed.put(frame, picture(0));
        readings.waitFor(frame - 1);
        // The one just put, and the one that may be about to go.
        EXPECT_LE(feed.files().size(), 2U);
    }
    feed.scan().finish();
}

TEST(TextFrameScan, OfADecodeThatBeginsAnewForgetsTheFirst)
{
    std::atomic<int> readings = 0;
    Feed feed(FakeRecognizer::answering([&](const QImage& frame, Subject, auto) {
        ++readings;
        return FakeRecognizer::isWhiteIn(frame, place) ? oneLine : Lines();
    }));
    feed.scan().start();
    feed.put({picture(255), picture(255), picture(255), picture(255)});
    while (readings < 3)
        std::this_thread::yield();
    feed.scan().restart();
    EXPECT_THAT(feed.files(), IsEmpty());
    feed.put({picture(0), picture(0), picture(0)});
    EXPECT_THAT(feed.scan().finish(), Optional(IsEmpty()));
    EXPECT_EQ(readings, 6);
}

} // namespace
} // namespace vantroque
