#pragma once

#include <string>

#include "PortalRequest.h"
#include "Store.h"

namespace qinghe::portal_server {

/// A page with one marked table, as the client's reader takes it apart.
///
/// Texts come out as they are kept; the only markup among them is "<br>". Throws `Refusal` when
/// the page grows beyond what a client would read.
class AnswerPage final : public RowSink {
 public:
  AnswerPage();

  void beginRow() override;
  void cell(const Column& column, const Cell& cell) override;
  void endRow() override;

  /// A cell of our own words or numbers.
  void text(std::string_view text);
  void number(std::int64_t number);
  int rows() const { return rows_; }

  PortalAnswer finish() &&;

 private:
  std::string page_;  // code page bytes
  int rows_ = 0;
};

/// One row with one number.
PortalAnswer numberAnswer(std::int64_t number);

/// A page without the marker.
PortalAnswer unmarkedAnswer(unsigned status, std::string note);

}  // namespace qinghe::portal_server
