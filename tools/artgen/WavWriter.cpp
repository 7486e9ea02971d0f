#include "WavWriter.h"

#include <QFile>

namespace vk::art {
namespace {

void Put32(QByteArray& out, std::uint32_t v) {
  for (int i = 0; i < 4; ++i) out.append(static_cast<char>((v >> (8 * i)) & 0xff));
}
void Put16(QByteArray& out, std::uint16_t v) {
  out.append(static_cast<char>(v & 0xff));
  out.append(static_cast<char>((v >> 8) & 0xff));
}

}  // namespace

bool WriteWav(const std::vector<std::int16_t>& samples, int sampleRate, const QString& path) {
  const std::uint32_t dataBytes = static_cast<std::uint32_t>(samples.size() * 2);
  QByteArray out;
  out.append("RIFF");
  Put32(out, 36 + dataBytes);
  out.append("WAVE");
  out.append("fmt ");
  Put32(out, 16);
  Put16(out, 1);  // PCM
  Put16(out, 1);  // mono
  Put32(out, static_cast<std::uint32_t>(sampleRate));
  Put32(out, static_cast<std::uint32_t>(sampleRate) * 2);
  Put16(out, 2);
  Put16(out, 16);
  out.append("data");
  Put32(out, dataBytes);
  for (std::int16_t s : samples) Put16(out, static_cast<std::uint16_t>(s));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  return file.write(out) == out.size();
}

}  // namespace vk::art
