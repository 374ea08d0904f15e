#include "ConditionTokens.h"

#include <algorithm>
#include <array>

#include "Refusal.h"
#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t longestCondition = 64 * 1024;
constexpr std::size_t mostTokens = 8000;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The brackets come as entities from the field encoder, bare from anybody else; longer signs
// stand before their own beginnings.
constexpr std::array<std::pair<std::string_view, std::string_view>, 14> signs{{
    {"&lt;&gt;", "<>"},
    {"&lt;=", "<="},
    {"&gt;=", ">="},
    {"&lt;", "<"},
    {"&gt;", ">"},
    {"<>", "<>"},
    {"<=", "<="},
    {">=", ">="},
    {"<", "<"},
    {">", ">"},
    {"=", "="},
    {"(", "("},
    {")", ")"},
    {",", ","},
}};

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : rest_(text) {}

  std::vector<Token> run() {
    while (skipBlanks()) {
      if (tokens_.size() >= mostTokens) throw Refusal("condition has too many pieces");
      take();
    }
    tokens_.push_back({});
    return std::move(tokens_);
  }

 private:
  bool skipBlanks() {
    while (!rest_.empty() && isBlank(rest_.front())) rest_.remove_prefix(1);
    return !rest_.empty();
  }

  void take() {
    const char c = rest_.front();
    if (c == '\'') return quoted();
    if (c == '#') return date();
    if (isLetter(c)) return word();
    if (isDigit(c) || c == '-' || c == '.') return number();
    sign();
  }

  void quoted() {
    std::string text;
    std::size_t at = 1;
    for (;; ++at) {
      if (at >= rest_.size()) throw Refusal("open quote in a condition");
      if (rest_[at] == '\'') {
        if (at + 1 >= rest_.size() || rest_[at + 1] != '\'') break;
        ++at;
      }
      text.push_back(rest_[at]);
    }
    tokens_.push_back({Token::Kind::Text, storedText(text)});
    rest_.remove_prefix(at + 1);
  }

  void date() {
    const std::size_t end = rest_.find('#', 1);
    if (end == std::string_view::npos) throw Refusal("open date in a condition");
    tokens_.push_back({Token::Kind::Date, std::string(rest_.substr(1, end - 1))});
    rest_.remove_prefix(end + 1);
  }

  void word() {
    spanned(
        Token::Kind::Word, [](char c) { return isLetter(c) || isDigit(c); }, 0);
  }

  void number() {
    const std::size_t sign = rest_.front() == '-' ? 1 : 0;
    const bool digits = sign < rest_.size() && (isDigit(rest_[sign]) || rest_[sign] == '.');
    if (!digits) throw Refusal("stray sign in a condition");
    spanned(
        Token::Kind::Number, [](char c) { return isDigit(c) || c == '.'; }, sign);
    const std::string& text = tokens_.back().text;
    const bool plain = std::count(text.begin(), text.end(), '.') <= 1 && text.size() <= 20 &&
                       std::any_of(text.begin(), text.end(), isDigit);
    if (!plain || (!rest_.empty() && isLetter(rest_.front()))) {
      throw Refusal("broken number in a condition");
    }
  }

  template <typename Belongs>
  void spanned(Token::Kind kind, Belongs belongs, std::size_t from) {
    std::size_t end = from;
    while (end < rest_.size() && belongs(rest_[end])) ++end;
    tokens_.push_back({kind, std::string(rest_.substr(0, end))});
    rest_.remove_prefix(end);
  }

  void sign() {
    for (const auto& [written, meant] : signs) {
      if (!rest_.starts_with(written)) continue;
      tokens_.push_back({Token::Kind::Sign, std::string(meant)});
      rest_.remove_prefix(written.size());
      return;
    }
    throw Refusal("unknown character in a condition");
  }

  std::string_view rest_;
  std::vector<Token> tokens_;
};

}  // namespace

std::vector<Token> conditionTokens(std::string_view text) {
  if (text.size() > longestCondition) throw Refusal("condition is too long");
  return Tokenizer(text).run();
}

}  // namespace qinghe::portal_server
