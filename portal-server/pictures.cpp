#include "pictures.h"

#include <QByteArray>
#include <algorithm>
#include <array>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

constexpr std::array<std::string_view, 5> kinds{"qyxx", "ximu", "fuwu", "mumu", "tupi"};

const Table& pictureTable() {
  static const Table& table = storedTable("picture");
  return table;
}

Expression of(std::string_view kind, std::int64_t id) {
  return Expression::allOf({Expression::equal(pictureTable(), "kind", std::string(kind)),
                            Expression::equal(pictureTable(), "record_id", id)});
}

// A column of the store holds text, so the bytes stand in it as letters.
std::string lettersOf(const std::string& bytes) {
  return QByteArray::fromStdString(bytes).toBase64().toStdString();
}

}  // namespace

std::optional<PictureSubject> findSubject(StoreReader& store, std::string_view kind,
                                          std::string_view id) {
  const std::string name = lowered(kind);
  const long long number = wholeNumber(id);
  if (number <= 0 || std::find(kinds.begin(), kinds.end(), name) == kinds.end()) return {};
  const Table& table = storedTable(name);
  const auto row = store.byId(table, number);
  if (!row) return {};
  return PictureSubject{.kind = name,
                        .id = number,
                        .owner = row->integer(table.owner),
                        .name = row->text(name == "qyxx" ? "qiye" : "ximu")};
}

std::optional<PictureFile> loadPicture(StoreReader& store, const PictureSubject& subject,
                                       PictureSize size) {
  const char* column = size == PictureSize::Large ? "large" : "small";
  const auto rows =
      store.records({.table = &pictureTable(),
                     .fields = {pictureTable().column("type"), pictureTable().column(column)},
                     .condition = of(subject.kind, subject.id),
                     .limit = 1});
  if (rows.empty()) return {};
  const auto bytes = QByteArray::fromBase64(QByteArray::fromStdString(rows[0].text(column)));
  return PictureFile{rows[0].text("type"), bytes.toStdString()};
}

bool hasPicture(StoreReader& store, std::string_view kind, std::int64_t id) {
  return store.count(pictureTable(), of(kind, id)) > 0;
}

void keepPicture(StoreWriter& store, const PictureSubject& subject,
                 const std::optional<PictureCopies>& copies) {
  const Table& table = pictureTable();
  store.remove(table, of(subject.kind, subject.id));
  if (!copies) return;
  store.insert(table,
               {assign(table, "kind", subject.kind), assign(table, "record_id", subject.id),
                assign(table, "owner_id", subject.owner), assign(table, "type", copies->type),
                assign(table, "large", lettersOf(copies->large)),
                assign(table, "small", lettersOf(copies->small))});
}

std::vector<std::int64_t> picturedRecords(StoreReader& store, std::string_view kind,
                                          std::int64_t owner) {
  const Table& table = pictureTable();
  std::vector<std::int64_t> ids;
  for (const Record& row :
       store.records({.table = &table,
       .fields = {table.column("record_id")},
       .condition = Expression::allOf({Expression::equal(table, "kind", std::string(kind)),
                                       Expression::equal(table, "owner_id", owner)})})) {
    ids.push_back(row.integer("record_id"));
  }
  return ids;
}

std::string pictureAddress(std::string_view kind, std::int64_t id, PictureSize size) {
  std::string address("/_vti_product/_vti_image_file.asp?stable=");
  address.append(kind).append("&id=").append(std::to_string(id));
  return address.append(size == PictureSize::Small ? "&size=small" : "");
}

}  // namespace qinghe::portal_server
