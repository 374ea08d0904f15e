#include "store/CommandLexer.h"

#include <QString>
#include <algorithm>

#include "values/dates.h"

namespace qinghe {

namespace {

// Longer than any date that can be written between the signs.
constexpr qsizetype maxDateLength = 40;

bool startsWord(QChar c) {
  return c.isLetter() || c == u'_' || c.unicode() >= 0x80;
}

bool continuesWord(QChar c) {
  return startsWord(c) || c.isDigit() || c == u'$';
}

bool isBlank(QChar c) {
  return c == u' ' || (c >= u'\t' && c <= u'\r');
}

class Lexer {
 public:
  explicit Lexer(QStringView command) : command_(command) {}

  std::vector<Token> run() {
    std::vector<Token> tokens;
    while (at_ < command_.size()) tokens.push_back(next());
    return tokens;
  }

 private:
  Token next() {
    const QChar first = command_[at_];
    if (isBlank(first)) return takeWhile(TokenKind::Blank, isBlank);
    if (first == u'\'') return takeQuoted(TokenKind::Text, u'\'');
    if (first == u'"' || first == u'`') return takeQuoted(TokenKind::Identifier, first);
    if (first == u'[') return takeQuoted(TokenKind::Identifier, u']');
    if (first == u'#') return takeDate();
    if (startsText(u"--")) return takeUntil(u"\n");
    if (startsText(u"/*")) return takeUntil(u"*/");
    if (first.isDigit()) {
      return takeWhile(TokenKind::Number, [](QChar c) { return c == u'.' || continuesWord(c); });
    }
    if (startsWord(first)) return takeWhile(TokenKind::Word, continuesWord);
    return take(TokenKind::Symbol, 1);
  }

  bool startsText(QStringView text) const { return command_.sliced(at_).startsWith(text); }

  Token take(TokenKind kind, qsizetype length) {
    const Token token{kind, at_, command_.sliced(at_, length)};
    at_ += length;
    return token;
  }

  template <typename Predicate>
  Token takeWhile(TokenKind kind, Predicate belongs) {
    const QStringView rest = command_.sliced(at_);
    return take(kind, std::find_if_not(rest.begin(), rest.end(), belongs) - rest.begin());
  }

  Token takeUntil(QStringView end) {
    const qsizetype found = command_.indexOf(end, at_ + 2);
    const qsizetype stop = found < 0 ? command_.size() : found + end.size();
    return take(TokenKind::Comment, stop - at_);
  }

  Token takeQuoted(TokenKind kind, QChar close) {
    qsizetype end = at_ + 1;
    while (true) {
      end = command_.indexOf(close, end);
      if (end < 0) return take(TokenKind::Broken, command_.size() - at_);
      ++end;
      const bool doubled = close != u']' && end < command_.size() && command_[end] == close;
      if (!doubled) return take(kind, end - at_);
      ++end;
    }
  }

  Token takeDate() {
    const QStringView rest =
        command_.sliced(at_ + 1).first(std::min(maxDateLength, command_.size() - at_ - 1));
    const qsizetype close = rest.indexOf(u'#');
    if (close < 0 || !readDate(rest.first(close))) return take(TokenKind::Symbol, 1);
    return take(TokenKind::Date, close + 2);
  }

  QStringView command_;
  qsizetype at_ = 0;
};

}  // namespace

std::vector<Token> tokensOf(QStringView command) {
  return Lexer(command).run();
}

std::vector<Token> significantTokensOf(QStringView command) {
  std::vector<Token> tokens = tokensOf(command);
  std::erase_if(tokens, [](const Token& token) { return token.isSpace(); });
  return tokens;
}

QString unquoted(const Token& token) {
  if (token.kind != TokenKind::Text && token.kind != TokenKind::Identifier) {
    return token.text.toString();
  }
  const QChar close = token.text.back();
  QString content = token.text.sliced(1, token.text.size() - 2).toString();
  if (close != u']') content.replace(QString(2, close), QString(close));
  return content;
}

}  // namespace qinghe
