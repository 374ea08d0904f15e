#pragma once

#include <string>
#include <string_view>
#include <vector>

/// An answer page taken apart as a client does it: marker, rows, cells.
struct AnswerText {
  bool marked = false;
  std::vector<std::vector<std::string>> rows;
  std::string page;  ///< the whole page as UTF-8, entities undone

  static AnswerText read(std::string_view codePageBytes);
  /// The first cell of the first row; empty when there is none.
  std::string firstCell() const;
  /// One column of all rows.
  std::vector<std::string> column(std::size_t number) const;
};

/// A value as the client writes it into a request: every byte of the code page escaped, without
/// leading zero, brackets and line ends as entities before.
std::string escaped(std::string_view utf8);

/// "name=value", the value escaped.
std::string field(std::string_view name, std::string_view value);
