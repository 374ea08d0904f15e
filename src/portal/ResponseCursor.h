#pragma once

#include <QString>
#include <QStringView>
#include <algorithm>

namespace qinghe {

/// A portal answer that is eaten from its front: one shared text and the position up to which it
/// was read. Copying is cheap; reading on costs what it passes over, never a copy of the tail.
class ResponseCursor {
 public:
  ResponseCursor() = default;
  ResponseCursor(const QString& text) : text_(text) {}  // NOLINT(google-explicit-constructor)

  bool isEmpty() const { return position_ >= text_.size(); }
  qsizetype length() const { return text_.size() - position_; }
  QStringView view() const { return QStringView(text_).sliced(position_); }
  QString text() const { return text_.sliced(position_); }

  /// The tail from `offset` (0-based, counted from the front) on.
  ResponseCursor from(qsizetype offset) const;
  /// Becomes that tail.
  void advance(qsizetype offset) { position_ += std::clamp<qsizetype>(offset, 0, length()); }

 private:
  QString text_;
  qsizetype position_ = 0;
};

}  // namespace qinghe
