#include "TextQualityClips.h"

#include "ClipFile.h"
#include "Probe/Prober.h"
#include "Support/TextScenes.h"
#include "Text/TextPlacementReader.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

#include <QPainter>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

namespace vantroque::TextQuality {

using namespace Qt::StringLiterals;

namespace {

constexpr int rate = clipRate;
constexpr int frameCount = clipFrames;
constexpr QSize size = clipSize;

enum class Entrance { cut, fade, wipe, endCard };

/// A text that comes and goes; of a fade the time at half, of a wipe that at half its width.
struct Timing {
    Entrance entrance = Entrance::cut;
    int first = 0; ///< Frame at which it is fully there.
    int last = 0;

    static constexpr int length = 10; ///< Frames that a fade or a wipe takes.

    /// How much of it is there, 0 to 1.
    double presence(int frame) const
    {
        const double in = frame >= first ? 1 : 1 - double(first - frame) / length;
        const double out = frame <= last ? 1 : 1 - double(frame - last) / length;
        const double soft = std::clamp(std::min(in, out), 0.0, 1.0);
        const bool isHard = entrance == Entrance::cut || entrance == Entrance::endCard;
        return isHard ? (frame >= first && frame <= last ? 1 : 0) : soft;
    }
    int firstHalf() const { return frameWhere(0, 1); }
    int lastHalf() const { return frameWhere(frameCount - 1, -1); }

private:
    int frameWhere(int frame, int step) const
    {
        while (presence(frame) < 0.5)
            frame += step;
        return frame;
    }
};

struct Clip {
    TextScenes::Background background;
    TextScenes::Overlay overlay;
    Timing timing;

    QImage frame(int index) const
    {
        QImage picture = background.frame(size, index).convertToFormat(QImage::Format_RGB32);
        QPainter painter(&picture);
        const double presence = timing.presence(index);
        if (timing.entrance == Entrance::endCard && presence > 0)
            painter.fillRect(picture.rect(), QColor(25, 35, 60));
        if (timing.entrance == Entrance::fade)
            painter.setOpacity(presence);
        if (timing.entrance == Entrance::wipe)
            painter.setClipRect(QRectF(0, 0, size.width() * presence, size.height()));
        if (presence > 0)
            painter.drawImage(0, 0, overlay.image);
        return picture;
    }
};

struct Figures {
    int drawn = 0;
    int found = 0;
    int falseRegions = 0;
    double minutes = 0;
    std::vector<double> overlaps;
    std::vector<double> startErrors; ///< In frames; negative is early.
    std::vector<double> endErrors;
    double seconds = 0;
};

double shareWithinTwoFrames(const std::vector<double>& errors)
{
    constexpr double few = 2 + 1e-6;
    const auto within = std::ranges::count_if(errors, [](double e) { return std::abs(e) <= few; });
    return errors.empty() ? 0 : double(within) / double(errors.size());
}

/// How the edges of all regions found came out, whatever their entrance. Of a region counts the
/// worse of its two edges as well.
void printPooled(std::initializer_list<const Figures*> all)
{
    std::vector<double> starts;
    std::vector<double> ends;
    for (const Figures* figures : all) {
        starts.insert(starts.end(), figures->startErrors.begin(), figures->startErrors.end());
        ends.insert(ends.end(), figures->endErrors.begin(), figures->endErrors.end());
    }
    std::vector<double> worse;
    for (std::size_t i = 0; i < starts.size(); ++i)
        worse.push_back(std::max(std::abs(starts[i]), std::abs(ends[i])));
    printf("right within 2 frames, of %zu regions: starts %.3f, ends %.3f, both %.3f\n",
           starts.size(), shareWithinTwoFrames(starts), shareWithinTwoFrames(ends),
           shareWithinTwoFrames(worse));
}

NormalizedRect rectOf(const QRectF& box)
{
    return {box.x(), box.y(), box.width(), box.height()};
}

double overlapOf(const TextRegion& region, const NormalizedRect& ink)
{
    const double common = region.rect().intersected(ink).area();
    return common / (region.rect().area() + ink.area() - common);
}

void judge(const Clip& clip, const std::vector<TextRegion>& regions, Figures& figures)
{
    const double start = double(clip.timing.firstHalf()) / rate;
    const double end = double(clip.timing.lastHalf()) / rate;
    for (const auto& line : clip.overlay.lines) {
        ++figures.drawn;
        const auto best = std::ranges::max_element(regions, {}, [&](const TextRegion& region) {
            return overlapOf(region, rectOf(line.ink));
        });
        if (best == regions.end() || overlapOf(*best, rectOf(line.ink)) < 0.4 || best->start > end
            || best->end < start) {
            printf("missed: %s\n", qPrintable(line.text));
            continue;
        }
        ++figures.found;
        figures.overlaps.push_back(overlapOf(*best, rectOf(line.ink)));
        figures.startErrors.push_back((best->start - start) * rate);
        figures.endErrors.push_back((best->end - end) * rate);
    }
    for (const TextRegion& region : regions)
        if (std::ranges::none_of(clip.overlay.lines, [&](const auto& line) {
                return region.rect().intersected(rectOf(line.ink)).area()
                       >= 0.3 * region.rect().area();
            })) {
            ++figures.falseRegions;
            printf("false on %s: %s\n", qPrintable(clip.background.name), qPrintable(region.text));
        }
}

void run(const Clip& clip, RecognizerPool& recognizers, Figures& figures)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"clip.mp4"_s);
    writeClip(path, [&clip](int index) { return clip.frame(index); });
    const auto media = Prober::probe(FileUrl::fromPath(path.toStdString()));
    if (!media)
        qFatal("%s", qPrintable(media.error().description));
    const std::clock_t before = std::clock();
    const auto regions = TextPlacementReader::read(*media, recognizers, nullptr);
    figures.seconds += double(std::clock() - before) / CLOCKS_PER_SEC;
    figures.minutes += double(frameCount) / rate / 60;
    judge(clip, regions.value_or(std::vector<TextRegion>()), figures);
}

double quantile(std::vector<double> values, double part)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[static_cast<std::size_t>(part * double(values.size() - 1))];
}

void print(const char* name, const Figures& figures)
{
    printf("%s: %d of %d regions, false regions a minute %.2f, median overlap %.2f, "
           "processor seconds a clip %.2f\n",
           name, figures.found, figures.drawn, figures.falseRegions / figures.minutes,
           quantile(figures.overlaps, 0.5),
           figures.seconds / (figures.minutes * 60 * rate / frameCount));
    for (const auto& [edge, errors] :
         {std::pair("start", &figures.startErrors), std::pair("end", &figures.endErrors)})
        printf("    %s error in frames: median %.0f, 10 to 90 %%: %.0f to %.0f\n", edge,
               quantile(*errors, 0.5), quantile(*errors, 0.1), quantile(*errors, 0.9));
}

} // namespace

void runClips(TextScenes::Set set, int perKind)
{
    RecognizerPool recognizers([] { return TesseractRecognizer::make({"eng"}); });
    Figures cut;
    Figures soft;
    Figures card;
    Figures empty;
    int number = 0;
    for (int kind = 0; kind < TextScenes::backgroundCount(set); ++kind)
        for (int i = 0; i < perKind; ++i, ++number) {
            TextScenes::Random random((set == TextScenes::Set::tuning ? 7000 : 970'000) + number);
            auto background = TextScenes::background(set, kind, size, number % 2 == 0, random);
            // The texture has a border of a quarter; a clip has many frames.
            background.step /= 40;
            const auto entrance = static_cast<Entrance>(number % 4);
            const bool isCard = entrance == Entrance::endCard;
            TextScenes::Background behind = background;
            if (isCard)
                behind.texture.fill(QColor(25, 35, 60));
            Clip clip{
                background,
                TextScenes::overlay(set, {.super = true, .legalLines = 1}, behind, size, random),
                {entrance, 33 + number % 11, isCard ? frameCount - 1 : 105 + number % 7}};
            run(clip, recognizers, isCard ? card : entrance == Entrance::cut ? cut : soft);
            clip.overlay.lines.clear();
            clip.overlay.image.fill(Qt::transparent);
            clip.timing.entrance = Entrance::cut;
            run(clip, recognizers, empty);
        }
    print("cut in and out", cut);
    print("faded and wiped", soft);
    print("end cards", card);
    print("no text", empty);
    printPooled({&cut, &soft, &card});
}

} // namespace vantroque::TextQuality
