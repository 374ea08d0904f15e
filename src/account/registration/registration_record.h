#pragma once

#include <QList>
#include <QString>

namespace qinghe {

/// The arrays of text boxes that a company's record is shown in.
enum class RecordArray { TxtField0, TxtField1, TxtField3 };

/// A text box of the record with its caption; a star in it marks one that must be filled.
struct RecordBox {
  RecordArray array;
  int index;
  QString caption;
};

/// A value of the record as it travels, and the box that shows it.
struct RecordValue {
  QString name;  ///< of the column, or of the parameter
  RecordArray array;
  int index;
  bool isId = false;  ///< stands in the box's tag
};

/// All boxes, in their order.
const QList<RecordBox>& recordBoxes();

/// What a read asks for behind the row's id, in the order of the answer's cells.
const QList<RecordValue>& recordCells();

/// What a save sends, in order. The long texts follow by themselves.
const QList<RecordValue>& recordParameters();

/// The field list of a read: "id,user_no,...".
QString recordFieldList();

}  // namespace qinghe
