#include "report_trade.h"

#include <sqlite3.h>

#include <QFile>
#include <stdexcept>
#include <string>

namespace {

constexpr int linesOfOrder = 10;
constexpr int suppliers = 10;
constexpr int goodsOfSupplier = 100;
constexpr int categories = 50;

/// The same numbers every time.
class Numbers {
 public:
  int below(int limit) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<int>((state_ >> 33) % static_cast<std::uint64_t>(limit));
  }

 private:
  std::uint64_t state_ = 7;
};

void bindText(sqlite3_stmt* statement, int index, const std::string& text) {
  sqlite3_bind_text(statement, index, text.c_str(), -1, SQLITE_TRANSIENT);
}

void run(sqlite3_stmt* statement) {
  if (sqlite3_step(statement) != SQLITE_DONE) throw std::runtime_error("not stored");
  sqlite3_reset(statement);
}

std::string dateOf(int order, int orders) {
  const int day = order * 720 / orders;
  char text[32];
  std::snprintf(text, sizeof text, "%d-%02d-%02d 00:00:00", 2024 + day / 360, day % 360 / 30 + 1,
                day % 28 + 1);
  return text;
}

}  // namespace

BareStore::BareStore(const QString& path) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  if (sqlite3_open_v2(path.toUtf8().constData(), &handle_, flags, nullptr) != SQLITE_OK) {
    throw std::runtime_error("cannot open");
  }
}

BareStore::~BareStore() {
  sqlite3_close(handle_);
}

void BareStore::exec(const char* sql) {
  if (sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle_));
  }
}

sqlite3_stmt* BareStore::prepare(const char* sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle_));
  }
  return statement;
}

void makeTrade(const QString& path, int lines) {
  QFile schema(QStringLiteral(QINGHE_SCHEMA));
  if (!schema.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read the schema");
  BareStore file(path);
  file.exec(schema.readAll().constData());
  file.exec("BEGIN");
  sqlite3_stmt* header = file.prepare(
      "INSERT INTO GOHU (id,R_ID,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu) "
      "VALUES (?1,?1,?2,?3,?4,?5,25,'青禾书店')");
  sqlite3_stmt* line = file.prepare(
      "INSERT INTO GOKU (R_ID,GOHU_ID,XIMU_ID,XIMU,XIMU_BH,XIMU_NO,LEBI,GESH,SHLI,JIGE,JINE,ZHKO,"
      "YNSH,BAXI,LING) VALUES (?1,?1,?2,?3,?4,?4,?5,'20',?6,?7,?6*?7,0.8,?6*?7*0.8,?6/20,?6%20)");
  Numbers numbers;
  const int orders = lines / linesOfOrder;
  for (int order = 1; order <= orders; ++order) {
    const int supplier = numbers.below(suppliers);
    const std::string number = std::to_string(order);
    sqlite3_bind_int(header, 1, order);
    bindText(header, 2, "G2024-" + number);
    bindText(header, 3, dateOf(order - 1, orders));
    sqlite3_bind_int(header, 4, 100 + supplier);
    bindText(header, 5, "图书发行有限公司" + std::to_string(supplier));
    run(header);
    const int first = numbers.below(goodsOfSupplier);
    for (int i = 0; i < linesOfOrder; ++i) {
      // Steps of seven never meet the same goods twice within an order.
      const int goods = supplier * goodsOfSupplier + (first + i * 7) % goodsOfSupplier;
      const std::string key = std::to_string(1000 + goods);
      sqlite3_bind_int(line, 1, order);
      sqlite3_bind_int(line, 2, 1000 + goods);
      bindText(line, 3, "中国文学史料选编第" + key + "辑");
      bindText(line, 4, "978-7-" + key);
      bindText(line, 5, "类别" + std::to_string(goods % categories));
      sqlite3_bind_int(line, 6,
                       numbers.below(20) == 0 ? -1 - numbers.below(5) : 1 + numbers.below(60));
      sqlite3_bind_double(line, 7, 10 + numbers.below(900) / 10.0);
      run(line);
    }
  }
  sqlite3_finalize(header);
  sqlite3_finalize(line);
  file.exec("COMMIT");
}
