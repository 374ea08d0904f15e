#include "ConditionParser.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "Refusal.h"
#include "column_value.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr int deepestBrackets = 32;
constexpr std::size_t mostPredicates = 200;
constexpr std::size_t mostListed = 4000;
constexpr std::size_t mostFields = 64;
constexpr std::size_t mostOrderTerms = 8;
constexpr auto mostWildcards = 6;
constexpr std::size_t longestPattern = 600;

constexpr std::array<const char*, 6> comparisons{"=", "<>", "<=", ">=", "<", ">"};

bool isTextual(Type type) {
  return type == Type::Text || type == Type::LongText || type == Type::ExactText;
}

bool isNumber(Type type) {
  return type == Type::Integer || type == Type::Numeric;
}

const Column& knownColumn(const Table& table, std::string_view name) {
  const Column* column = table.visibleColumn(name);
  if (!column) throw Refusal("unknown column");
  return *column;
}

Value numberValue(const std::string& text) {
  const char* end = text.data() + text.size();
  std::int64_t whole = 0;
  if (const auto read = std::from_chars(text.data(), end, whole);
      read.ec == std::errc() && read.ptr == end) {
    return whole;
  }
  double real = 0;
  if (const auto read = std::from_chars(text.data(), end, real);
      read.ec != std::errc() || read.ptr != end) {
    throw Refusal("broken number in a condition");
  }
  return real;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// The pieces between the commas; a comma at the end opens no further piece.
std::vector<std::string_view> listed(std::string_view text) {
  std::vector<std::string_view> pieces;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    pieces.push_back(trimmed(text.substr(0, comma)));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  return pieces;
}

}  // namespace

Expression ConditionParser::parse(std::string_view text) {
  tokens_ = conditionTokens(text);
  position_ = 0;
  predicates_ = 0;
  if (tokens_.size() == 1) return {};
  Expression whole = disjunction(0);
  if (tokens_[position_].kind != Token::Kind::End) throw Refusal("condition goes on");
  return whole;
}

Expression ConditionParser::disjunction(int depth) {
  std::vector<Expression> parts;
  do {
    parts.push_back(conjunction(depth));
  } while (acceptWord("or"));
  return Expression::anyOf(std::move(parts));
}

Expression ConditionParser::conjunction(int depth) {
  std::vector<Expression> parts;
  do {
    parts.push_back(term(depth));
  } while (acceptWord("and"));
  return Expression::allOf(std::move(parts));
}

Expression ConditionParser::term(int depth) {
  if (!acceptSign("(")) return predicate();
  if (depth >= deepestBrackets) throw Refusal("brackets are too deep");
  Expression inner = disjunction(depth + 1);
  expectSign(")");
  return inner;
}

Expression ConditionParser::predicate() {
  if (++predicates_ > mostPredicates) throw Refusal("condition has too many terms");
  const Token& name = next();
  if (name.kind != Token::Kind::Word) throw Refusal("condition without a column");
  const Column& column = knownColumn(table_, name.text);
  if (acceptWord("like")) return like(column);
  if (acceptWord("in")) return in(column);
  const Token& sign = next();
  const auto known = std::find_if(comparisons.begin(), comparisons.end(),
                                  [&](const char* each) { return sign.text == each; });
  if (sign.kind != Token::Kind::Sign || known == comparisons.end()) {
    throw Refusal("unknown operator");
  }
  return {.kind = Expression::Kind::Compare,
          .column = &column,
          .comparison = *known,
          .values = {literal(column)}};
}

Expression ConditionParser::like(const Column& column) {
  const Token& pattern = next();
  if (pattern.kind != Token::Kind::Text || !isTextual(column.type)) {
    throw Refusal("like needs text");
  }
  // Many wildcards make matching cost much more than the text's length.
  const auto wildcards = std::count(pattern.text.begin(), pattern.text.end(), '%');
  if (pattern.text.size() > longestPattern || wildcards > mostWildcards) {
    throw Refusal("pattern is too long");
  }
  return {.kind = Expression::Kind::Like, .column = &column, .values = {pattern.text}};
}

Expression ConditionParser::in(const Column& column) {
  Expression list{.kind = Expression::Kind::In, .column = &column};
  expectSign("(");
  if (acceptSign(")")) return list;
  do {
    if (list.values.size() >= mostListed) throw Refusal("list is too long");
    list.values.push_back(literal(column));
  } while (acceptSign(","));
  expectSign(")");
  return list;
}

Value ConditionParser::literal(const Column& column) {
  const Token& token = next();
  switch (token.kind) {
    case Token::Kind::Number:
      if (isNumber(column.type)) return numberValue(token.text);
      if (column.type == Type::Flag)
        return std::int64_t{numberValue(token.text) != Value{std::int64_t{0}}};
      break;
    case Token::Kind::Text:
      if (isTextual(column.type)) return token.text;
      [[fallthrough]];
    case Token::Kind::Date:
      if (column.type == Type::Date) {
        if (auto date = storedDate(token.text)) return std::move(*date);
      }
      break;
    case Token::Kind::Word:
      if (column.type == Type::Flag && sameName(token.text, "true")) return std::int64_t{1};
      if (column.type == Type::Flag && sameName(token.text, "false")) return std::int64_t{0};
      break;
    case Token::Kind::Sign:
    case Token::Kind::End:
      break;
  }
  throw Refusal("value does not fit its column");
}

bool ConditionParser::acceptWord(std::string_view word) {
  const Token& token = tokens_[position_];
  if (token.kind != Token::Kind::Word || !sameName(token.text, word)) return false;
  ++position_;
  return true;
}

bool ConditionParser::acceptSign(std::string_view sign) {
  const Token& token = tokens_[position_];
  if (token.kind != Token::Kind::Sign || token.text != sign) return false;
  ++position_;
  return true;
}

void ConditionParser::expectSign(std::string_view sign) {
  if (!acceptSign(sign)) throw Refusal("broken condition");
}

const Token& ConditionParser::next() {
  const Token& token = tokens_[position_];
  if (token.kind != Token::Kind::End) ++position_;
  return token;
}

std::vector<OrderTerm> parseOrder(const Table& table, std::string_view text) {
  std::vector<OrderTerm> order;
  for (const std::string_view piece : listed(text)) {
    const std::size_t blank = piece.find(' ');
    const std::string_view name = piece.substr(0, blank);
    const std::string_view direction =
        blank == std::string_view::npos ? std::string_view() : trimmed(piece.substr(blank));
    const bool descending = sameName(direction, "desc");
    if (!descending && !direction.empty() && !sameName(direction, "asc")) {
      throw Refusal("broken order");
    }
    if (order.size() >= mostOrderTerms) throw Refusal("order is too long");
    const Column& column = knownColumn(table, name);
    // Comparing them costs what they are long, and nobody reads a list in that order.
    if (column.type == Type::LongText) throw Refusal("order by a long text");
    order.push_back({&column, descending});
  }
  return order;
}

std::vector<const Column*> parseFields(const Table& table, std::string_view text) {
  std::vector<const Column*> fields;
  for (const std::string_view piece : listed(text)) {
    if (fields.size() >= mostFields) throw Refusal("too many fields");
    fields.push_back(&knownColumn(table, piece));
  }
  if (fields.empty()) throw Refusal("no fields");
  return fields;
}

RowKey parseRowKey(const Table& table, std::string_view text) {
  const Expression whole = ConditionParser(table).parse(text);
  std::vector<Expression> parts = whole.children;
  if (whole.kind != Expression::Kind::And) parts = {whole};
  RowKey key;
  bool named = false;
  for (const Expression& part : parts) {
    const bool equality = part.kind == Expression::Kind::Compare &&
                          std::string_view(part.comparison) == "=" &&
                          std::holds_alternative<std::int64_t>(part.values.front());
    if (!equality) throw Refusal("condition names no row");
    const auto value = std::get<std::int64_t>(part.values.front());
    if (part.column->name == "id") {
      key.id = value;
      named = true;
    } else if (part.column->name == table.owner) {
      key.owner = value;
    } else {
      throw Refusal("condition names no row");
    }
  }
  if (!named || key.id < 0) throw Refusal("condition names no row");
  return key;
}

}  // namespace qinghe::portal_server
