#pragma once

#include <QString>
#include <QVariant>
#include <memory>

namespace qinghe {

class Connection;

/// A keyset over a query of the local store: the row ids are taken when it opens, the values are
/// read when they are needed. Changes are made only through it.
///
/// Every operation throws `StoreError` (or a `Failure` of a conversion) and leaves the set usable.
class Recordset {
 public:
  /// Runs one reading command; anything that writes, a second statement and an attach are refused.
  Recordset(std::shared_ptr<Connection> connection, const QString& command);
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  qint64 RecordCount() const;
  bool atEnd() const;  ///< EOF: behind the last record, or no record at all
  /// Every move drops what was set and not kept. At the end a move forward stays there.
  void MoveFirst();
  void MoveNext();
  /// Searches from the current record on (itself included) by "column=value", "column = value" with
  /// a number or a quoted text; at the end when nothing matches. Its cost does not grow with the
  /// rows where the column is the key.
  void Find(const QString& criterion);

  /// The current record's value by column name, without regard to case.
  QVariant value(const QString& field) const;
  /// The same as text: null as the empty text, booleans "True" and "False", dates and numbers as
  /// the values rules say.
  QString text(const QString& field) const;

  /// Begins a new record, which is then the current one; it is kept with `Update`.
  void AddNew();
  /// Sets a column of the current record; it is kept with `Update`. A text must be wholly of the
  /// column's kind (`TypeMismatch`, `Overflow`); an invalid value is a null. After a failure all
  /// that was set is dropped, a new record included.
  void setValue(const QString& field, const QVariant& value);
  /// Writes what was set, in one transaction. A record that somebody else changed since it was read
  /// is an error, never overwritten. After a failure what was set is dropped and the row is old.
  void Update();
  /// Drops what was set since the last `Update`, a new record included.
  void CancelUpdate();

 private:
  struct Private;
  std::unique_ptr<Private> d;
};

using RecordsetPtr = std::shared_ptr<Recordset>;

}  // namespace qinghe
