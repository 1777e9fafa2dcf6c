#pragma once

#include <vector>

namespace vantroque {

/// One channel at 48 kHz; 1 is full scale.
using MadeSound = std::vector<float>;

constexpr int madeRate = 48'000;

MadeSound silence(double seconds);
/// Tunes of three voices with overtones and vibrato, in tune with an A of so many hertz, and noise
/// under them, at -20 dBFS; another one for each seed.
MadeSound music(double seconds, unsigned seed, double tuning = 440);
/// The sum of waves of those frequencies, each so loud, from `start` on.
void addTones(MadeSound& sound, const std::vector<double>& hertz, double dbfs, double start,
              double seconds);
/// A data burst as public warnings begin: the preamble, then that text; returns its seconds.
double addHeader(MadeSound& sound, const char* text, double dbfs, double start);

} // namespace vantroque
