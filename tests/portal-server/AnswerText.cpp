#include "AnswerText.h"

#include <array>
#include <cstdio>

#include "text_codec.h"

namespace {

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string undone(std::string text) {
  return replaced(replaced(replaced(std::move(text), "<br>", "\r\n"), "&lt;", "<"), "&gt;", ">");
}

}  // namespace

AnswerText AnswerText::read(std::string_view codePageBytes) {
  const std::string raw = qinghe::portal_server::utf8FromCodePage(codePageBytes);
  AnswerText answer;
  answer.page = undone(raw);
  std::size_t at = raw.find("start_pos");
  answer.marked = at != std::string::npos;
  const std::size_t end = raw.find("</table>", at);
  while (answer.marked && (at = raw.find("<tr", at)) < end) {
    auto& row = answer.rows.emplace_back();
    const std::size_t rowEnd = raw.find("</tr>", at);
    while ((at = raw.find("<td>", at)) < rowEnd) {
      const std::size_t cellEnd = raw.find("</td>", at);
      row.push_back(undone(raw.substr(at + 4, cellEnd - at - 4)));
      at = cellEnd;
    }
    at = rowEnd;
  }
  return answer;
}

std::string AnswerText::firstCell() const {
  return rows.empty() || rows.front().empty() ? std::string() : rows.front().front();
}

std::vector<std::string> AnswerText::column(std::size_t number) const {
  std::vector<std::string> cells;
  for (const auto& row : rows) cells.push_back(row.at(number));
  return cells;
}

std::string escaped(std::string_view utf8) {
  std::string text = replaced(replaced(std::string(utf8), "<", "&lt;"), ">", "&gt;");
  text = replaced(std::move(text), "\r\n", "<br>");
  std::string result;
  for (const char byte : qinghe::portal_server::codePageFromUtf8(text)) {
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "%%%X",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    result += escape.data();
  }
  return result;
}

std::string field(std::string_view name, std::string_view value) {
  return std::string(name) + "=" + escaped(value);
}
