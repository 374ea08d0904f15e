#include "tables.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "text_codec.h"

namespace qinghe::portal_server {

namespace {

using enum Type;

constexpr Column id{"id", Integer, Access::Server};
constexpr Column views{"diji", Integer, Access::Server};
constexpr Column live{"noth", Flag};

// One line a table or two: laid out by hand, because a tool gives each column a line of its own.
// clang-format off

std::vector<Table> referenceTables() {
  return {
    {.name = "SHEN", .storage = "shen", .family = Family::Both,
     .columns = {id, {"shen", Text}}, .structure = true},
    {.name = "AREA", .storage = "area", .family = Family::Both,
     .columns = {id, {"shen_id", Integer}, {"area", Text}}, .structure = true,
     .indexes = {"shen_id"}},
    {.name = "HAYE", .storage = "haye", .family = Family::Both,
     .columns = {id, {"haye", Text}}, .structure = true},
    {.name = "LEBI", .storage = "lebi", .family = Family::Both,
     .columns = {id, {"p_id", Integer}, {"haye_id", Integer}, {"lebi", Text}},
     .structure = true, .indexes = {"haye_id,p_id"}},
    {.name = "SHXI", .storage = "shxi", .family = Family::Both,
     .columns = {id, {"haye_id", Integer}, {"xuze", Integer}, {"shxi", Text}},
     .structure = true, .indexes = {"haye_id"}},
    {.name = "CYXX", .storage = "cyxx", .family = Family::Both,
     .columns = {id, {"haye_id", Integer}, {"qiye", Text}}, .structure = true,
     .indexes = {"haye_id"}},
    {.name = "HELP", .storage = "help", .family = Family::Both,
     .columns = {id, {"p_id", Integer}, {"help_no", Text}, {"help", LongText}},
     .structure = true, .indexes = {"p_id"}},
    // Under the login paths FUWU names the portal's own information services.
    {.name = "FUWU", .storage = "info_fuwu", .family = Family::Login,
     .columns = {id, {"fuwu", Text}, {"wazh", Text, Access::Open, true}, {"guji", Text},
                 {"wezh", Integer}, {"zidu", Integer}, live}},
    {.name = "ZIDU", .storage = "zidu", .family = Family::Both,
     .columns = {id, {"fuwu_id", Integer}, {"bimi", Text}, {"chdu", Integer}},
     .indexes = {"fuwu_id"}},
    {.name = "FUWU2", .storage = "info_fuwu2", .family = Family::Both,
     .columns = {id, {"fuwu", Text}, {"wezh", Integer}, {"zidu", Integer}, {"biao", Text}}},
    {.name = "ZIDU2", .storage = "zidu2", .family = Family::Both,
     .columns = {id, {"fuwu_id", Integer}, {"bimi", Text}, {"chdu", Integer}},
     .indexes = {"fuwu_id"}},
    {.name = "ZHIJ", .storage = "zhij", .family = Family::Both,
     .columns = {id, {"pinm", Text}, {"guge", Text}, {"jiag", Numeric}, {"danw", Text}},
     .structure = true},
  };
}

std::vector<Table> accountTables() {
  return {
    {.name = "QYXX", .storage = "qyxx", .family = Family::Both,
     .columns = {id, {"user_no", ExactText, Access::Server}, {"user_name", Text},
                 {"user_pass", ExactText, Access::Secret}, {"qiye", Text}, {"dizh", Text},
                 {"yobi", Text}, {"dihu", Text}, {"guji_id", Integer}, {"guji", Text},
                 {"shen_id", Integer}, {"shen", Text}, {"area_id", Integer}, {"area", Text},
                 {"haye_id", Integer}, {"haye", Text}, {"chzh", Text}, {"fuzh", Text},
                 {"lixi", Text}, {"shji", Text}, {"huji", Text}, {"zhye", Text},
                 {"email", Text}, {"khyh", Text}, {"yhzh", Text}, {"shha", Text},
                 {"jish", LongText}, {"yhly", LongText, Access::Secret},
                 {"ipurl", Text, Access::Server}, {"online", Flag, Access::Server},
                 {"user_level", Integer, Access::Hidden},
                 {"submit_mode", Integer, Access::Hidden}},
     .owner = "id", .indexes = {"user_no"}},
    // Which enterprise is logged in at which address; no request reaches it.
    {.name = "", .storage = "session",
     .columns = {id, {"address", ExactText, Access::Hidden}, {"qiye_id", Integer, Access::Hidden},
                 {"since", Date, Access::Hidden}, {"seen", Date, Access::Hidden}},
     .owner = "qiye_id", .indexes = {"address,qiye_id", "qiye_id,seen", "seen"}},
    // The pictures of enterprises and catalogue records, bytes as letters; pages alone show them.
    {.name = "", .storage = "picture",
     .columns = {id, {"kind", ExactText, Access::Hidden}, {"record_id", Integer, Access::Hidden},
                 {"owner_id", Integer, Access::Hidden}, {"type", ExactText, Access::Hidden},
                 {"large", ExactText, Access::Hidden}, {"small", ExactText, Access::Hidden}},
     .owner = "owner_id", .indexes = {"kind,record_id", "owner_id,kind"}},
  };
}

std::vector<Table> catalogueTables() {
  return {
    {.name = "XIMU", .storage = "ximu", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"lebi_id", Integer},
                 {"chye_id", Integer}, {"ximu_no", Text}, {"ximu", Text}, {"ximu_bh", Text},
                 {"gesh", Text}, {"lebi", Text}, {"chye", Text}, {"shxi", Text},
                 {"jigex", Text}, {"zhko", Text}, {"jish", LongText}, {"liuy", LongText},
                 views, live},
     .owner = "qiye_id", .rule = WriteRule::Importing,
     .indexes = {"qiye_id,noth,id", "lebi_id,noth,id", "chye_id,noth,id"}},
    {.name = "FUWU", .storage = "fuwu", .family = Family::Product,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"ximu_no", Text}, {"ximu", Text},
                 {"jigex", Text}, {"zhko", Text}, {"shxi", Text}, {"jish", LongText},
                 {"liuy", LongText}, views, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"qiye_id,noth,id"}},
    {.name = "MUMU", .storage = "mumu", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"shen_id", Integer},
                 {"area_id", Integer}, {"lebi_id", Integer}, {"ximu_no", Text}, {"ximu", Text},
                 {"gesh", Text}, {"shen", Text}, {"area", Text}, {"lebi", Text}, {"shxi", Text},
                 {"jigex", Text}, {"zhko", Text}, {"jish", LongText}, {"liuy", LongText},
                 views, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"qiye_id,noth,id"}},
    {.name = "TUPI", .storage = "tupi", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"ximu", Text}, {"zhko", Text},
                 {"jish", LongText}, {"liuy", LongText}, views, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"qiye_id,noth,id"}},
    {.name = "QUST", .storage = "qust", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"lebi_id", Integer}, {"qust_no", Text},
                 {"qust", Text}, {"answ", LongText}, views, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"qiye_id,noth,id"}},
  };
}

std::vector<Table> contentTables() {
  return {
    {.name = "xiwe", .storage = "xiwe", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"p_id", Integer},
                 {"docu_no", Text}, {"docu", LongText}, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"p_id"}},
    {.name = "docu", .storage = "docu", .family = Family::Both,
     .columns = {id, {"qiye_id", Integer}, {"qiye", Text}, {"p_id", Integer},
                 {"docu_no", Text}, {"docu", LongText}, live},
     .owner = "qiye_id", .rule = WriteRule::Owner, .indexes = {"p_id"}},
    {.name = "forum", .storage = "forum", .family = Family::Both,
     .columns = {id, {"border_id", Integer}, {"border_name", Text}, {"forum_name", Text}, live},
     .owner = "border_id", .rule = WriteRule::Owner, .indexes = {"border_id"}},
    // Posts are written on the portal's own pages and only read and deleted here.
    {.name = "publish", .storage = "publish", .family = Family::Both,
     .columns = {id, {"forum_id", Integer}, {"p_id", Integer}, {"user_id", Integer},
                 {"user_name", Text}, {"publish_time", Date}, {"return_num", Integer},
                 {"content", LongText}},
     .indexes = {"forum_id,p_id", "p_id"}},
    {.name = "xixi", .storage = "xixi", .family = Family::Product,
     .columns = {id, {"qyxx_id", Integer}, {"qyxx", Text}, {"user_id", Integer},
                 {"username", Text}, {"content", LongText}, {"dtime", Date}},
     .readers = {"qyxx_id"}, .indexes = {"qyxx_id", "dtime"}},
  };
}

std::vector<Table> orderTables() {
  return {
    {.name = "GOHU", .storage = "gohu", .family = Family::Product,
     .columns = {id, {"gohu_no", Text}, {"ghrq", Date}, {"gosh_id", Integer}, {"gosh", Text},
                 {"kehu_id", Integer}, {"kehu", Text}, {"feyo", Text, Access::Seller},
                 {"fhrq", Date, Access::Seller}, {"jhhs", Flag, Access::Buyer},
                 {"xshs", Flag, Access::Seller}, {"sh", Flag, Access::Buyer},
                 {"fh", Flag, Access::Seller}, {"fhfs", Text, Access::Seller},
                 {"shli", Numeric}, {"jine", Numeric}, {"zhko", Numeric}, {"ynsh", Numeric},
                 {"heji", Numeric}, {"sher", Numeric}},
     .rule = WriteRule::Order, .readers = {"gosh_id", "kehu_id"},
     .indexes = {"gosh_id,ghrq", "kehu_id,ghrq"}},
    {.name = "GOKU", .storage = "goku", .family = Family::Product,
     .columns = {id, {"gohu_id", Integer}, {"ximu_id", Integer}, {"ximu", Text},
                 {"ximu_bh", Text}, {"shli", Numeric}, {"jige", Numeric}, {"jine", Numeric},
                 {"zhko", Numeric}, {"ynsh", Numeric}, {"baxi", Numeric}, {"ling", Numeric},
                 {"bazh", Text}, {"gesh", Text}, {"ximu_no", Text}, {"lebi", Text}},
     .owner = "gohu_id", .rule = WriteRule::OrderLine, .parent = "gohu",
     .indexes = {"gohu_id"}},
    {.name = "DIHU", .storage = "dihu", .family = Family::Product,
     .columns = {id, {"dihu_no", Text}, {"dhrq", Date}, {"qyxx_id", Integer, Access::Server},
                 {"qyxx", Text, Access::Server}, {"yhxx_id", Integer, Access::Server},
                 {"yhxx", Text, Access::Server}, {"feyo", Text}, {"fhrq", Date}, {"hs", Flag},
                 {"fh", Flag}, {"fhfs", Text}, {"ximus", Text, Access::Server},
                 {"shlis", Text, Access::Server}, {"shli", Numeric}, {"jine", Numeric},
                 {"zhko", Numeric}, {"ynsh", Numeric}, {"heji", Numeric}, {"sher", Numeric}},
     .owner = "qyxx_id", .rule = WriteRule::Owner, .readers = {"qyxx_id"},
     .indexes = {"qyxx_id,dhrq"}},
    {.name = "vGSKH", .storage = "gohu", .family = Family::Product,
     .columns = {{"gosh_id", Integer}, {"gosh", Text}, {"kehu_id", Integer}, {"kehu", Text}},
     .readers = {"gosh_id", "kehu_id"}, .distinct = true},
    {.name = "vQYYH", .storage = "dihu", .family = Family::Product,
     .columns = {{"qyxx_id", Integer}, {"qyxx", Text}, {"yhxx_id", Integer}, {"yhxx", Text}},
     .readers = {"qyxx_id"}, .distinct = true},
  };
}

// clang-format on

std::vector<Table> buildTables() {
  std::vector<Table> tables;
  for (auto part :
       {referenceTables(), accountTables(), catalogueTables(), contentTables(), orderTables()}) {
    tables.insert(tables.end(), part.begin(), part.end());
  }
  return tables;
}

const std::vector<Table>& tables() {
  static const std::vector<Table> all = buildTables();
  return all;
}

}  // namespace

const Column* Table::column(std::string_view columnName) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
    return sameName(column.name, columnName);
  });
  return found == columns.end() ? nullptr : &*found;
}

const Column* Table::visibleColumn(std::string_view columnName) const {
  const Column* found = column(columnName);
  return found && found->access != Access::Hidden ? found : nullptr;
}

std::span<const Table> allTables() {
  return tables();
}

const Table* findTable(Family family, std::string_view name) {
  for (const Table& table : tables()) {
    const bool reached = (static_cast<unsigned>(table.family) & static_cast<unsigned>(family)) != 0;
    if (reached && sameName(table.name, name)) return &table;
  }
  return nullptr;
}

const Table& storedTable(std::string_view storage) {
  for (const Table& table : tables()) {
    if (table.storage == storage && !table.distinct) return table;
  }
  throw std::logic_error("no table is kept as " + std::string(storage));
}

}  // namespace qinghe::portal_server
