#include "Flashes/FlashAnalyzer.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace vantroque {

namespace {

constexpr Microseconds tenth = 100'000;
constexpr Microseconds halfSecond = 500'000;
/// No film is longer than this many tenths of a second, whatever its times say: three days.
constexpr Microseconds mostTenths = Microseconds{3} * 24 * 36'000;

bool isHdr(FlashLight light)
{
    return light == FlashLight::hlg || light == FlashLight::pq;
}

} // namespace

Microseconds FlashAnalyzer::apart(double frameRate)
{
    // Times that count in thousandths are off by one at most.
    constexpr Microseconds of50Hz = 359'000;
    constexpr Microseconds of60Hz = 333'000;
    bool is60Hz = false;
    for (const double rate : {15, 30, 60, 120, 240})
        is60Hz = is60Hz || std::abs(frameRate / rate - 1) < 0.005;
    return is60Hz ? of60Hz : of50Hz;
}

FlashAnalyzer::FlashAnalyzer(const Source& source)
    : m_source(source),
      m_screen(source.picture, source.light, source.matrix),
      m_luminance(source.picture.cells(), isHdr(source.light)),
      m_red(source.picture.cells(), source.matrix),
      m_luminanceRuns(source.picture, apart(source.frameRate), FlashFinding::Kind::luminance),
      m_redRuns(source.picture, apart(source.frameRate), FlashFinding::Kind::red),
      m_stripes(source.picture)
{
}

void FlashAnalyzer::add(Microseconds time, FlashSamples samples)
{
    if (samples.size() != m_source.picture.samples())
        return;
    if (!m_first)
        m_first = time;
    Microseconds now = time - *m_first;
    if (!m_before.empty() && now <= m_last)
        now = m_last + static_cast<Microseconds>(1e6 / std::max(m_source.frameRate, 1.0));
    const CellLight& light = m_screen.of(samples);
    const auto moves = [&] {
        return ContentMotion::isOf(m_source.picture, m_before, light.luminance);
    };
    const double luminance = m_luminanceRuns.add(now, m_luminance.of(light.luminance), moves);
    const double red = m_redRuns.add(now, m_red.of(light), moves);
    m_stripes.add(now, light.luminance, [&](std::size_t cell) {
        return m_luminanceRuns.changedAfter(cell, now - halfSecond);
    });
    keepRisk(now, std::max(luminance, red));
    m_before = light.luminance;
    m_last = now;
}

void FlashAnalyzer::keepRisk(Microseconds time, double risk)
{
    const auto place = static_cast<std::size_t>(std::min(time / tenth, mostTenths));
    if (m_risk.size() <= place)
        m_risk.resize(place + 1);
    m_risk[place] = std::max(m_risk[place], static_cast<float>(risk));
}

FlashCurve FlashAnalyzer::curve() const
{
    FlashCurve curve;
    const std::size_t stretch = (m_risk.size() + mostOfCurve - 1) / mostOfCurve;
    curve.sampleHz = stretch > 0 ? 10.0 / static_cast<double>(stretch) : 0;
    for (std::size_t i = 0; i < m_risk.size(); i += stretch) {
        const auto end = std::min(i + stretch, m_risk.size());
        const float highest = *std::max_element(m_risk.begin() + static_cast<std::ptrdiff_t>(i),
                                                m_risk.begin() + static_cast<std::ptrdiff_t>(end));
        curve.risk.push_back(std::round(highest * 100) / 100);
    }
    return curve;
}

FlashInfo FlashAnalyzer::finished()
{
    FlashInfo info;
    info.light = m_source.light;
    info.peak = ScreenLight::peakOf(m_source.light);
    info.apartSeconds = apart(m_source.frameRate) < 350'000 ? 0.334 : 0.36;
    info.fields = m_source.fields;
    for (auto&& findings : {m_luminanceRuns.finished(), m_redRuns.finished(), m_stripes.finished()})
        std::ranges::copy(findings, std::back_inserter(info.findings));
    // The gravest stay, in order of time.
    if (info.findings.size() > mostFindings) {
        info.leftOut = static_cast<int>(info.findings.size() - mostFindings);
        std::ranges::stable_sort(info.findings, {}, &FlashFinding::kind);
        info.findings.resize(mostFindings);
    }
    std::ranges::stable_sort(info.findings, {}, &FlashFinding::start);
    info.curve = curve();
    return info;
}

} // namespace vantroque
