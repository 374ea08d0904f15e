#include "store/Recordset.h"

#include <sqlite3.h>

#include "store/ConnectionPrivate.h"
#include "store/FindCriterion.h"
#include "store/RowSource.h"
#include "store/RowWriter.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// What the caller last read of a row; an update is held against it.
struct SeenRow {
  qint64 key = 0;
  RowBuffer row;
};

}  // namespace

struct Recordset::Private {
  Private(std::shared_ptr<Connection> open, const QString& command) : source(open, command) {
    if (source.table()) writer.emplace(std::move(open), *source.table());
  }

  RowSource source;
  std::optional<RowWriter> writer;
  qint64 position = 0;
  qint64 lastRead = -1;  // the position whose values were last handed out from the current page
  std::optional<SeenRow> seen;
  bool adding = false;
  RowWriter::Values changes;

  bool atEnd() const { return !adding && position >= source.size(); }
  const TableInfo& table() const;
  void requireRecord() const;
  RowSource::Place current();
  void beginChange();
  void leavePage();
  void dropChanges();
  void move(qint64 to);
  void findByKey(const FindCriterion& criterion);
  void scan(const FindCriterion& criterion, int column);
  void see(qint64 at);
  void insert();
  void update();
  [[noreturn]] void failConflict();
};

const TableInfo& Recordset::Private::table() const {
  if (!source.table()) throw StoreError(SQLITE_READONLY, u"此记录集只能读取"_s);
  return *source.table();
}

void Recordset::Private::requireRecord() const {
  if (atEnd()) throw StoreError(SQLITE_NOTFOUND, u"没有当前记录"_s);
}

RowSource::Place Recordset::Private::current() {
  const RowSource::Place place = source.at(position);
  if (place.rows.isMissing(place.row)) {
    throw StoreError(SQLITE_NOTFOUND, u"记录已被删除"_s);
  }
  return place;
}

void Recordset::Private::see(qint64 at) {
  const RowSource::Place place = source.at(at);
  seen = SeenRow{source.keys().at(at), RowBuffer(source.kinds())};
  seen->row.append(place.rows, place.row);
}

// A change starts from the values that the caller saw, also when the set has moved about since, or
// else from those of this moment.
void Recordset::Private::beginChange() {
  if (adding || !changes.empty()) return;
  const bool isSeen = seen && seen->key == source.keys().at(position);
  if (isSeen && lastRead != position) return;
  current();
  see(position);
}

void Recordset::Private::leavePage() {
  if (source.table() && lastRead >= 0 && source.holds(lastRead)) see(lastRead);
  lastRead = -1;
  source.forget();
}

void Recordset::Private::dropChanges() {
  changes.clear();
  adding = false;
}

void Recordset::Private::move(qint64 to) {
  dropChanges();
  position = std::min(to, source.size());
}

void Recordset::Private::findByKey(const FindCriterion& criterion) {
  const std::optional<qint64> key = criterion.key();
  const auto found = key ? source.keys().positionOf(*key) : std::nullopt;
  position = found && *found >= position ? *found : source.size();
}

void Recordset::Private::scan(const FindCriterion& criterion, int column) {
  for (; position < source.size(); ++position) {
    const RowSource::Place place = source.at(position);
    if (!place.rows.isMissing(place.row) && criterion.matches(place.rows, place.row, column)) {
      return;
    }
  }
}

void Recordset::Private::insert() {
  RowBuffer row = writer->insert(changes);
  const auto key = std::get<qint64>(row.stored(0, table().keyColumn));
  source.keys().append(key);
  position = source.size() - 1;
  seen = SeenRow{key, std::move(row)};
}

void Recordset::Private::update() {
  auto row = writer->update(seen->key, changes, seen->row);
  if (!row) failConflict();
  seen->row = std::move(*row);
}

void Recordset::Private::failConflict() {
  source.forget();
  current();
  throw StoreError(SQLITE_CONSTRAINT, u"记录已被他人修改"_s);
}

Recordset::Recordset(std::shared_ptr<Connection> connection, const QString& command)
    : d(std::make_unique<Private>(std::move(connection), command)) {}

Recordset::~Recordset() = default;

qint64 Recordset::RecordCount() const {
  return d->source.size();
}

bool Recordset::atEnd() const {
  return d->atEnd();
}

void Recordset::MoveFirst() {
  d->move(0);
  d->leavePage();
}

void Recordset::MoveNext() {
  d->move(d->position + 1);
}

void Recordset::Find(const QString& criterion) {
  const FindCriterion wanted(criterion);
  const int column = d->source.columns().require(wanted.column());
  d->dropChanges();
  d->leavePage();
  if (d->source.table() && column == d->source.table()->keyColumn) {
    d->findByKey(wanted);
  } else {
    d->scan(wanted, column);
  }
}

QVariant Recordset::value(const QString& field) const {
  const int column = d->source.columns().require(field);
  d->requireRecord();
  if (const auto change = d->changes.find(column); change != d->changes.end()) {
    return fromStored(d->source.kinds()[static_cast<std::size_t>(column)], change->second);
  }
  if (d->adding) return {};
  const RowSource::Place place = d->current();
  d->lastRead = d->position;
  return place.rows.value(place.row, column);
}

QString Recordset::text(const QString& field) const {
  const int column = d->source.columns().require(field);
  d->requireRecord();
  if (const auto change = d->changes.find(column); change != d->changes.end()) {
    return textOfStored(d->source.kinds()[static_cast<std::size_t>(column)], change->second);
  }
  if (d->adding) return {};
  const RowSource::Place place = d->current();
  d->lastRead = d->position;
  return place.rows.text(place.row, column);
}

void Recordset::AddNew() {
  d->table();
  d->dropChanges();
  d->adding = true;
}

void Recordset::setValue(const QString& field, const QVariant& value) {
  try {
    const TableInfo& table = d->table();
    const int column = d->source.columns().require(field);
    d->requireRecord();
    if (column == table.keyColumn) throw StoreError(SQLITE_READONLY, u"不能修改列 "_s + field);
    StoredValue stored = toStored(d->source.kinds()[static_cast<std::size_t>(column)], value);
    d->beginChange();
    d->changes[column] = std::move(stored);
  } catch (...) {
    // Half of a record must not go out with the next update.
    d->dropChanges();
    throw;
  }
}

void Recordset::Update() {
  if (!d->adding && d->changes.empty()) return;
  try {
    if (d->adding) {
      d->insert();
    } else {
      d->update();
    }
  } catch (...) {
    d->dropChanges();
    d->lastRead = -1;
    d->seen.reset();
    d->source.forget();
    throw;
  }
  d->dropChanges();
  d->lastRead = -1;
  d->source.forget();
}

void Recordset::CancelUpdate() {
  d->dropChanges();
}

}  // namespace qinghe
