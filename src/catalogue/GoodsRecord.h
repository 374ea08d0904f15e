#pragma once

#include <QList>
#include <QString>

#include "store/GetData.h"

namespace qinghe {

/// Where a saved value comes from.
enum class ValueFrom {
  OwnerId,  ///< the company: its local id in a local row, its portal id in a request
  OwnerName,
  TagNumber,  ///< the leading number of a field's tag
  Trimmed,    ///< a field's text without the blanks around it
  Typed,      ///< a field's text as it was typed
  Checked,    ///< the selected row's check mark
};

/// How a value goes into a request.
enum class Sent {
  Encoded,
  Raw,  ///< as it stands, so that a mark such as "&" in it cuts the request
};

struct SavedValue {
  QString name;
  ValueFrom from;
  int field = -1;  ///< index of `txtFields` where it comes from one
  Sent sent = Sent::Encoded;
};

struct LoadedColumn {
  int field;
  QString column;
  QString tagColumn = {};  ///< goes into the field's tag, before its text
};

/// A kind of record that is kept in a local table and sent to the portal from there.
struct LocalRecordKind {
  QString localTable;
  RecordsetPtr (GetData::*openSet)(const QString& command);
  QString portalTable;
  QString portalColumnCount;       ///< `structn`
  QList<LoadedColumn> loaded;      ///< in the order they are shown
  QList<SavedValue> localColumns;  ///< in the order they are written
  QList<SavedValue> portalFields;  ///< in the order they are sent
  int nameField;                   ///< gives the list row its text
  int introField;                  ///< the long text that follows in a post of its own
};

/// Goods, table `XIMU`.
const LocalRecordKind& localGoods();
/// Services, table `FUWU`, in the columns of the goods. The attribute text is shown, and neither
/// written nor sent.
const LocalRecordKind& localServices();

}  // namespace qinghe
