#include "AnswerPage.h"

#include <array>
#include <charconv>

#include "Refusal.h"
#include "column_value.h"
#include "text_codec.h"
#include "values/numbers.h"

namespace qinghe::portal_server {

namespace {

constexpr std::size_t largestPage = 32U << 20U;

constexpr std::string_view head =
    "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">"
    "<title>青禾云集</title></head><body>\n";

void appendNumber(std::string& out, std::int64_t number) {
  std::array<char, 24> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  out.append(digits.data(), end);
}

// The store may hold what did not come through a request, so brackets are looked at once more.
void appendText(std::string& out, std::string_view text) {
  const bool plain = text.find('<') == std::string_view::npos &&
                     text.find('>') == std::string_view::npos &&
                     text.find('\r') == std::string_view::npos;
  if (plain) {
    appendCodePage(out, text);
  } else {
    appendCodePage(out, storedText(text));
  }
}

}  // namespace

AnswerPage::AnswerPage() {
  page_.reserve(8 * 1024);
  static const std::string beginning =
      codePageFromUtf8(head).append("<table id=\"start_pos\" border=\"1\">\n");
  page_ += beginning;
}

void AnswerPage::beginRow() {
  if (page_.size() > largestPage) throw Refusal("answer is too large");
  page_ += "<tr>";
}

void AnswerPage::cell(const Column& column, const Cell& cell) {
  page_ += "<td>";
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) {
    if (column.type == Type::Flag) {
      page_ += *whole != 0 ? "True" : "False";
    } else {
      appendNumber(page_, *whole);
    }
  } else if (const auto* real = std::get_if<double>(&cell)) {
    page_ += textOf(*real).toStdString();
  } else if (column.type == Type::Date) {
    appendText(page_, printedDate(std::get<std::string_view>(cell)));
  } else {
    appendText(page_, std::get<std::string_view>(cell));
  }
  page_ += "</td>";
}

void AnswerPage::endRow() {
  page_ += "</tr>\n";
  ++rows_;
}

void AnswerPage::text(std::string_view text) {
  page_ += "<td>";
  appendText(page_, text);
  page_ += "</td>";
}

void AnswerPage::number(std::int64_t number) {
  page_ += "<td>";
  appendNumber(page_, number);
  page_ += "</td>";
}

PortalAnswer AnswerPage::finish() && {
  page_ += "</table>\n</body></html>\n";
  return {.body = std::move(page_)};
}

PortalAnswer numberAnswer(std::int64_t number) {
  AnswerPage page;
  page.beginRow();
  page.number(number);
  page.endRow();
  return std::move(page).finish();
}

PortalAnswer unmarkedAnswer(unsigned status, std::string note) {
  std::string page(head);
  page += "<p>请求没有完成。</p>\n</body></html>\n";
  return {.status = status, .body = codePageFromUtf8(page), .note = std::move(note)};
}

}  // namespace qinghe::portal_server
