// PicturesBenchmark: what is drawn for every frame that a player shows: the scopes, and what lies
// on the picture.

#include "Base/Numbers.h"
#include "Draw/OverlayCache.h"
#include "Framing/GuideBuilder.h"
#include "Picture/FrameDifference.h"
#include "Picture/ScopeRenderer.h"

#include <QGuiApplication>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <iostream>
#include <random>

using namespace vantroque;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize hd(1920, 1080);

/// The median of some runs, in milliseconds.
double median(int runs, const std::function<void()>& work)
{
    std::vector<double> milliseconds;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        milliseconds.push_back(taken.count());
    }
    std::ranges::sort(milliseconds);
    return milliseconds[milliseconds.size() / 2];
}

void tell(const char* what, double milliseconds, const char* aim)
{
    std::cout << what << ' ' << Numbers::fixed(milliseconds, 2).toStdString() << " ms (" << aim
              << ")" << std::endl;
}

ScopeFrame noise(int width, int height)
{
    std::mt19937 random(1);
    std::string bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, '\0');
    std::ranges::generate(bytes, [&] { return static_cast<char>(random()); });
    return ScopeFrame::fromYuv444(bytes, width, height, false, ColorMatrix::bt709).value();
}

/// Decoded planes of noise.
class Decoded {
public:
    Decoded(QSize size, int sampleBits)
        : m_size(size),
          m_sampleBits(sampleBits),
          m_bytes(static_cast<std::size_t>(stride()) * static_cast<std::size_t>(size.height()) * 3
                  / 2)
    {
        std::mt19937 random(static_cast<unsigned>(sampleBits));
        std::ranges::generate(m_bytes, [&] { return static_cast<std::uint8_t>(random()); });
    }

    ComparedFrame frame() const
    {
        return {.picture = {.width = m_size.width(),
                            .height = m_size.height(),
                            .sampleBits = m_sampleBits,
                            .luma = m_bytes.data(),
                            .lumaStride = stride(),
                            .chroma = m_bytes.data() + stride() * m_size.height(),
                            .chromaStride = stride()}};
    }

private:
    std::ptrdiff_t stride() const
    {
        return std::ptrdiff_t{m_size.width()} * (m_sampleBits == 10 ? 2 : 1);
    }

    QSize m_size;
    int m_sampleBits;
    std::vector<std::uint8_t> m_bytes;
};

void tellDifferences()
{
    constexpr NormalizedRect whole{0, 0, 1, 1};
    for (const int bits : {8, 10}) {
        const Decoded one(hd, bits);
        const Decoded other(hd, bits);
        const Decoded smaller({1280, 720}, bits);
        const std::string of = " of 1920x1080 in " + Numbers::wholeText(bits) + " bits";
        const auto measured = [&](ComparedFrame b) {
            return median(15, [&] { FrameDifference::of(one.frame(), b, whole, 4); });
        };
        tell(("difference" + of).c_str(), measured(other.frame()), "under 5");
        ComparedFrame read = other.frame();
        read.fullRange = true;
        tell(("difference" + of + " from another range").c_str(), measured(read), "under 33");
        tell(("difference" + of + " from 1280x720").c_str(), measured(smaller.frame()), "under 33");
    }
}

/// All guides of a wide frame, forty strokes as a hand draws them and three cues.
Overlay fullOverlay()
{
    Overlay overlay;
    overlay.guides = GuideBuilder::guides(
        {.safeAreas = true, .thirds = true, .detectedPicture = true, .feedCrop = true},
        {hd.width(), hd.height()}, CropRect{1920, 800, 0, 140});
    for (int i = 0; i < 40; ++i) {
        AnnotationStroke stroke;
        for (int point = 0; point < 200; ++point)
            stroke.points.push_back(
                {0.1 + 0.02 * i + point * 0.001, 0.5 + 0.3 * std::sin(i + point * 0.05)});
        overlay.strokes.push_back(stroke);
    }
    for (const QString& text : {u"- Morning comes when you say so.\n- And not before."_s,
                                u"صباح الخير"_s, u"早上好，世界"_s})
        overlay.captions.push_back(CaptionCue::plain(1, 0, 1, text));
    return overlay;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);

    const ScopeFrame frame = noise(320, 180);
    tell("four scopes of 320x180",
         median(31,
                [&] {
                    ScopeRenderer::waveform(frame, 256, 128);
                    ScopeRenderer::parade(frame, 384, 128);
                    ScopeRenderer::vectorscope(frame, 128);
                    ScopeRenderer::outOfRangeImage(frame);
                }),
         "under 8");

    tellDifferences();

    QImage picture(hd, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    const Overlay overlay = fullOverlay();
    const OverlayPlace place{
        .picture = QRectF({}, QSizeF(hd)), .visible = QRect({}, hd), .scale = 2};
    const auto drawAnew = [&](OverlayCache& cache) {
        const auto orders = cache.missing(overlay, place);
        std::vector<OverlayCache::Drawn> layers;
        for (const auto& [layer, part] : orders.layers)
            layers.push_back({layer, OverlayLayer(part, place)});
        cache.take(layers);
    };
    const auto lay = [&](OverlayCache& cache) {
        QPainter painter(&picture);
        cache.draw(painter, overlay, place);
    };
    tell("overlay of 1920x1080 drawn anew, in the background",
         median(5,
                [&] {
                    OverlayCache cold;
                    lay(cold);
                    drawAnew(cold);
                }),
         "no aim");
    OverlayCache warm;
    tell("overlay of 1920x1080 before it is drawn", median(31, [&] { lay(warm); }), "under 4");
    drawAnew(warm);
    tell("overlay of 1920x1080 once drawn", median(31, [&] { lay(warm); }), "under 4");
    return 0;
}
