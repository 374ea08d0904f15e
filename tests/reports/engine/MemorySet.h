#pragma once

#include <QHash>
#include <QVariant>
#include <memory>
#include <vector>

#include "store/ShapedSet.h"

/// A level of data without a database: rows as they are given, children hung on each row.
class MemorySet : public qinghe::ShapedSet {
 public:
  MemorySet(QString name, QStringList columns)
      : name_(std::move(name)), columns_(std::move(columns)) {}

  MemorySet& add(const QVariantList& row) {
    rows_.push_back({row, {}});
    return *this;
  }
  /// Hangs a child on the row added last.
  void hang(const std::shared_ptr<MemorySet>& child) {
    rows_.back().children.insert(child->name().toLower(), child);
  }

  QString name() const override { return name_; }
  qint64 rowCount() const override { return static_cast<qint64>(rows_.size()); }
  QStringList columns() const override { return columns_; }
  int columnIndex(const QString& name) const override {
    for (int i = 0; i < columns_.size(); ++i) {
      if (columns_[i].compare(name, Qt::CaseInsensitive) == 0) return i;
    }
    return -1;
  }
  QVariant value(qint64 row, int column) const override {
    ++valuesRead;
    return rows_.at(static_cast<size_t>(row)).values.at(column);
  }
  QStringList childNames() const override { return {}; }
  std::shared_ptr<const qinghe::ShapedSet> child(qint64 row, const QString& name) const override {
    return rows_.at(static_cast<size_t>(row)).children.value(name.toLower());
  }

  mutable qint64 valuesRead = 0;

 private:
  struct Row {
    QVariantList values;
    QHash<QString, std::shared_ptr<MemorySet>> children;
  };
  QString name_;
  QStringList columns_;
  std::vector<Row> rows_;
};

inline std::shared_ptr<MemorySet> memorySet(const QString& name, const QStringList& columns,
                                            const QList<QVariantList>& rows = {}) {
  auto set = std::make_shared<MemorySet>(name, columns);
  for (const auto& row : rows) set->add(row);
  return set;
}
