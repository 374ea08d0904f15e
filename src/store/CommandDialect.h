#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace qinghe {

/// The command as the engine speaks it: `#M/d/yyyy#` becomes a text of the stored form, `&` the
/// joining operator that `Connection` gives a meaning to. Everything else passes unchanged, quoted
/// texts and names above all. (`year`, `month`, `true`, `false` and `iif` need no turning: the
/// engine has them or is taught them as functions.)
QString toEngine(QStringView command);

/// A SELECT DISTINCT without an order of its own, put into the order of its columns from left to
/// right: its values come sorted, texts as texts, and not as they happen to be found. Any other
/// command unchanged. `columns` is how many the command has.
QString withSortedDistinct(const QString& command, int columns);

/// A date as it is stored: "2024-03-09 00:00:00".
QString storedDate(const QDateTime& date);

/// The parts of a command of the form "SELECT * FROM table [alias] [WHERE ...] [ORDER BY ...]".
struct SingleTableCommand {
  QString table;  ///< without quotes
  QString tail;   ///< from the table on, as it was written
  bool ordered = false;
};

/// The parts, or nothing when the command is of another form, so that its rows are not those of
/// one table.
std::optional<SingleTableCommand> singleTableCommand(QStringView command);

}  // namespace qinghe
