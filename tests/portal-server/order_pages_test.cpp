#include "WritePages.h"

class OrderPages : public WritePages {
 protected:
  static constexpr const char* buyer = "10.0.0.2";

  OrderPages() { login("1002", "123456", buyer); }

  // As the buyer's screen sends a new order.
  std::string newOrder() {
    return ask(add,
               {{"stable", "gohu"},
                {"structn", "36"},
                {"stother", "id=0"},
                {"GOSH_ID", "1"},
                {"GOSH", "青禾书店"},
                {"KEHU_ID", "2"},
                {"KEHU", "明溪书屋"},
                {"GOHU_NO", "G20261121-1"},
                {"GHRQ", "2026-11-21"},
                {"JHHS", "0"},
                {"SH", "0"},
                {"SHLI", "25"},
                {"JINE", "312.5"},
                {"ZHKO", "62.5"},
                {"YNSH", "250"},
                {"HEJI", "250"},
                {"SHER", "32.5"}},
               buyer)
        .firstCell();
  }
};

TEST_F(OrderPages, BothPartiesWriteEachItsHalfOfOneRow) {
  const auto before = rowCount("gohu");
  const std::string id = newOrder();
  ASSERT_EQ(id, std::to_string(before + 1));
  const auto row = std::stoll(id);
  const std::string key = "id=" + id;
  EXPECT_EQ(stored("gohu", row, "fhrq"), "2026-11-21 00:00:00");
  EXPECT_EQ(stored("gohu", row, "heji"), "250");
  EXPECT_EQ(ask(add, {{"stable", "gohu"},     {"structn", "36"},
                      {"stother", key},       {"GOSH_ID", "1"},
                      {"GOSH", "青禾书店"},   {"KEHU_ID", "2"},
                      {"KEHU", "明溪书屋"},   {"GOHU_NO", "G20261121-1"},
                      {"GHRQ", "2026-11-21"}, {"FHRQ", "2026-11-24"},
                      {"XSHS", "1"},          {"FH", "1"},
                      {"FHFS", "快件"},       {"SHLI", "25"},
                      {"JINE", "312.5"},      {"ZHKO", "62.5"},
                      {"YNSH", "250"},        {"FEYO", "12元"},
                      {"HEJI", "262"},        {"SHER", "34.06"}})
                .firstCell(),
            id);
  EXPECT_EQ(ask(add, {{"stable", "gohu"}, {"stother", key}, {"JHHS", "1"}}, buyer).firstCell(), id);
  EXPECT_EQ(stored("gohu", row, "jhhs"), "1");
  EXPECT_EQ(stored("gohu", row, "xshs"), "1");
  EXPECT_EQ(stored("gohu", row, "fh"), "1");
  EXPECT_EQ(stored("gohu", row, "sh"), "0");
  EXPECT_EQ(stored("gohu", row, "feyo"), "12元");
  EXPECT_EQ(stored("gohu", row, "fhfs"), "快件");
  EXPECT_EQ(stored("gohu", row, "fhrq"), "2026-11-24 00:00:00");
}

TEST_F(OrderPages, TheOtherHalfAndForeignOrdersAreRefused) {
  const std::string key = "id=" + newOrder();
  for (const char* field : {"JHHS", "SH"}) {
    expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {field, "1"}}, bookshop);
  }
  for (const char* field : {"XSHS", "FH", "FHFS", "FEYO"}) {
    expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {field, "1"}}, buyer);
  }
  login("1003", "demo1003", "10.0.0.3");
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {"GOHU_NO", "x"}}, "10.0.0.3");
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {"KEHU_ID", "3"}}, "10.0.0.3");
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {"GOSH_ID", "3"}}, buyer);
  expectRefused(
      "gohu", {{"stable", "gohu"}, {"stother", "id="}, {"GOSH_ID", "1"}, {"KEHU_ID", "2"}}, buyer);
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", "id=9999"}, {"JHHS", "1"}}, buyer);
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", "id=0"}, {"GOHU_NO", "x"}}, buyer);
  expectRefused(
      "gohu", {{"stable", "gohu"}, {"stother", "id=0"}, {"GOSH_ID", "1"}, {"KEHU_ID", "3"}}, buyer);
  expectRefused("gohu", {{"stable", "gohu"}, {"stother", key}, {"GHRQ", "no date"}}, buyer);
}

TEST_F(OrderPages, ALineBelongsToItsOrderAndIsWrittenByItsParties) {
  const std::string order = newOrder();
  const std::string fresh = "id=0 and gohu_id=" + order;
  const auto line = [&](const std::string& key, const std::string& header, const char* address) {
    return ask(add,
               {{"stable", "goku"},
                {"structn", "17"},
                {"stother", key},
                {"GOHU_ID", header},
                {"XIMU", "砖石的语言"},
                {"XIMU_BH", "A0001"},
                {"SHLI", "-7"},
                {"JIGE", "12.5"},
                {"JINE", "-87.5"},
                {"ZHKO", "0.8"},
                {"YNSH", "-70"},
                {"BAXI", "-2"},
                {"LING", "-1"},
                {"XIMU_ID", "1"},
                {"BAZH", "九折"},
                {"GESH", "3"},
                {"XIMU_NO", "x"},
                {"LEBI", ""}},
               address);
  };
  const auto before = rowCount("goku");
  const std::string id = line(fresh, order, buyer).firstCell();
  EXPECT_EQ(id, std::to_string(before + 1));
  const std::string again = "id=" + id + " and gohu_id=" + order;
  EXPECT_EQ(line(again, order, bookshop).firstCell(), id);
  EXPECT_EQ(stored("goku", before + 1, "shli"), "-7");
  const auto lines = rowCount("goku");
  login("1003", "demo1003", "10.0.0.3");
  EXPECT_FALSE(line(again, order, "10.0.0.3").marked);
  EXPECT_FALSE(line(fresh, order, "10.0.0.3").marked);
  EXPECT_FALSE(line(fresh, order, stranger).marked);
  EXPECT_FALSE(line("id=0", order, buyer).marked);
  EXPECT_FALSE(line("id=1 and gohu_id=" + order, order, buyer).marked);
  EXPECT_FALSE(line("id=9999 and gohu_id=" + order, order, buyer).marked);
  EXPECT_FALSE(line(fresh, "1", buyer).marked);
  EXPECT_FALSE(line("id=0 and gohu_id=9999", "9999", buyer).marked);
  EXPECT_EQ(rowCount("goku"), lines);
}

TEST_F(OrderPages, ARetailOrderIsWorkedOnByItsSellerAlone) {
  const AnswerText own = ask("_vti_detail_field_s.asp",
                             {{"STABLE", "DIHU"}, {"STRDATA", "id,"}, {"STOTHER", "qyxx_id=1"}});
  const std::string id = own.firstCell();
  const std::string key = "id=" + id;
  const std::int64_t row = std::stoll(id);
  const std::string goods = stored("dihu", row, "ximus");
  EXPECT_EQ(ask(add, {{"stable", "dihu"},
                      {"structn", "36"},
                      {"stother", key},
                      {"DIHU_NO", "D1"},
                      {"DHRQ", "2026-11-1"},
                      {"FHRQ", "2026-11-3"},
                      {"HS", "1"},
                      {"FH", "1"},
                      {"FHFS", "快件"},
                      {"SHLI", "3"},
                      {"JINE", "9.5"},
                      {"ZHKO", "0"},
                      {"YNSH", "9.5"},
                      {"FEYO", "5"},
                      {"HEJI", "14.5"},
                      {"SHER", "1.885"}})
                .firstCell(),
            id);
  EXPECT_EQ(stored("dihu", row, "hs"), "1");
  EXPECT_EQ(stored("dihu", row, "ximus"), goods);
  expectRefused("dihu", {{"stable", "dihu"}, {"stother", key}, {"HS", "0"}}, buyer);
  expectRefused("dihu", {{"stable", "dihu"}, {"stother", key}, {"XIMUS", "1"}});
  expectRefused("dihu", {{"stable", "dihu"}, {"stother", "id=0"}, {"DIHU_NO", "x"}});
}
