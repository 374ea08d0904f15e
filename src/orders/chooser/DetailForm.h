#pragma once

#include <QList>
#include <QPushButton>
#include <QString>

#include "forms/Form.h"
#include "forms/ListView.h"

class QVBoxLayout;

namespace qinghe {

class GetHtml;

/// Where the detail screens differ.
struct DetailKind {
  QString form, caption;
  int nameWidth;  ///< of the first column, in the form's unit
  QStringView path;
  QString table, fields;
  QList<QString> names;  ///< of the fixed rows, in the order of the fields
};

/// A small screen to be looked at: a list of names and contents, filled on load from one row of the
/// portal. Opened modally, and unloaded by its button.
class DetailForm : public Form {
  Q_OBJECT

 public:
  ListView* ListView1;
  QPushButton* commandT;  ///< closes it

 protected:
  explicit DetailForm(const DetailKind& kind);

  void onLoad() override;

  /// The id of the record to be shown.
  virtual qint32 recordId() const = 0;
  /// Reads the cells behind those of the fixed rows.
  virtual void takeRest(GetHtml& /*html*/) {}

  static const QString& rowIcon();
  int fixedRows() const { return static_cast<int>(kind_.names.size()); }
  /// For what stands between the list and the button.
  QVBoxLayout& belowList() { return *belowList_; }

 private:
  void addFixedRows();
  bool readRecord();

  DetailKind kind_;
  QVBoxLayout* belowList_;
};

}  // namespace qinghe
