// How well text in pictures is found, on generated pictures whose text is known. Prints figures for
// the set that no threshold was chosen on, or with "tuning" for the other.
// Photographs are one set, and no threshold was chosen on it.
//   TextQuality frames|slates|clips [tuning] [--per-kind N] [--only NUMBER] [--show FOLDER]
//   TextQuality photographs [--per-kind N]

#include "TextQualityClips.h"
#include "TextQualityPhotographs.h"

#include "Base/Numbers.h"
#include "Check/SlateLayout.h"
#include "Support/TextJudgement.h"
#include "VantroquePlatform/Recognition/TesseractRecognizer.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <map>

using namespace vantroque;
using namespace Qt::StringLiterals;
using TextScenes::Kind;
using TextScenes::Set;
using Subject = TextRecognizer::Subject;

namespace {

struct Options {
    Set set = Set::heldOut;
    int perKind = 4;
    QString only; ///< The number of the scene to look at alone.
    QString show; ///< Where pictures of what was missed go.
};

double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.empty() ? 0 : values[values.size() / 2];
}

struct Tally {
    int drawn = 0;
    int found = 0;
    std::vector<double> overlaps;
    std::vector<double> inkOverlaps; ///< After refinement to the ink.

    double recall() const { return drawn > 0 ? double(found) / drawn : 0; }
};

struct Figures {
    std::map<QString, Tally> tallies;
    int frames = 0;
    int falseLines = 0;
    double seconds = 0;
    double worst = 0;
    std::map<QString, std::pair<int, double>> secondsOn; ///< Frames and seconds by background.
};

void show(const Options& options, const QString& name, QImage picture,
          const TextScenes::Judgement& judgement)
{
    QDir().mkpath(options.show);
    QPainter painter(&picture);
    const auto draw = [&](const QRectF& rect, QColor color, int grow) {
        painter.setPen(color);
        painter.drawRect(QRectF(rect.x() * picture.width(), rect.y() * picture.height(),
                                rect.width() * picture.width(), rect.height() * picture.height())
                             .adjusted(-grow, -grow, grow, grow));
    };
    const auto drawBoxes = [&](const std::vector<TextSample::Box>& boxes, QColor color) {
        for (const auto& [rect, text] : boxes)
            draw({rect.x, rect.y, rect.width, rect.height}, color, 1);
    };
    for (const auto& line : judgement.lines)
        draw(line.drawn.ink, Qt::green, 3);
    drawBoxes(judgement.boxes, Qt::blue);
    drawBoxes(judgement.falseBoxes, Qt::red);
    picture.save(options.show + u'/' + name + u".png"_s);
}

QString nameOf(Kind kind)
{
    switch (kind) {
    case Kind::super: return u"super"_s;
    case Kind::shortSuper: return u"one or two words"_s;
    case Kind::legal: return u"legal"_s;
    }
    return {};
}

void count(const QImage& picture, const TextScenes::Judgement& judgement, bool moves,
           const QString& name, const Options& options, Figures& figures)
{
    bool isBad = !judgement.falseBoxes.empty();
    for (const auto& line : judgement.lines) {
        Tally& tally =
            figures.tallies[nameOf(line.drawn.kind) + (moves ? u", moving"_s : u", still"_s)];
        ++tally.drawn;
        if (line.isFound()) {
            ++tally.found;
            tally.overlaps.push_back(line.overlap);
            tally.inkOverlaps.push_back(line.inkOverlap);
        } else {
            isBad = true;
            if (!options.show.isEmpty())
                printf("missed in %s: %s\n", qPrintable(name), qPrintable(line.drawn.text));
        }
    }
    for (const auto& box : judgement.falseBoxes) {
        ++figures.falseLines;
        printf("false in %s: %s\n", qPrintable(name), qPrintable(box.text));
    }
    if (isBad && !options.show.isEmpty())
        show(options, name, picture, judgement);
}

/// A moving or still clip with a text, read frame by frame as the scan does.
void runScene(int number, bool moves, const TextScenes::Wanted& wanted, int kind,
              const Options& options, TextRecognizer& recognizer, Figures& figures)
{
    constexpr int frames = 4;
    static const std::vector<QSize> sizes{{1920, 1080}, {1920, 1080}, {1080, 1920}, {1080, 1080}};
    TextScenes::Random random(options.set == Set::tuning ? 1000 + number : 900'000 + number);
    const QSize size = sizes[static_cast<std::size_t>(number) % sizes.size()];
    const auto scene = TextScenes::scene(options.set, kind, size, moves, wanted, frames, random);
    recognizer.forget();
    int index = 0;
    for (const QImage& picture : scene.pictures) {
        const double before = processorSeconds();
        const auto lines = recognizer.recognize(
            picture, Subject::frame, std::chrono::steady_clock::now() + std::chrono::seconds(60));
        const double seconds = processorSeconds() - before;
        ++figures.frames;
        figures.seconds += seconds;
        figures.worst = std::max(figures.worst, seconds);
        auto& on = figures.secondsOn[scene.background];
        ++on.first;
        on.second += seconds;
        if (!lines)
            qFatal("%s", qPrintable(lines.error().description));
        const QString name = u"%1-%2%3-%4"_s.arg(scene.background)
                                 .arg(number)
                                 .arg(moves ? u"m"_s : u""_s)
                                 .arg(index++);
        count(picture, TextScenes::judge(picture, *lines, scene.lines), moves, name, options,
              figures);
    }
}

void print(const Figures& figures)
{
    for (const auto& [name, tally] : figures.tallies)
        printf("%-28s %4d of %4d  recall %.3f  median overlap %.2f, to the ink %.2f\n",
               qPrintable(name), tally.found, tally.drawn, tally.recall(), median(tally.overlaps),
               median(tally.inkOverlaps));
    printf("false lines a frame %.4f (%d in %d frames)\n",
           double(figures.falseLines) / std::max(figures.frames, 1), figures.falseLines,
           figures.frames);
    printf("processor seconds a frame %.3f, worst %.3f\n",
           figures.seconds / std::max(figures.frames, 1), figures.worst);
    for (const auto& [name, on] : figures.secondsOn)
        printf("    %-12s %.3f\n", qPrintable(name), on.second / on.first);
}

void runFrames(const Options& options, TextRecognizer& recognizer)
{
    Figures with;
    Figures without;
    int number = 0;
    for (int kind = 0; kind < TextScenes::backgroundCount(options.set); ++kind)
        for (int i = 0; i < options.perKind; ++i)
            for (const bool moves : {false, true}) {
                if (!options.only.isEmpty() && options.only.toInt() != number) {
                    ++number;
                    continue;
                }
                runScene(number, moves,
                         {.super = true, .shortSuper = true, .legalLines = 1 + i % 2}, kind,
                         options, recognizer, with);
                if (i % 2 == 0 && options.only.isEmpty())
                    runScene(number, moves, {}, kind, options, recognizer, without);
                ++number;
            }
    printf("Frames with text\n");
    print(with);
    printf("Frames without text\n");
    print(without);
}

// Slates.

void runSlates(const Options& options, TextRecognizer& recognizer)
{
    const int count = 25 * options.perKind;
    int adIDs = 0;
    int lengths = 0;
    int wrong = 0;
    double seconds = 0;
    for (int i = 0; i < count; ++i) {
        TextScenes::Random random(options.set == Set::tuning ? 5000 + i : 950'000 + i);
        const auto slate = TextScenes::slate(options.set, random);
        const double before = processorSeconds();
        const QImage picture = slate.image.width() > 1920
                                   ? slate.image.scaledToWidth(1920, Qt::SmoothTransformation)
                                   : slate.image;
        const auto lines = recognizer.recognize(
            picture, Subject::slate, std::chrono::steady_clock::now() + std::chrono::seconds(60));
        seconds += processorSeconds() - before;
        if (!lines)
            qFatal("%s", qPrintable(lines.error().description));
        SignalInfo signal;
        signal.slateTextLines.emplace();
        for (const auto& line : *lines)
            signal.slateTextLines->push_back(line.text);
        Checker::Rows rows;
        Checker::checkSlateContents({u"Ad-ID"_s}, signal, slate.adID, slate.seconds, rows);
        const QString measured = rows.front().measured;
        const bool adID = measured.startsWith(u"Ad-ID matches"_s);
        const bool length = measured.contains(u"stated duration matches"_s);
        const bool isWrong = measured.contains(u"but the ad measures"_s);
        adIDs += adID ? 1 : 0;
        lengths += length ? 1 : 0;
        wrong += isWrong ? 1 : 0;
        if (!adID || !length) {
            printf("slate %d, %s, length \"%s\": %s\n", i, qPrintable(slate.adID),
                   qPrintable(slate.length), qPrintable(measured));
            for (const auto& line : *lines)
                printf("    %s\n", qPrintable(line.text));
            if (!options.show.isEmpty()) {
                QDir().mkpath(options.show);
                picture.save(options.show + u"/slate-%1.png"_s.arg(i));
            }
        }
    }
    printf("slates: Ad-ID %d, length %d, length wrong %d, of %d; processor seconds %.3f\n", adIDs,
           lengths, wrong, count, seconds / count);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList arguments = application.arguments().mid(1);
    Options options;
    const auto option = [&](const QString& name) {
        const auto at = arguments.indexOf(name);
        return at < 0 || at + 1 >= arguments.size() ? QString() : arguments[at + 1];
    };
    if (arguments.contains(u"tuning"_s))
        options.set = Set::tuning;
    if (const int count = option(u"--per-kind"_s).toInt(); count > 0)
        options.perKind = count;
    options.show = option(u"--show"_s);
    options.only = option(u"--only"_s);
    auto recognizer = TesseractRecognizer::make({"eng"});
    if (!recognizer)
        qFatal("%s", qPrintable(recognizer.error().description));
    if (arguments.value(0) == u"frames"_s)
        runFrames(options, **recognizer);
    else if (arguments.value(0) == u"slates"_s)
        runSlates(options, **recognizer);
    else if (arguments.value(0) == u"clips"_s)
        TextQuality::runClips(options.set, options.perKind);
    else if (arguments.value(0) == u"photographs"_s)
        TextQuality::runPhotographs(options.perKind);
    else
        qFatal(
            "TextQuality frames|slates|clips|photographs [tuning] [--per-kind N] [--show FOLDER]");
    return 0;
}
