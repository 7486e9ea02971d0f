#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace vk::art {

// Writes mono 16-bit PCM samples as a RIFF WAVE file.
bool WriteWav(const std::vector<std::int16_t>& samples, int sampleRate, const QString& path);

}  // namespace vk::art
