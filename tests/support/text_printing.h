#pragma once

// Seen by every test source first, so that failures show Qt's texts as texts.

#include <QByteArray>
#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QByteArray& bytes, std::ostream* out) {
  *out << '"' << bytes.toPercentEncoding(" !$&'()*+,/:;=?@[]<>{}|#\"").toStdString() << '"';
}
