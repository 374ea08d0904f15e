#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <memory>
#include <vector>

#include "forms/ListView.h"

namespace qinghe {

/// The rows behind a `ListView`. Items keep their address as long as they are in the list.
///
/// Telling a view of each single row would cost most of the time of a long fill. So rows beyond the
/// first few hundred are announced in growing batches, and the rest when the view is looked at or
/// the event loop comes round; until then `rowCount` does not count them.
class ListModel : public QAbstractItemModel {
  Q_OBJECT

 public:
  explicit ListModel(QObject* parent);

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  bool hasChildren(const QModelIndex& parent = {}) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override;

  void addColumn(const QString& title);
  void clearColumns();
  void setCheckBoxes(bool on);
  bool hasCheckBoxes() const { return checkBoxes_; }

  ListItem* add(const QString& key, const QString& text, const QString& icon);
  void remove(ListItem* item);
  void clear();
  int count() const { return static_cast<int>(rows_.size()); }
  ListItem* at(int row) const;
  /// Announces the rows that the view does not know yet.
  void announce();
  void noteChange(const ListItem* item, int column);

 private:
  QVariant icon(const QString& key) const;
  ListItem* freeItem();

  QStringList titles_;
  std::vector<std::unique_ptr<ListItem[]>> blocks_;  ///< where the items live
  int unused_ = 0;                                   ///< items of the last block never taken yet
  int lastBlock_ = 0;                                ///< items in the last block
  std::vector<ListItem*> free_;                      ///< taken once and given back
  std::vector<ListItem*> rows_;
  int announced_ = 0;
  bool announcing_ = false;  ///< on its way through the event loop
  bool checkBoxes_ = false;
  mutable QHash<QString, QIcon> icons_;
};

}  // namespace qinghe
