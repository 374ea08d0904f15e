#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "ConditionTokens.h"
#include "Expression.h"

namespace qinghe::portal_server {

/// Reads a condition text into a tree over the columns of one table.
///
///     condition  = conjunction { "or" conjunction }
///     conjunction = term { "and" term }
///     term       = "(" condition ")" | predicate
///     predicate  = column ( "=" | "<>" | "<" | "<=" | ">" | ">=" ) literal
///                | column "like" 'pattern' | column "in" "(" [ literal { "," literal } ] ")"
///     literal    = number | 'text' | #date# | "true" | "false"
///
/// Words compare without case. "&lt;" and "&gt;" stand for the brackets, as the field encoder
/// writes them. A literal must fit its column's type. Depth and number of pieces are bounded.
class ConditionParser {
 public:
  explicit ConditionParser(const Table& table) : table_(table) {}

  /// The condition; an empty text holds always. Throws `Refusal` for everything else.
  Expression parse(std::string_view text);

 private:
  Expression disjunction(int depth);
  Expression conjunction(int depth);
  Expression term(int depth);
  Expression predicate();
  Expression like(const Column& column);
  Expression in(const Column& column);
  Value literal(const Column& column);
  bool acceptWord(std::string_view word);
  bool acceptSign(std::string_view sign);
  void expectSign(std::string_view sign);
  const Token& next();

  const Table& table_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  std::size_t predicates_ = 0;
};

/// An order text: "NOTH,ID", "GHRQ DESC". Throws `Refusal` when a column is unknown.
std::vector<OrderTerm> parseOrder(const Table& table, std::string_view text);

/// A field list: "id,ximu," with or without the trailing comma. Throws `Refusal` for an unknown
/// column, an empty name or an empty list.
std::vector<const Column*> parseFields(const Table& table, std::string_view text);

/// Which row a write means: `id` and, where the condition names it too, the row's owner.
struct RowKey {
  std::int64_t id = 0;
  std::optional<std::int64_t> owner;
};

/// Reads "id=25 and qiye_id=7". Throws `Refusal` for anything but whole numbers joined by "and".
RowKey parseRowKey(const Table& table, std::string_view text);

}  // namespace qinghe::portal_server
