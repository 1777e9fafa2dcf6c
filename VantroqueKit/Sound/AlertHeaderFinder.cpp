#include "Sound/AlertHeaderFinder.h"

#include <array>
#include <cmath>
#include <numbers>

namespace vantroque {

namespace {

constexpr double bitsASecond = 520.83;
constexpr double oneHertz = 4 * bitsASecond;
constexpr double zeroHertz = 3 * bitsASecond;

/// AB, its lowest bit first.
constexpr std::array preambleByte{true, true, false, true, false, true, false, true};
/// Of the 128 of a preamble; sound gives them by chance once in millions of years.
constexpr int bitsRead = 64;
constexpr int bitsWrong = 3;

std::complex<double> turnOf(double hertz, double rate)
{
    return std::polar(1.0, -2 * std::numbers::pi * hertz / rate);
}

} // namespace

double AlertHeaderFinder::Tone::power(float sample, std::size_t place)
{
    const auto now = static_cast<double>(sample) * wave;
    sum += now - recent[place];
    recent[place] = now;
    wave *= turn;
    if (place == 0)
        wave /= std::abs(wave);
    return std::norm(sum);
}

AlertHeaderFinder::AlertHeaderFinder(double rate) : m_samplesOfBit(rate / bitsASecond)
{
    const auto window = static_cast<std::size_t>(std::lround(m_samplesOfBit));
    m_one.turn = turnOf(oneHertz, rate);
    m_zero.turn = turnOf(zeroHertz, rate);
    m_one.recent.resize(window);
    m_zero.recent.resize(window);
    m_squares.resize(window);
    m_bits.resize(static_cast<std::size_t>(std::ceil(m_samplesOfBit * bitsRead)) + 1);
}

void AlertHeaderFinder::add(float sample)
{
    const std::size_t window = m_squares.size();
    const auto place = static_cast<std::size_t>(m_samples) % window;
    const double one = m_one.power(sample, place);
    const double zero = m_zero.power(sample, place);
    const float square = sample * sample;
    m_energy += square - m_squares[place];
    m_squares[place] = square;

    constexpr double quiet = 1e-5; // -50 dBFS
    constexpr double clear = 0.4;  // of what one of the tones alone would be
    const double ofAll = m_energy * static_cast<double>(window) / 2;
    const bool isClear =
        m_energy > quiet * static_cast<double>(window) && one + zero > clear * ofAll;
    m_bits[static_cast<std::size_t>(m_samples) % m_bits.size()] = {one > zero, isClear};
    ++m_samples;
    constexpr std::int64_t step = 2;
    if (!isClear || m_samples % step != 0 || m_samples < std::ssize(m_bits) || !isPreamble())
        return;
    const SampleSpan span{m_samples - std::ssize(m_bits), m_samples};
    if (!m_found.empty() && span.start <= m_found.back().end)
        m_found.back().end = span.end;
    else
        m_found.push_back(span);
}

bool AlertHeaderFinder::isPreamble() const
{
    int wrong = 0;
    for (int bit = 0; bit < bitsRead && wrong <= bitsWrong; ++bit) {
        const auto sample = m_samples - 1 - std::llround(bit * m_samplesOfBit);
        const Bit& read = m_bits[static_cast<std::size_t>(sample) % m_bits.size()];
        const bool expected = preambleByte[static_cast<std::size_t>(7 - bit % 8)];
        if (!read.isClear || read.isOne != expected)
            ++wrong;
    }
    return wrong <= bitsWrong;
}

} // namespace vantroque
