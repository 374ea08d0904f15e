#pragma once

#include <QStringView>
#include <vector>

namespace qinghe {

enum class TokenKind {
  Blank,
  Word,
  Number,
  Text,        ///< '...', a doubled quote inside stands for one
  Identifier,  ///< "...", [...] or `...`
  Date,        ///< #...# around a readable date
  Comment,
  Symbol,  ///< one character
  Broken,  ///< a quote that nothing closes, to the end of the command
};

/// A piece of a command, quotes included.
struct Token {
  TokenKind kind;
  qsizetype start;
  QStringView text;

  bool isWord(QStringView word) const {
    return kind == TokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
  }
  bool isSymbol(QChar symbol) const { return kind == TokenKind::Symbol && text.front() == symbol; }
  bool isSpace() const { return kind == TokenKind::Blank || kind == TokenKind::Comment; }
};

/// The whole command in pieces; put together they are the command again.
std::vector<Token> tokensOf(QStringView command);

/// The same without blanks and comments.
std::vector<Token> significantTokensOf(QStringView command);

/// The content of a quoted token, with doubled quotes undone; any other token as it stands.
QString unquoted(const Token& token);

}  // namespace qinghe
