#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <string>
#include <vector>

#include "store/ColumnKind.h"

namespace qinghe {

class Statement;

/// Rows as they were read, packed: 16 bytes a cell and the texts behind each other. Values turn
/// into text or variants only when somebody asks.
class RowBuffer {
 public:
  RowBuffer() = default;
  explicit RowBuffer(std::vector<ColumnKind> kinds) : kinds_(std::move(kinds)) {}

  void clear();
  /// Takes the row that the statement stands on.
  void append(const Statement& statement);
  /// Takes a row that is gone.
  void appendMissing();
  void append(const RowBuffer& other, qsizetype row);

  qsizetype rowCount() const { return rows_; }
  int columnCount() const { return static_cast<int>(kinds_.size()); }
  ColumnKind kind(int column) const { return kinds_[static_cast<std::size_t>(column)]; }
  bool isMissing(qsizetype row) const;

  QVariant value(qsizetype row, int column) const;
  QString text(qsizetype row, int column) const;
  StoredValue stored(qsizetype row, int column) const;
  /// Adds the cell to a key that is equal for equal values: numbers by value, text without case.
  void appendKey(QByteArray& key, qsizetype row, int column) const;

 private:
  enum class Type : quint8 { Missing, Null, Whole, Number, Text };
  struct Cell {
    union {
      qint64 whole;
      double number;
      quint64 offset;
    };
    quint32 length;
    Type type;
  };
  const Cell& cell(qsizetype row, int column) const {
    return cells_[static_cast<std::size_t>(row) * kinds_.size() + static_cast<std::size_t>(column)];
  }
  QByteArrayView utf8(const Cell& cell) const {
    return {texts_.data() + cell.offset, static_cast<qsizetype>(cell.length)};
  }
  void appendText(const char* data, std::size_t length);

  std::vector<ColumnKind> kinds_;
  std::vector<Cell> cells_;
  std::string texts_;
  qsizetype rows_ = 0;
};

}  // namespace qinghe
