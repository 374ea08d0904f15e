#include "store/ShapeParser.h"

#include <sqlite3.h>

#include <algorithm>

#include "store/CommandLexer.h"
#include "store/StoreError.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

class Parser {
 public:
  explicit Parser(QStringView command) : command_(command), tokens_(significantTokensOf(command)) {}

  ShapeCommand run() {
    ShapeCommand shape = source(0);
    while (isSymbol(u';')) ++at_;
    if (at_ < tokens_.size()) fail(u"命令之后多余的文字"_s);
    return shape;
  }

 private:
  // A query, a query with children, or one of these in brackets.
  ShapeCommand source(int depth) {
    if (depth > maxShapeDepth) fail(u"层次太深"_s);
    if (isSymbol(u'(')) return bracketed(depth);
    const bool isShape = takeWord(u"SHAPE");
    ShapeCommand shape;
    shape.sql = query();
    shape.name = alias();
    if (!isShape || !takeWord(u"APPEND")) return shape;
    shape.children.push_back(child(depth + 1));
    while (takeSymbol(u',')) shape.children.push_back(child(depth + 1));
    return shape;
  }

  ShapeCommand bracketed(int depth) {
    expect(u'(');
    ShapeCommand shape = source(depth + 1);
    expect(u')');
    const QString name = alias();
    if (!name.isEmpty()) shape.name = name;
    return shape;
  }

  ShapeCommand::Child child(int depth) {
    ShapeCommand::Child child;
    expect(u'(');
    child.command = source(depth);
    if (takeWord(u"RELATE")) {
      do {
        child.relations.push_back(relation());
      } while (takeSymbol(u','));
    }
    expect(u')');
    child.name = alias();
    if (child.name.isEmpty()) child.name = child.command.name;
    return child;
  }

  ShapeCommand::Relation relation() {
    ShapeCommand::Relation relation;
    relation.parentColumn = name();
    if (!takeWord(u"TO")) fail(u"缺少 TO"_s);
    relation.childColumn = name();
    return relation;
  }

  // The text between the braces as it stands; a brace inside a quoted text is none.
  QString query() {
    expect(u'{');
    const qsizetype start = at_ > 0 ? tokens_[at_ - 1].start + 1 : 0;
    while (at_ < tokens_.size() && !isSymbol(u'}')) ++at_;
    if (at_ == tokens_.size()) fail(u"缺少 }"_s);
    const qsizetype end = tokens_[at_++].start;
    return command_.sliced(start, end - start).toString();
  }

  QString alias() {
    if (takeWord(u"AS")) return name();
    return isName() ? name() : QString();
  }

  QString name() {
    if (!isName()) fail(u"缺少名称"_s);
    return unquoted(tokens_[at_++]);
  }

  bool isName() const {
    if (at_ == tokens_.size()) return false;
    const Token& token = tokens_[at_];
    if (token.kind == TokenKind::Text || token.kind == TokenKind::Identifier) return true;
    const auto isReserved = [&](QStringView word) { return token.isWord(word); };
    constexpr QStringView reserved[] = {u"SHAPE", u"AS", u"APPEND", u"RELATE", u"TO"};
    return token.kind == TokenKind::Word && std::ranges::none_of(reserved, isReserved);
  }

  bool isSymbol(QChar symbol) const {
    return at_ < tokens_.size() && tokens_[at_].isSymbol(symbol);
  }

  bool takeSymbol(QChar symbol) {
    if (!isSymbol(symbol)) return false;
    ++at_;
    return true;
  }

  bool takeWord(QStringView word) {
    if (at_ == tokens_.size() || !tokens_[at_].isWord(word)) return false;
    ++at_;
    return true;
  }

  void expect(QChar symbol) {
    if (!takeSymbol(symbol)) fail(u"缺少 "_s + symbol);
  }

  [[noreturn]] void fail(const QString& what) const {
    constexpr qsizetype shown = 40;
    const QStringView rest = at_ < tokens_.size() ? command_.sliced(tokens_[at_].start) : u"";
    throw StoreError(SQLITE_ERROR, u"SHAPE 命令错误: %1, 位于 \"%2\""_s.arg(
                                       what, rest.first(std::min(shown, rest.size()))));
  }

  QStringView command_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
};

}  // namespace

bool isShapeCommand(QStringView command) {
  const std::vector<Token> tokens = significantTokensOf(command);
  return !tokens.empty() && tokens.front().isWord(u"SHAPE");
}

ShapeCommand parseShape(QStringView command) {
  return Parser(command).run();
}

}  // namespace qinghe
