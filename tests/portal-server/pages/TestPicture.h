#pragma once

#include <QBuffer>
#include <QImage>
#include <string>

/// A picture of one colour as a file's content.
inline std::string testPicture(const char* format, int width, int height,
                               QColor colour = QColor(200, 30, 30)) {
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(colour);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, format);
  return bytes.toStdString();
}

inline QImage pictureOf(const std::string& bytes) {
  return QImage::fromData(QByteArray::fromStdString(bytes));
}
