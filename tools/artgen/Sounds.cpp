#include "Sounds.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vk::art {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// A small fixed noise source, so that every build writes the same sounds.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed) {}
  double Next() {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<double>(state_ >> 8) / static_cast<double>(1u << 24) * 2.0 - 1.0;
  }

 private:
  std::uint32_t state_;
};

std::vector<std::int16_t> ToPcm(const std::vector<double>& mix) {
  double peak = 1e-9;
  for (double v : mix) peak = std::max(peak, std::abs(v));
  const double gain = 0.85 * 32767.0 / peak;
  std::vector<std::int16_t> out(mix.size());
  for (std::size_t i = 0; i < mix.size(); ++i)
    out[i] = static_cast<std::int16_t>(std::lround(std::clamp(mix[i] * gain, -32767.0, 32767.0)));
  return out;
}

double NoteFrequency(int semitonesFromA4) { return 440.0 * std::pow(2.0, semitonesFromA4 / 12.0); }

// A brass-like tone: harmonics falling off as 1/n, a soft attack that also
// brightens, a gentle vibrato after the attack.
void AddBrass(std::vector<double>& mix, double start, double length, double frequency, double level) {
  const std::size_t first = static_cast<std::size_t>(start * kSoundRate);
  const std::size_t count = static_cast<std::size_t>(length * kSoundRate);
  double phase = 0.0;
  for (std::size_t i = 0; i < count && first + i < mix.size(); ++i) {
    const double t = static_cast<double>(i) / kSoundRate;
    const double attack = std::min(1.0, t / 0.035);
    const double release = std::min(1.0, (length - t) / 0.06);
    const double envelope = attack * std::max(0.0, release) * (0.85 + 0.15 * std::exp(-t * 6.0));
    const double vibrato = 1.0 + 0.004 * std::sin(kTwoPi * 5.5 * t) * std::min(1.0, t / 0.25);
    phase += kTwoPi * frequency * vibrato / kSoundRate;
    double v = 0.0;
    const int harmonics = 9;
    for (int n = 1; n <= harmonics; ++n) {
      const double brightness = n == 1 ? 1.0 : attack * 0.9;
      v += brightness * std::sin(phase * n) / n;
    }
    mix[first + i] += level * envelope * v;
  }
}

void AddSnareHit(std::vector<double>& mix, Noise& noise, double start, double level) {
  const std::size_t first = static_cast<std::size_t>(start * kSoundRate);
  const std::size_t count = static_cast<std::size_t>(0.12 * kSoundRate);
  double previous = 0.0;
  for (std::size_t i = 0; i < count && first + i < mix.size(); ++i) {
    const double t = static_cast<double>(i) / kSoundRate;
    const double n = noise.Next();
    const double bright = n - 0.6 * previous;  // a crude high-pass: the rattle of the snares
    previous = n;
    const double body = std::sin(kTwoPi * 190.0 * t) * std::exp(-t * 40.0);
    mix[first + i] += level * (0.7 * bright * std::exp(-t * 28.0) + 0.5 * body);
  }
}

void AddTimpani(std::vector<double>& mix, double start, double frequency, double level) {
  const std::size_t first = static_cast<std::size_t>(start * kSoundRate);
  const std::size_t count = static_cast<std::size_t>(1.2 * kSoundRate);
  for (std::size_t i = 0; i < count && first + i < mix.size(); ++i) {
    const double t = static_cast<double>(i) / kSoundRate;
    const double v = std::sin(kTwoPi * frequency * t) + 0.4 * std::sin(kTwoPi * frequency * 1.5 * t) * std::exp(-t * 6);
    mix[first + i] += level * v * std::exp(-t * 3.2) * std::min(1.0, t / 0.004);
  }
}

}  // namespace

std::vector<std::int16_t> IntroSound() {
  const double total = 6.0;
  std::vector<double> mix(static_cast<std::size_t>(total * kSoundRate), 0.0);
  Noise noise(20261121u);

  // Drum roll that swells over the first second and a half.
  for (double t = 0.0; t < 1.45; t += 0.055) AddSnareHit(mix, noise, t, 0.15 + 0.35 * t / 1.45);
  AddTimpani(mix, 1.5, 98.0, 0.9);

  // The bugle call, in C major: G C E G, E C, E G C.
  struct Note {
    double start, length;
    int pitch;  // semitones from A4
  };
  const double q = 0.3;
  const Note call[] = {
      {1.50, q * 0.9, -2},  {1.80, q * 0.9, 3},   {2.10, q * 0.9, 7},  {2.40, q * 1.9, 10},
      {3.00, q * 0.9, 7},   {3.30, q * 0.9, 3},   {3.60, q * 0.9, 7},  {3.90, q * 0.9, 10},
      {4.20, q * 5.5, 15},
  };
  for (const Note& n : call) AddBrass(mix, n.start, n.length, NoteFrequency(n.pitch), 0.32);
  // A lower voice holds the harmony under the last note.
  AddBrass(mix, 4.20, q * 5.5, NoteFrequency(10), 0.18);
  AddBrass(mix, 4.20, q * 5.5, NoteFrequency(3), 0.16);
  // March beat under the call, and a closing roll with a last stroke.
  for (double t = 1.8; t < 4.2; t += 0.6) AddSnareHit(mix, noise, t, 0.35);
  for (double t = 4.5; t < 5.4; t += 0.05) AddSnareHit(mix, noise, t, 0.12 + 0.2 * (t - 4.5));
  AddTimpani(mix, 4.2, 65.4, 1.0);
  AddSnareHit(mix, noise, 5.45, 0.6);

  // Fade out over the last half second.
  for (std::size_t i = 0; i < mix.size(); ++i) {
    const double t = static_cast<double>(i) / kSoundRate;
    if (t > total - 0.5) mix[i] *= (total - t) / 0.5;
  }
  return ToPcm(mix);
}

std::vector<std::int16_t> DiceSound() {
  const double total = 1.5;
  std::vector<double> mix(static_cast<std::size_t>(total * kSoundRate), 0.0);
  Noise noise(7u);
  auto click = [&](double start, double level, double pitch, double muffle) {
    const std::size_t first = static_cast<std::size_t>(start * kSoundRate);
    const std::size_t count = static_cast<std::size_t>(0.05 * kSoundRate);
    double low = 0.0;
    for (std::size_t i = 0; i < count && first + i < mix.size(); ++i) {
      const double t = static_cast<double>(i) / kSoundRate;
      const double n = noise.Next();
      low += (n - low) * (1.0 - muffle);
      const double ping = std::sin(kTwoPi * pitch * t) * std::exp(-t * 90.0);
      mix[first + i] += level * (0.8 * low * std::exp(-t * 160.0) + 0.5 * ping);
    }
  };
  // Shaking in the cup: muffled, irregular knocks.
  double t = 0.02;
  while (t < 0.8) {
    click(t, 0.35 + 0.25 * std::abs(noise.Next()), 1600.0 + 600.0 * noise.Next(), 0.6);
    t += 0.035 + 0.03 * std::abs(noise.Next());
  }
  // The throw: two dice bouncing on the table, each bounce softer and sooner.
  const double bounces[] = {0.90, 0.93, 1.06, 1.10, 1.17, 1.22, 1.26, 1.30};
  double level = 1.0;
  for (double b : bounces) {
    click(b, level, 3200.0 + 500.0 * noise.Next(), 0.1);
    level *= 0.78;
  }
  return ToPcm(mix);
}

std::vector<std::int16_t> MessageSound() {
  const double total = 0.45;
  std::vector<double> mix(static_cast<std::size_t>(total * kSoundRate), 0.0);
  auto chime = [&](double start, double length, double frequency) {
    const std::size_t first = static_cast<std::size_t>(start * kSoundRate);
    const std::size_t count = static_cast<std::size_t>(length * kSoundRate);
    for (std::size_t i = 0; i < count && first + i < mix.size(); ++i) {
      const double t = static_cast<double>(i) / kSoundRate;
      const double env = std::min(1.0, t / 0.005) * std::exp(-t * 9.0) * std::min(1.0, (length - t) / 0.02);
      mix[first + i] += env * (std::sin(kTwoPi * frequency * t) + 0.3 * std::sin(kTwoPi * 2.0 * frequency * t) +
                               0.1 * std::sin(kTwoPi * 3.0 * frequency * t));
    }
  };
  chime(0.0, 0.16, 880.0);
  chime(0.14, 0.31, 1174.7);
  return ToPcm(mix);
}

}  // namespace vk::art
