#include "TextQualityPhotographs.h"

#include "PhotographClips.h"
#include "Probe/Prober.h"
#include "Text/TextPlacementReader.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace vantroque::TextQuality {

namespace {

using Kind = TextScenes::Kind;

struct Count {
    int drawn = 0;
    int found = 0;
    int timed = 0; ///< Start and end right within 2 frames.
};

struct Figures {
    std::array<Count, 2> lines; ///< Supers of all sizes, legal lines.
    Count signs;                ///< Found: a region stands where the sign is.
    int falseRegions = 0;
    double minutes = 0;

    Count& of(Kind kind) { return lines.at(kind == Kind::legal ? 1 : 0); }
    Figures& operator+=(const Figures& other)
    {
        for (std::size_t i = 0; i < lines.size(); ++i) {
            lines.at(i).drawn += other.lines.at(i).drawn;
            lines.at(i).found += other.lines.at(i).found;
            lines.at(i).timed += other.lines.at(i).timed;
        }
        signs.drawn += other.signs.drawn;
        signs.found += other.signs.found;
        falseRegions += other.falseRegions;
        minutes += other.minutes;
        return *this;
    }
};

NormalizedRect rectOf(const QRectF& box)
{
    return {box.x(), box.y(), box.width(), box.height()};
}

double overlapOf(const NormalizedRect& one, const NormalizedRect& other)
{
    const double common = one.intersected(other).area();
    return common / (one.area() + other.area() - common);
}

/// Whether the region stands where the sign is in the middle of its time.
bool isOn(const TextRegion& region, const PhotographClip::Sign& sign)
{
    const int frame = static_cast<int>(std::lround((region.start + region.end) / 2 * clipRate));
    const auto place = rectOf(sign.place(std::min(frame, clipFrames - 1))).grown(0.02);
    return region.rect().intersected(place).area() >= 0.5 * region.rect().area();
}

bool isOn(const TextRegion& region, const PhotographClip::Line& line)
{
    return region.rect().intersected(rectOf(line.drawn.ink)).area() >= 0.3 * region.rect().area()
           && region.start * clipRate <= line.last && region.end * clipRate >= line.first;
}

void judgeLine(const PhotographClip::Line& line, const std::vector<TextRegion>& regions,
               Figures& figures)
{
    constexpr double few = 2 + 1e-6;
    Count& count = figures.of(line.drawn.kind);
    ++count.drawn;
    const TextRegion* best = nullptr;
    for (const TextRegion& region : regions)
        if (isOn(region, line)
            && overlapOf(region.rect(), rectOf(line.drawn.ink))
                   >= (best != nullptr ? overlapOf(best->rect(), rectOf(line.drawn.ink)) : 0.4))
            best = &region;
    if (best == nullptr) {
        std::printf("    missed: %s (%.0f pixels)\n", qPrintable(line.drawn.text),
                    line.drawn.size * 540);
        return;
    }
    ++count.found;
    const double early = best->start * clipRate - line.first;
    const double late = best->end * clipRate - line.last;
    if (std::abs(early) <= few && std::abs(late) <= few)
        ++count.timed;
    else
        std::printf("    %+.0f to %+.0f frames: %s\n", early, late, qPrintable(line.drawn.text));
}

Figures judged(const PhotographClip& clip, const std::vector<TextRegion>& regions)
{
    Figures figures;
    figures.minutes = double(clipFrames) / clipRate / 60;
    for (const auto& line : clip.lines)
        judgeLine(line, regions, figures);
    for (const auto& sign : clip.signs) {
        ++figures.signs.drawn;
        if (std::ranges::any_of(regions, [&](const auto& region) { return isOn(region, sign); }))
            ++figures.signs.found;
    }
    for (const TextRegion& region : regions) {
        const auto holds = [&region](const auto& text) { return isOn(region, text); };
        if (std::ranges::any_of(clip.lines, holds) || std::ranges::any_of(clip.signs, holds))
            continue;
        ++figures.falseRegions;
        std::printf("    false: %s\n", qPrintable(region.text));
    }
    return figures;
}

Figures read(const PhotographClip& clip, RecognizerPool& recognizers)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("clip.mp4"));
    writeClip(path, clip.frame);
    const auto media = Prober::probe(FileUrl::fromPath(path.toStdString()));
    if (!media)
        qFatal("%s", qPrintable(media.error().description));
    const auto regions = TextPlacementReader::read(*media, recognizers, nullptr);
    if (!regions)
        qFatal("no text could be read");
    return judged(clip, *regions);
}

void print(const QString& name, const Figures& figures)
{
    const auto& [supers, legal] = figures.lines;
    std::printf("%-32s supers %d of %d (%d right within 2 frames), legal lines %d of %d (%d), "
                "words of the scene %d of %d, false %d in %.1f minutes\n",
                qPrintable(name), supers.found, supers.drawn, supers.timed, legal.found,
                legal.drawn, legal.timed, figures.signs.found, figures.signs.drawn,
                figures.falseRegions, figures.minutes);
    std::fflush(stdout);
}

} // namespace

void runPhotographs(int perKind)
{
    RecognizerPool recognizers([] { return TesseractRecognizer::make({"eng"}); });
    Figures all;
    Figures without;
    for (int kind = 0; kind < photographKinds; ++kind) {
        Figures figures;
        QString name;
        for (int i = 0; i < perKind; ++i) {
            const int number = kind * 2 + i * 5;
            const PhotographClip clip = photographClip(kind, number, true);
            name = clip.kind;
            figures += read(clip, recognizers);
            without += read(photographClip(kind, number, false), recognizers);
        }
        print(name, figures);
        all += figures;
    }
    print(QStringLiteral("all"), all);
    print(QStringLiteral("the same without titles"), without);
}

} // namespace vantroque::TextQuality
