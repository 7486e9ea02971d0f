#pragma once

#include <QImage>
#include <QString>

namespace vk::art {

// Writes the picture as a GIF89a file. Pixels with alpha below one half become
// the transparent colour; the others are reduced to at most 255 colours
// (exactly, when the picture has no more than that). Returns false on a
// failure of the file.
bool WriteGif(const QImage& picture, const QString& path);

}  // namespace vk::art
