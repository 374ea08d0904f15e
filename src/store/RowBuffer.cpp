#include "store/RowBuffer.h"

#include <sqlite3.h>

#include "store/Statement.h"

namespace qinghe {

void RowBuffer::clear() {
  cells_.clear();
  texts_.clear();
  rows_ = 0;
}

void RowBuffer::append(const Statement& statement) {
  sqlite3_stmt* row = statement.get();
  const int columns = columnCount();
  for (int column = 0; column < columns; ++column) {
    Cell cell{{.whole = 0}, 0, Type::Null};
    switch (sqlite3_column_type(row, column)) {
      case SQLITE_NULL:
        break;
      case SQLITE_INTEGER:
        cell.whole = sqlite3_column_int64(row, column);
        cell.type = Type::Whole;
        break;
      case SQLITE_FLOAT:
        cell.number = sqlite3_column_double(row, column);
        cell.type = Type::Number;
        break;
      default: {
        const auto* data = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
        const int length = sqlite3_column_bytes(row, column);
        appendText(data, static_cast<std::size_t>(length));
        continue;
      }
    }
    cells_.push_back(cell);
  }
  ++rows_;
}

void RowBuffer::appendText(const char* data, std::size_t length) {
  cells_.push_back({{.offset = texts_.size()}, static_cast<quint32>(length), Type::Text});
  if (length > 0) texts_.append(data, length);
}

void RowBuffer::appendMissing() {
  cells_.insert(cells_.end(), kinds_.size(), Cell{{.whole = 0}, 0, Type::Missing});
  ++rows_;
}

void RowBuffer::append(const RowBuffer& other, qsizetype row) {
  for (int column = 0; column < other.columnCount(); ++column) {
    const Cell& source = other.cell(row, column);
    if (source.type == Type::Text) {
      const QByteArrayView text = other.utf8(source);
      appendText(text.data(), static_cast<std::size_t>(text.size()));
    } else {
      cells_.push_back(source);
    }
  }
  ++rows_;
}

bool RowBuffer::isMissing(qsizetype row) const {
  return !kinds_.empty() && cell(row, 0).type == Type::Missing;
}

StoredValue RowBuffer::stored(qsizetype row, int column) const {
  const Cell& source = cell(row, column);
  switch (source.type) {
    case Type::Whole:
      return source.whole;
    case Type::Number:
      return source.number;
    case Type::Text:
      return utf8(source).toByteArray();
    default:
      return std::monostate();
  }
}

QVariant RowBuffer::value(qsizetype row, int column) const {
  return fromStored(kind(column), stored(row, column));
}

QString RowBuffer::text(qsizetype row, int column) const {
  const Cell& source = cell(row, column);
  switch (source.type) {
    case Type::Whole:
      return textOfStored(kind(column), source.whole);
    case Type::Number:
      return textOfStored(source.number);
    case Type::Text:
      return textOfStored(kind(column), utf8(source));
    default:
      return {};
  }
}

void RowBuffer::appendKey(QByteArray& key, qsizetype row, int column) const {
  const Cell& source = cell(row, column);
  switch (source.type) {
    case Type::Whole:
    case Type::Number: {
      double number =
          source.type == Type::Whole ? static_cast<double>(source.whole) : source.number;
      if (number == 0) number = 0;  // one zero, whatever its sign
      key.append('n').append(reinterpret_cast<const char*>(&number), sizeof number);
      return;
    }
    case Type::Text: {
      // Folded as the engine folds when it tells groups apart, so that a row has just one group.
      const QByteArray folded = utf8(source).toByteArray().toLower();
      key.append('t').append(QByteArray::number(folded.size())).append(':').append(folded);
      return;
    }
    default:
      key.append('0');
  }
}

}  // namespace qinghe
