#pragma once

#include "PortalTest.h"

inline constexpr const char* add = "_vti_add.asp";

/// Writes to the portal's tables, as the client's screens send them.
class WritePages : public PortalTest {
 protected:
  // Refused: no marker, a reason for the log, and not one row more or less.
  void expectRefused(const char* table, const Fields& fields, const char* address = bookshop,
                     const char* page = add) {
    const auto rows = rowCount(table);
    const AnswerText answer = ask(page, fields, address);
    EXPECT_FALSE(answer.marked) << query(page, fields);
    EXPECT_NE(answer_.note, "");
    EXPECT_EQ(rowCount(table), rows);
  }
};
