#include "Painted.h"
#include "Support/TextJudgement.h"

#include <map>

using namespace vantroque;
using TextScenes::Kind;

namespace {

struct Counts {
    int drawn = 0;
    int found = 0;
};

struct Figures {
    std::map<Kind, Counts> kinds;
    int falseBoxes = 0;

    double recall(Kind kind) const
    {
        const Counts& counts = kinds.at(kind);
        return static_cast<double>(counts.found) / counts.drawn;
    }
};

/// Reads a few pictures over each kind of background: the least of what the benchmark reads. The
/// seeds are fixed, but not the typefaces: those that are missing are replaced.
Figures read(bool moves, const TextScenes::Wanted& wanted)
{
    constexpr QSize size(960, 540);
    constexpr int frames = 2;
    plain(size, Qt::black); // starts the application
    const auto engine = recognizer();
    Figures figures;
    TextScenes::Random random(7);
    for (int kind = 0; kind < TextScenes::backgroundCount(TextScenes::Set::tuning); ++kind) {
        const auto scene =
            TextScenes::scene(TextScenes::Set::tuning, kind, size, moves, wanted, frames, random);
        engine->forget();
        for (const QImage& picture : scene.pictures) {
            const auto judgement =
                TextScenes::judge(picture, linesIn(picture, *engine), scene.lines);
            for (const auto& line : judgement.lines) {
                ++figures.kinds[line.drawn.kind].drawn;
                figures.kinds[line.drawn.kind].found += line.isFound() ? 1 : 0;
            }
            figures.falseBoxes += static_cast<int>(judgement.falseBoxes.size());
        }
    }
    return figures;
}

constexpr TextScenes::Wanted everyKind{.super = true, .shortSuper = true, .legalLines = 1};

} // namespace

TEST(TextQuality, NearlyAllTextOverStillScenesIsFound)
{
    const Figures figures = read(false, everyKind);
    EXPECT_GE(figures.recall(Kind::super), 0.85);
    EXPECT_GE(figures.recall(Kind::shortSuper), 0.7);
    EXPECT_GE(figures.recall(Kind::legal), 0.7);
    EXPECT_LE(figures.falseBoxes, 1);
}

TEST(TextQuality, MostTextOverMovingScenesIsFound)
{
    const Figures figures = read(true, everyKind);
    EXPECT_GE(figures.recall(Kind::super), 0.85);
    EXPECT_GE(figures.recall(Kind::shortSuper), 0.7);
    EXPECT_GE(figures.recall(Kind::legal), 0.6);
    EXPECT_LE(figures.falseBoxes, 1);
}

TEST(TextQuality, ScenesWithoutTextHoldNone)
{
    EXPECT_EQ(read(false, {}).falseBoxes, 0);
}
