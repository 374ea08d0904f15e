#include "store/GetData.h"

#include <QDir>
#include <functional>

#include "store/ConnectionPrivate.h"
#include "store/StoreHost.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

const QString databaseName = u"DATA.MDB"_s;

void openConnection(StoreState& state, std::shared_ptr<Connection>& connection, QString path,
                    const std::function<QString()>& find) {
  connection.reset();
  while (true) {
    try {
      connection = std::make_shared<Connection>(path, state.busyTimeout);
      return;
    } catch (const StoreError& error) {
      if (error.number() != StoreError::cannotOpen) {
        state.host->showMessage(textOf(error.number()) + u": "_s + error.description());
        return;
      }
    }
    state.host->removeDatabaseSetting();
    path = find();
  }
}

}  // namespace

struct GetData::Private {
  explicit Private(StoreState& shared) : state(shared) {}

  StoreState& state;
  ShapedSetPtr cmdXimu, cmdGohu, cmdGoku;
  RecordsetPtr ximu, fuwu, xixi, gohu, goku, qyxx, cyxx, yhxx, dbGroup, dbUser;

  const ShapedSetPtr& shape(ShapedSetPtr& field, const QString& command) const {
    return field = ShapedSet::open(state.gShapeConn, command);
  }
  const RecordsetPtr& open(RecordsetPtr& field, const QString& command) const {
    return field = std::make_shared<Recordset>(state.gConn, command);
  }
};

GetData::GetData(StoreState& state) : d(std::make_unique<Private>(state)) {
  try {
    if (state.gDataUsers == 0) {
      OpenPlainConnection(databaseName);
      OpenShapeConnection(databaseName);
    }
  } catch (const Failure& failure) {
    state.host->endProgram(u"服务器启动错误"_s,
                           failure.description() + u" - "_s + textOf(failure.number()));
  }
  ++state.gDataUsers;
}

GetData::~GetData() {
  --d->state.gDataUsers;
}

ShapedSetPtr GetData::GetCmdXimu(const QString& command) {
  return d->shape(d->cmdXimu, command);
}
ShapedSetPtr GetData::GetCmdGohu(const QString& command) {
  return d->shape(d->cmdGohu, command);
}
ShapedSetPtr GetData::GetCmdGoku(const QString& command) {
  return d->shape(d->cmdGoku, command);
}
RecordsetPtr GetData::GetXIMU(const QString& command) {
  return d->open(d->ximu, command);
}
RecordsetPtr GetData::GetFUWU(const QString& command) {
  return d->open(d->fuwu, command);
}
RecordsetPtr GetData::GetXIXI(const QString& command) {
  return d->open(d->xixi, command);
}
RecordsetPtr GetData::GetGOHU(const QString& command) {
  return d->open(d->gohu, command);
}
RecordsetPtr GetData::GetGOKU(const QString& command) {
  return d->open(d->goku, command);
}
RecordsetPtr GetData::GetQYXX(const QString& command) {
  return d->open(d->qyxx, command);
}
RecordsetPtr GetData::GetCYXX(const QString& command) {
  return d->open(d->cyxx, command);
}
RecordsetPtr GetData::GetYHXX(const QString& command) {
  return d->open(d->yhxx, command);
}
RecordsetPtr GetData::GetDBGROUP(const QString& command) {
  return d->open(d->dbGroup, command);
}
RecordsetPtr GetData::GetDBUSER(const QString& command) {
  return d->open(d->dbUser, command);
}

qint64 GetData::DBExec(const QString& command) {
  Connection::Private& store = opened(d->state.gConn);
  StoreTransaction transaction(store, u"BEGIN IMMEDIATE"_s);
  Statement statement = store.command(command, Access::Change);
  statement.run();
  const qint64 changed = store.database->getChanges();
  transaction.commit();
  return changed;
}

RecordsetPtr GetData::dataMember(const QString& name) const {
  return name == u"User" ? d->dbUser : nullptr;
}

void GetData::OpenPlainConnection(const QString& fileName) {
  openConnection(d->state, d->state.gConn,
                 QDir(d->state.host->programDirectory()).filePath(fileName),
                 [&] { return FindDatabase(fileName); });
}

void GetData::OpenShapeConnection(const QString& fileName) {
  openConnection(d->state, d->state.gShapeConn,
                 QDir(d->state.host->programDirectory()).filePath(fileName),
                 [&] { return FindDatabase(fileName); });
}

QString GetData::FindDatabase(const QString& fileName) {
  StoreHost& host = *d->state.host;
  const QString known = host.databaseSetting();
  if (!known.isEmpty()) return known;
  while (true) {
    const QString path = Trim(host.askForFile(fileName));
    if (path.endsWith(fileName, Qt::CaseInsensitive)) {
      host.showMessage(path);
      host.setDatabaseSetting(path);
      return path;
    }
    host.showMessage(u"不存在与 DATA.MDB 符合的文件名"_s);
  }
}

}  // namespace qinghe
