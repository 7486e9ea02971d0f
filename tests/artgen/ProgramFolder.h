#pragma once

#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QString>

// Where the build wrote the program folder.
inline QString ProgramPath(const QString& name) { return QString(VALKENHORN_PROGRAM_DIR) + "/" + name; }

inline QByteArray ReadProgramFile(const QString& name) {
  QFile file(ProgramPath(name));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

inline QImage ReadPicture(const QString& name) { return QImage(ProgramPath(name)); }
