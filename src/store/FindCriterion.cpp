#include "store/FindCriterion.h"

#include <sqlite3.h>

#include <cmath>

#include "store/CommandLexer.h"
#include "store/RowBuffer.h"
#include "store/StoreError.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuse(const QString& text) {
  throw StoreError(SQLITE_ERROR, u"查找条件错误 (%1)"_s.arg(text));
}

}  // namespace

FindCriterion::FindCriterion(const QString& text) {
  const std::vector<Token> tokens = significantTokensOf(text);
  const bool isComparison =
      tokens.size() >= 3 && tokens[1].isSymbol(u'=') &&
      (tokens[0].kind == TokenKind::Word || tokens[0].kind == TokenKind::Identifier);
  if (!isComparison) refuse(text);
  column_ = unquoted(tokens[0]);
  const bool isQuoted = tokens.size() == 3 && tokens[2].kind == TokenKind::Text;
  text_ = isQuoted ? unquoted(tokens[2]) : text.sliced(tokens[2].start).trimmed();
  if (IsNumeric(text_)) {
    number_ = toDouble(text_);
  } else if (!isQuoted && tokens.size() == 3 && tokens[2].kind == TokenKind::Word &&
             (tokens[2].isWord(u"True") || tokens[2].isWord(u"False"))) {
    number_ = tokens[2].isWord(u"True") ? 1 : 0;
  } else if (!isQuoted) {
    refuse(text);
  }
}

std::optional<qint64> FindCriterion::key() const {
  constexpr double beyond = 9223372036854775808.0;
  if (!number_ || std::trunc(*number_) != *number_ || std::abs(*number_) >= beyond) return {};
  return static_cast<qint64>(*number_);
}

bool FindCriterion::matches(const RowBuffer& rows, qsizetype row, int column) const {
  const StoredValue value = rows.stored(row, column);
  if (std::holds_alternative<std::monostate>(value)) return false;
  if (number_) {
    if (const auto* whole = std::get_if<qint64>(&value)) {
      return static_cast<double>(*whole) == *number_;
    }
    if (const auto* number = std::get_if<double>(&value)) return *number == *number_;
  }
  return rows.text(row, column).compare(text_, Qt::CaseInsensitive) == 0;
}

}  // namespace qinghe
