#pragma once

#include <QString>
#include <chrono>
#include <memory>

#include "store/Recordset.h"
#include "store/ShapedSet.h"

namespace qinghe {

class Connection;
class StoreHost;

/// What all `GetData` objects share: the two connections, which live on when the last object is
/// gone, and the count of living objects.
struct StoreState {
  StoreHost* host = nullptr;
  std::shared_ptr<Connection> gConn;
  std::shared_ptr<Connection> gShapeConn;
  qint16 gDataUsers = 0;
  /// How long a command waits for another process to leave the file.
  std::chrono::milliseconds busyTimeout{5000};
};

/// The only door to the local database. Screens make one whenever they need one; the first of them
/// opens both connections.
class GetData {
 public:
  explicit GetData(StoreState& state);
  ~GetData();
  GetData(const GetData&) = delete;
  GetData& operator=(const GetData&) = delete;

  /// Each runs the command on its connection, keeps the set in its own field and returns it.
  /// They throw `StoreError`.
  ShapedSetPtr GetCmdXimu(const QString& command);
  ShapedSetPtr GetCmdGohu(const QString& command);
  ShapedSetPtr GetCmdGoku(const QString& command);
  RecordsetPtr GetXIMU(const QString& command);
  RecordsetPtr GetFUWU(const QString& command);
  RecordsetPtr GetXIXI(const QString& command);
  RecordsetPtr GetGOHU(const QString& command);
  RecordsetPtr GetGOKU(const QString& command);
  RecordsetPtr GetQYXX(const QString& command);
  RecordsetPtr GetCYXX(const QString& command);
  RecordsetPtr GetYHXX(const QString& command);
  RecordsetPtr GetDBGROUP(const QString& command);
  RecordsetPtr GetDBUSER(const QString& command);

  /// Runs a writing command in a transaction of its own; the number of rows changed.
  qint64 DBExec(const QString& command);

  /// The set of `GetDBUSER` for "User", nothing for any other name.
  RecordsetPtr dataMember(const QString& name) const;

  /// The path the user picks for `fileName`, kept in the setting `dbAddress`.
  QString FindDatabase(const QString& fileName);

 private:
  void OpenPlainConnection(const QString& fileName);
  void OpenShapeConnection(const QString& fileName);

  struct Private;
  std::unique_ptr<Private> d;
};

}  // namespace qinghe
