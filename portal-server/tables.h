#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace qinghe::portal_server {

/// How a column's values are read, kept, compared and printed.
enum class Type : std::uint8_t {
  Integer,    ///< whole number
  Numeric,    ///< number, or the text that a user typed where a number was expected
  Text,       ///< compares without case
  LongText,   ///< as Text, with a higher limit of length
  ExactText,  ///< compares with case
  Flag,       ///< prints "True" or "False", never null
  Date,       ///< prints "2024-3-9", with the time behind it when there is one
};

/// Who may put a value into a column, given that the row may be written at all.
enum class Access : std::uint8_t {
  Open,    ///< whoever may write the row
  Buyer,   ///< the buyer's half of an order
  Seller,  ///< the seller's half of an order
  Server,  ///< the server alone
  Secret,  ///< written as Open, but read by the row's own enterprise alone
  Hidden,  ///< no request reads or writes it
};

struct Column {
  std::string_view name;
  Type type;
  Access access = Access::Open;
  /// Names a web page; a path of this portal is told with the host that the client asked for, as
  /// the portal does not know by which name and port it is reached.
  bool pageLink = false;
};

/// The two families of paths that tables are reached under.
enum class Family : std::uint8_t { None = 0, Login = 1, Product = 2, Both = 3 };

/// Whose rows the add page may make and change.
enum class WriteRule : std::uint8_t {
  None,
  Owner,      ///< the enterprise in the owner column
  Importing,  ///< as Owner; an id that the enterprise does not have makes a new row of its own
  Order,      ///< either party, each its half
  OrderLine,  ///< either party of the order that the line belongs to
};

/// One row of the table of tables: everything that the pages know about a table.
struct Table {
  std::string_view name;     ///< as requests spell it, compared without case
  std::string_view storage;  ///< the table that it is kept in
  Family family = Family::None;
  std::vector<Column> columns;
  std::string_view owner = {};  ///< column with the enterprise (for lines: the order) it belongs to
  WriteRule rule = WriteRule::None;
  std::vector<std::string_view> readers = {};  ///< columns of which one must be the reader
  std::string_view parent = {};                ///< storage whose readers may read these rows
  bool distinct = false;                       ///< a view: equal rows are told once
  bool structure = false;                      ///< may be read whole by the structure page
  std::vector<std::string_view> indexes = {};

  /// The column of that name, compared without case, or null.
  const Column* column(std::string_view columnName) const;
  /// The column of that name if a request may name it, or null.
  const Column* visibleColumn(std::string_view columnName) const;
  bool hasId() const { return !columns.empty() && columns.front().name == "id"; }
};

/// All tables, those that no request reaches included.
std::span<const Table> allTables();

/// The table that a request means, or null.
const Table* findTable(Family family, std::string_view name);

/// A table by where it is kept; it must exist.
const Table& storedTable(std::string_view storage);

}  // namespace qinghe::portal_server
