#include "store/CommandDialect.h"

#include <algorithm>

#include "store/CommandLexer.h"
#include "values/dates.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

bool isAnyWord(const Token& token, std::initializer_list<QStringView> words) {
  return std::ranges::any_of(words, [&](QStringView word) { return token.isWord(word); });
}

// What makes a row of the result something else than a row of the table.
bool leavesTheTable(const Token& token) {
  return isAnyWord(token,
                   {u"UNION", u"EXCEPT", u"INTERSECT", u"GROUP", u"HAVING", u"LIMIT", u"WINDOW"});
}

using Tokens = std::vector<Token>;

// Behind the table's name: an alias or nothing, then a clause or the end.
bool isOneTable(const Tokens& tokens, std::size_t at) {
  if (at < tokens.size() && tokens[at].isWord(u"AS")) ++at;
  const auto startsClause = [&] {
    return at == tokens.size() || isAnyWord(tokens[at], {u"WHERE", u"ORDER"});
  };
  if (startsClause()) return true;
  const TokenKind kind = tokens[at].kind;
  if (kind != TokenKind::Word && kind != TokenKind::Identifier) return false;
  ++at;
  return startsClause();
}

}  // namespace

QString withSortedDistinct(const QString& command, int columns) {
  Tokens tokens = significantTokensOf(command);
  while (!tokens.empty() && tokens.back().isSymbol(u';')) tokens.pop_back();
  if (tokens.size() < 2 || !tokens[0].isWord(u"SELECT") || !tokens[1].isWord(u"DISTINCT")) {
    return command;
  }
  int depth = 0;
  for (const Token& token : tokens) {
    if (token.isSymbol(u'(')) ++depth;
    if (token.isSymbol(u')')) --depth;
    // The engine sorts what it unites by itself.
    const bool hasItsOrder = leavesTheTable(token) || token.isWord(u"ORDER");
    if (depth == 0 && hasItsOrder) return command;
  }
  QStringList order;
  for (int column = 1; column <= columns; ++column) order.append(QString::number(column));
  const Token& last = tokens.back();
  return command.first(last.start + last.text.size()) + u" ORDER BY "_s + order.join(u',');
}

QString storedDate(const QDateTime& date) {
  return date.toString(u"yyyy-MM-dd HH:mm:ss");
}

QString toEngine(QStringView command) {
  QString engine;
  engine.reserve(command.size() + 32);
  for (const Token& token : tokensOf(command)) {
    if (token.kind == TokenKind::Date) {
      const QStringView inside = token.text.sliced(1, token.text.size() - 2);
      engine += u'\'' + storedDate(*readDate(inside)) + u'\'';
    } else if (token.isSymbol(u'&')) {
      engine += u"->>"_s;
    } else {
      engine += token.text;
    }
  }
  return engine;
}

std::optional<SingleTableCommand> singleTableCommand(QStringView command) {
  Tokens tokens = significantTokensOf(command);
  while (!tokens.empty() && tokens.back().isSymbol(u';')) tokens.pop_back();
  constexpr std::size_t tableAt = 3;
  if (tokens.size() <= tableAt) return std::nullopt;
  const bool isWhole =
      tokens[0].isWord(u"SELECT") && tokens[1].isSymbol(u'*') && tokens[2].isWord(u"FROM") &&
      (tokens[tableAt].kind == TokenKind::Word || tokens[tableAt].kind == TokenKind::Identifier);
  if (!isWhole || !isOneTable(tokens, tableAt + 1)) return std::nullopt;

  SingleTableCommand parts;
  int depth = 0;
  for (std::size_t i = tableAt + 1; i < tokens.size(); ++i) {
    if (tokens[i].isSymbol(u'(')) ++depth;
    if (tokens[i].isSymbol(u')')) --depth;
    if (depth > 0) continue;
    if (leavesTheTable(tokens[i])) return std::nullopt;
    if (tokens[i].isWord(u"ORDER")) parts.ordered = true;
  }
  const Token& last = tokens.back();
  const qsizetype start = tokens[tableAt].start;
  parts.table = unquoted(tokens[tableAt]);
  parts.tail = command.sliced(start, last.start + last.text.size() - start).toString();
  return parts;
}

}  // namespace qinghe
