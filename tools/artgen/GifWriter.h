#pragma once

#include <QImage>
#include <QString>

namespace vk::art {

// Writes the picture as a GIF89a file. Pixels with alpha below one half become
// the transparent colour; the others are reduced to at most 255 colours
// (exactly, when the picture has no more than that). Returns false on a
// failure of the file.
bool WriteGif(const QImage& picture, const QString& path);

// The palette reduction on its own: every pixel of the result is one of at
// most 255 opaque colours or fully transparent.
QImage ReduceToPalette(const QImage& picture);

}  // namespace vk::art
