// Makes the sounds as shipped: struck bars of wood and metal, each a note with a few overtones that die away.
//
//   make_sounds FOLDER
//
// The files are WAV, one channel of 16 bits at 22,050 a second; the same program makes the same bytes.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <numbers>
#include <span>
#include <string>
#include <vector>

namespace {

constexpr int kRate = 22050;
constexpr double kPeak = 0.5;  // of full scale: heard beside music, no fright at night

struct Note {
  double start;  // seconds
  double pitch;  // Hz
  double life;   // seconds until a third of it is left
  double strength;
};

struct Overtone {
  double ratio, strength, life;  // life as a part of the note's
};
constexpr Overtone kWood[] = {{1, 1, 1}, {3.93, 0.22, 0.3}, {9.2, 0.05, 0.12}};
constexpr Overtone kMetal[] = {{1, 1, 1}, {2.01, 0.35, 0.7}, {2.99, 0.2, 0.5}, {4.17, 0.1, 0.35}};

constexpr double kG3 = 196.00, kC4 = 261.63, kC5 = 523.25, kE5 = 659.26, kG5 = 783.99, kA5 = 880.00, kB5 = 987.77,
                 kC6 = 1046.50, kE6 = 1318.51;

struct Sound {
  const char* file;
  std::span<const Overtone> overtones;
  double seconds;
  std::vector<Note> notes;
};

// A ring is over before the next one of a repeated signal, three seconds later.
std::vector<Sound> Sounds() {
  return {
      {"didring.wav",
       kWood,
       1.6,
       {{0.00, kE5, 0.10, 1},
        {0.11, kA5, 0.10, 1},
        {0.22, kE5, 0.10, 1},
        {0.33, kA5, 0.22, 1},
        {0.75, kE5, 0.10, 1},
        {0.86, kA5, 0.10, 1},
        {0.97, kE5, 0.10, 1},
        {1.08, kA5, 0.22, 1}}},
      {"vipring.wav",
       kMetal,
       1.9,
       {{0.00, kC5, 0.20, 1},
        {0.13, kE5, 0.20, 1},
        {0.26, kG5, 0.20, 1},
        {0.39, kC6, 0.30, 1},
        {0.85, kG5, 0.20, 1},
        {0.98, kC6, 0.20, 1},
        {1.11, kE6, 0.28, 0.9}}},
      {"getrennt.wav", kWood, 0.7, {{0.00, kC4, 0.10, 1}, {0.16, kG3, 0.18, 1}}},
      {"wild.wav", kMetal, 2.0, {{0.00, kG5, 0.35, 1}, {0.35, kB5, 0.35, 0.9}, {0.70, kE5, 0.45, 1}}},
  };
}

void AddNote(std::vector<double>& wave, const Note& note, const Overtone& overtone) {
  const auto first = static_cast<std::size_t>(note.start * kRate);
  for (std::size_t i = first; i < wave.size(); ++i) {
    const double time = static_cast<double>(i - first) / kRate;
    const double attack = std::min(1.0, time / 0.004);  // without it each note would begin with a click
    wave[i] += note.strength * overtone.strength * attack * std::exp(-time / (note.life * overtone.life)) *
               std::sin(2 * std::numbers::pi * note.pitch * overtone.ratio * time);
  }
}

std::vector<double> Wave(const Sound& sound) {
  std::vector<double> wave(static_cast<std::size_t>(sound.seconds * kRate));
  for (const Note& note : sound.notes) {
    for (const Overtone& overtone : sound.overtones)
      AddNote(wave, note, overtone);
  }
  const std::size_t fade = kRate / 20;
  for (std::size_t i = 0; i < fade; ++i)
    wave[wave.size() - 1 - i] *= static_cast<double>(i) / static_cast<double>(fade);
  return wave;
}

void AddNumber(std::string& bytes, std::uint32_t number, int size) {
  for (int i = 0; i < size; ++i)
    bytes += static_cast<char>(number >> (8 * i) & 0xFF);
}

std::string WaveFile(const std::vector<double>& wave) {
  double loudest = 0;
  for (const double value : wave)
    loudest = std::max(loudest, std::abs(value));
  const auto size = static_cast<std::uint32_t>(wave.size() * 2);
  std::string bytes = "RIFF";
  AddNumber(bytes, 36 + size, 4);
  bytes += "WAVEfmt ";
  AddNumber(bytes, 16, 4);
  AddNumber(bytes, 1, 2);  // plain samples
  AddNumber(bytes, 1, 2);  // channels
  AddNumber(bytes, kRate, 4);
  AddNumber(bytes, kRate * 2, 4);
  AddNumber(bytes, 2, 2);
  AddNumber(bytes, 16, 2);
  bytes += "data";
  AddNumber(bytes, size, 4);
  for (const double value : wave) {
    const auto sample = static_cast<std::int16_t>(std::lround(value / loudest * kPeak * 32767));
    AddNumber(bytes, static_cast<std::uint16_t>(sample), 2);
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: make_sounds FOLDER\n", stderr);
    return 2;
  }
  for (const Sound& sound : Sounds()) {
    const std::string file = std::string(argv[1]) + "/" + sound.file;
    const std::string bytes = WaveFile(Wave(sound));
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (out.flush()) continue;
    std::fprintf(stderr, "make_sounds: cannot write %s\n", file.c_str());
    return 1;
  }
  return 0;
}
