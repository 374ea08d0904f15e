#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "Expression.h"

namespace qinghe::portal_server {

/// What a posted text means for a column, or nothing when it is no value of the column's type or
/// too long for it. An empty text is 0, off, or no date.
std::optional<Value> columnValue(const Column& column, std::string_view text);

/// A date as it is kept, "2024-03-09 00:00:00", or nothing.
std::optional<std::string> storedDate(std::string_view text);

/// A kept date as it is printed: "2024-3-9", with " 8:05:00" behind it when there is a time.
std::string printedDate(std::string_view stored);

/// The server's own time, as it is kept.
std::string storedNow();
/// A moment in the server's own time, as it is kept.
std::string storedLocal(std::chrono::system_clock::time_point moment);
/// A moment apart from any time zone, for what only the server compares.
std::string storedUtc(std::chrono::system_clock::time_point moment);
/// The server's own day, as it is kept.
std::string storedToday();

}  // namespace qinghe::portal_server
