#include "store/ShapedSet.h"

#include <sqlite3.h>

#include "store/ColumnKind.h"
#include "store/ShapeLevel.h"
#include "store/StoreError.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// All rows of a level, or those that belong to one row above.
class LevelView : public ShapedSet {
 public:
  explicit LevelView(std::shared_ptr<const ShapeLevel> level,
                     std::shared_ptr<const ShapeLevel::Rows> rows = {})
      : level_(std::move(level)), rows_(std::move(rows)) {}

  QString name() const override { return level_->name(); }
  qint64 rowCount() const override {
    return rows_ ? static_cast<qint64>(rows_->size()) : level_->rows().rowCount();
  }
  QStringList columns() const override { return level_->columns().all(); }
  int columnIndex(const QString& name) const override { return level_->columns().indexOf(name); }
  QVariant value(qint64 row, int column) const override {
    return level_->rows().value(rowInLevel(row), inside(column));
  }
  QString text(qint64 row, int column) const override {
    return level_->rows().text(rowInLevel(row), inside(column));
  }

  QStringList childNames() const override {
    QStringList names;
    for (const ShapeLevel::Link& link : level_->links()) names.append(link.name);
    return names;
  }

  ShapedSetPtr child(qint64 row, const QString& name) const override {
    const ShapeLevel::Link* link = level_->link(name);
    if (!link) return nullptr;
    return std::make_shared<LevelView>(link->level, level_->related(*link, rowInLevel(row)));
  }

 private:
  qint64 rowInLevel(qint64 row) const {
    if (row < 0 || row >= rowCount()) throw StoreError(SQLITE_RANGE, u"没有当前记录"_s);
    return rows_ ? (*rows_)[static_cast<std::size_t>(row)] : row;
  }
  int inside(int column) const {
    if (column < 0 || column >= level_->rows().columnCount()) {
      throw StoreError(SQLITE_RANGE, u"没有列 %1"_s.arg(column));
    }
    return column;
  }

  std::shared_ptr<const ShapeLevel> level_;
  std::shared_ptr<const ShapeLevel::Rows> rows_;
};

}  // namespace

QString ShapedSet::text(qint64 row, int column) const {
  return textOf(value(row, column));
}

ShapedSetPtr ShapedSet::open(const std::shared_ptr<Connection>& connection,
                             const QString& command) {
  const ShapeCommand shape =
      isShapeCommand(command) ? parseShape(command) : ShapeCommand{command, {}, {}};
  return std::make_shared<LevelView>(std::make_shared<ShapeLevel>(connection, shape));
}

}  // namespace qinghe
