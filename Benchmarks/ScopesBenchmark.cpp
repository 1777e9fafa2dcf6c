// ScopesBenchmark: how long each scope takes for the small frames that the analysis shows and for
// one in full HD, and how long a decoder's planes take on their way to the screen. They are drawn
// up to 30 times a second, the planes as often as there are frames.

#include "Base/Numbers.h"
#include "Picture/FrameImage.h"
#include "Picture/ScopeRenderer.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <random>

using namespace vantroque;

namespace {

struct Scope {
    const char* name;
    std::function<QImage(const ScopeFrame&)> draw;
};

/// With samples of the frame at random for its chroma.
QImage fromPlanes(const ScopeFrame& frame)
{
    return FrameImage::of({.width = frame.width,
                           .height = frame.height,
                           .luma = frame.y.data(),
                           .lumaStride = frame.width,
                           .chroma = frame.cb.data(),
                           .chromaStride = frame.width},
                          frame.matrix, frame.fullRange);
}

const std::vector<Scope> scopes{
    {"waveform", [](const ScopeFrame& frame) { return ScopeRenderer::waveform(frame, 256, 128); }},
    {"parade", [](const ScopeFrame& frame) { return ScopeRenderer::parade(frame, 384, 128); }},
    {"vectorscope", [](const ScopeFrame& frame) { return ScopeRenderer::vectorscope(frame, 128); }},
    {"out of range", ScopeRenderer::outOfRangeImage},
    {"picture", ScopeRenderer::picture},
    {"planes", fromPlanes},
};

ScopeFrame noise(int width, int height)
{
    std::mt19937 random(1);
    std::string bytes(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, '\0');
    std::ranges::generate(bytes, [&] { return static_cast<char>(random()); });
    return ScopeFrame::fromYuv444(bytes, width, height, false, ColorMatrix::bt709).value();
}

/// The median of some runs, in milliseconds; negative when nothing was drawn.
double cost(const Scope& scope, const ScopeFrame& frame)
{
    constexpr int runs = 31;
    std::vector<double> milliseconds;
    for (int i = 0; i < runs; ++i) {
        const auto start = std::chrono::steady_clock::now();
        if (scope.draw(frame).isNull())
            return -1;
        const std::chrono::duration<double, std::milli> taken =
            std::chrono::steady_clock::now() - start;
        milliseconds.push_back(taken.count());
    }
    std::ranges::sort(milliseconds);
    return milliseconds[runs / 2];
}

} // namespace

int main()
{
    for (const auto& [width, height] : {std::pair{192, 108}, {320, 180}, {1920, 1080}}) {
        const ScopeFrame frame = noise(width, height);
        std::cout << width << 'x' << height;
        for (const Scope& scope : scopes)
            std::cout << "  " << scope.name << ' '
                      << Numbers::fixed(cost(scope, frame), 2).toStdString() << " ms";
        std::cout << std::endl;
    }
    return 0;
}
