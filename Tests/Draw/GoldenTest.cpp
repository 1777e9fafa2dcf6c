#include "Draw/FramePainter.h"

#include "Drawn.h"
#include "Framing/GuideBuilder.h"

#include <filesystem>

// Small pictures with everything on them, against those that somebody has looked at.
// scripts/golden-pictures shows what has changed.

namespace vantroque {
namespace {

using namespace Drawn;
using namespace Qt::StringLiterals;
using Tool = AnnotationStroke::Tool;
using Ink = AnnotationStroke::Ink;
namespace fs = std::filesystem;

struct Golden {
    const char* name;
    QSize size;
    QColor background;
    std::vector<QString> captions;
};

void PrintTo(const Golden& golden, std::ostream* out)
{
    *out << golden.name;
}

Overlay overlay(const Golden& golden)
{
    Overlay overlay;
    for (const QString& text : golden.captions)
        overlay.captions.push_back(CaptionCue::plain(1, 0, 1, text));
    const int height = golden.size.height();
    overlay.guides =
        GuideBuilder::guides({.safeAreas = true,
                              .thirds = true,
                              .detectedPicture = true,
                              .platformZoneIDs = {u"tiktok"_s},
                              .feedCrop = true},
                             {golden.size.width(), height},
                             CropRect{golden.size.width(), height * 3 / 4, 0, height / 8});
    overlay.strokes = {{{}, Tool::arrow, {{0.1, 0.7}, {0.3, 0.4}}, Ink::red},
                       {{}, Tool::ellipse, {{0.5, 0.4}, {0.7, 0.6}}, Ink::amber},
                       {{}, Tool::pen, {{0.35, 0.6}, {0.4, 0.5}, {0.45, 0.6}}, Ink::white},
                       {{}, Tool::pen, {{0.8, 0.3}}, Ink::white}};
    overlay.finding = Finding{{0.75, 0.4, 0.15, 0.1}, Verdict::fail, u"past 93%"_s};
    return overlay;
}

/// What differs, the old one and the new one.
QImage sideBySide(const QImage& golden, const QImage& drawn)
{
    const int width = std::max(golden.width(), drawn.width());
    QImage all(3 * width, std::max(golden.height(), drawn.height()), QImage::Format_RGB32);
    all.fill(Qt::black);
    QPainter painter(&all);
    painter.drawImage(0, 0, golden);
    painter.setCompositionMode(QPainter::CompositionMode_Difference);
    painter.drawImage(0, 0, drawn);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(width, 0, golden);
    painter.drawImage(2 * width, 0, drawn);
    return all;
}

class GoldenPicture : public testing::TestWithParam<Golden> {};

INSTANTIATE_TEST_SUITE_P(
    All, GoldenPicture,
    testing::Values(Golden{"landscape-dark", {426, 240}, QColor(24, 32, 56), {u"Morning comes"_s}},
                    Golden{
                        "landscape-light", {426, 240}, QColor(236, 232, 222), {u"Morning comes"_s}},
                    Golden{"portrait-dark", {270, 480}, QColor(24, 32, 56), {u"Morning"_s}},
                    Golden{"portrait-light", {270, 480}, QColor(236, 232, 222), {u"Morning"_s}},
                    Golden{"scripts",
                           {426, 240},
                           QColor(96, 96, 96),
                           {u"مرحبا שלום"_s, u"한국어"_s, u"おはよう 😀"_s, u"नमस्ते ไทย"_s}}),
    [](const auto& test) {
        return QString::fromLatin1(test.param.name).replace(u'-', u'_').toStdString();
    });

TEST_P(GoldenPicture, IsAsItWasWhenSomebodyLookedAtIt)
{
    const Golden& one = GetParam();
    const QImage drawn =
        FramePainter::burnIn(blank(one.size, one.background), overlay(one), one.size)
            .convertToFormat(QImage::Format_RGB32);
    const fs::path folder = VANTROQUE_DRAWN_PICTURES;
    fs::create_directories(folder);
    const auto file = [](const fs::path& path) { return QString::fromStdString(path.native()); };
    const std::string name = std::string(one.name) + ".png";
    ASSERT_TRUE(drawn.save(file(folder / name)));
    const QImage golden(file(fs::path(VANTROQUE_GOLDEN_PICTURES) / name));
    const fs::path compared = folder / ("difference, old, new " + name);
    fs::remove(compared);
    if (golden.size() == drawn.size()
        && difference(golden.convertToFormat(QImage::Format_RGB32), drawn, 3).isEmpty())
        return;
    ASSERT_TRUE(sideBySide(golden, drawn).save(file(compared)));
    ADD_FAILURE() << "another picture: see " << compared
                  << "; scripts/golden-pictures --accept keeps the new one";
}

} // namespace
} // namespace vantroque
