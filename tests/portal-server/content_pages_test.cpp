#include <map>

#include "PortalTest.h"

using namespace qinghe::portal_server;

/// Forums, posts, news and documents as their screens ask for them.
class ContentPages : public PortalTest {
 protected:
  static constexpr const char* add = "_vti_add.asp";
  static constexpr const char* list = "_vti_detail_field_s.asp";

  using Rows = std::vector<std::vector<std::string>>;

  AnswerText item(const char* table, const std::string& key, const std::string& parent,
                  const char* address = bookshop) {
    return ask(add,
               {{"stable", table},
                {"stother", key},
                {"QIYE_ID", "1"},
                {"QIYE", "青禾书店"},
                {"P_ID", parent},
                {"DOCU_NO", "新名"},
                {"NOTH", "False"}},
               address);
  }
  AnswerText remove(const std::string& id, const char* address = bookshop) {
    return ask("_vti_delete.asp", {{"stable", "publish"}, {"stother", "id=" + id}}, address);
  }
  Rows posts(const std::string& condition, const char* fields) {
    return ask(list, {{"STABLE", "publish"},
                      {"STRDATA", fields},
                      {"STOTHER", condition},
                      {"STORDER", "ID"}})
        .rows;
  }
};

TEST_F(ContentPages, EveryPostOfTheDemoCountsItsRepliesAndStandsInItsParentsForum) {
  const Rows all = posts("id>0", "id,p_id,forum_id,return_num,");
  ASSERT_GE(all.size(), 30U);
  std::map<std::string, int> replies;
  std::map<std::string, std::string> forums;
  for (const auto& row : all) {
    ++replies[row[1]];
    forums[row[0]] = row[2];
  }
  for (const auto& row : all) {
    EXPECT_EQ(row[3], std::to_string(replies[row[0]])) << "post " << row[0];
    if (row[1] != "0") {
      EXPECT_EQ(forums[row[1]], row[2]) << "post " << row[0];
    }
  }
}

TEST_F(ContentPages, AThreadIsDeletedFromItsLeavesUpAndCountsAlong) {
  EXPECT_EQ(remove("9").firstCell(), "1");
  EXPECT_EQ(remove("20").firstCell(), "1");
  EXPECT_EQ(stored("publish", 20, "return_num"), "1");
  EXPECT_EQ(remove("21").firstCell(), "0");
  EXPECT_EQ(stored("publish", 20, "return_num"), "0");
  EXPECT_EQ(remove("20").firstCell(), "0");
  EXPECT_EQ(stored("publish", 9, "return_num"), "0");
  EXPECT_EQ(remove("9").firstCell(), "0");
  EXPECT_EQ(stored("publish", 9, "id"), "no row");
  EXPECT_FALSE(remove("9").marked) << "it is gone";
}

TEST_F(ContentPages, ACountThatWasWrongIsRightAgainBehindADeletion) {
  store_->transact([](StoreWriter& store) {
    const Table& table = storedTable("publish");
    store.update(table, 16, {assign(table, "return_num", std::int64_t{7})});
  });
  EXPECT_EQ(remove("19").firstCell(), "0");
  EXPECT_EQ(stored("publish", 16, "return_num"), "1");
}

TEST_F(ContentPages, DeletionsTravelThroughTheRelayToo) {
  EXPECT_EQ(relayed("_vti_delete.asp", {{"stable", "publish"}, {"stother", "id=21"}}).firstCell(),
            "0");
  EXPECT_EQ(stored("publish", 21, "id"), "no row");
}

TEST_F(ContentPages, PostsInForumsOfAllAndOfOthersStay) {
  // A leaf each: in a forum of all, in another company's, and asked for by somebody unknown.
  EXPECT_FALSE(remove("12").marked);
  EXPECT_FALSE(remove("14").marked);
  EXPECT_FALSE(remove("21", stranger).marked);
  for (const int id : {12, 14, 21}) EXPECT_EQ(stored("publish", id, "id"), std::to_string(id));
}

TEST_F(ContentPages, TheOwnerOfAForumDeletesInItAndNobodyElse) {
  constexpr const char* schoolbooks = "10.0.0.5";
  login("1005", "demo1005", schoolbooks);
  EXPECT_FALSE(remove("21", schoolbooks).marked);
  EXPECT_EQ(remove("14", schoolbooks).firstCell(), "0");
  EXPECT_EQ(stored("publish", 13, "return_num"), "0");
}

TEST_F(ContentPages, AForumIsRenamedByItsCompanyAndNeverDeleted) {
  const Fields rename{{"stable", "forum"},         {"stother", "id=3"},      {"BORDER_ID", "1"},
                      {"BORDER_NAME", "青禾书店"}, {"FORUM_NAME", "读书会"}, {"NOTH", "False"}};
  EXPECT_EQ(ask(add, rename).firstCell(), "3");
  EXPECT_EQ(stored("forum", 3, "forum_name"), "读书会");
  EXPECT_EQ(stored("forum", 3, "noth"), "0");
  EXPECT_FALSE(ask(add, rename, stranger).marked);
  EXPECT_FALSE(ask("_vti_delete.asp", {{"stable", "forum"}, {"stother", "id=3"}}).marked);
  EXPECT_EQ(stored("forum", 3, "id"), "3");
}

TEST_F(ContentPages, AnItemStandsBelowAnOwnOneOneOfAllOrNone) {
  for (const char* table : {"xiwe", "docu"}) {
    for (const char* parent : {"0", "1", "4", "5"}) {
      EXPECT_TRUE(item(table, "id=0", parent).marked) << table << " below " << parent;
    }
    const auto rows = rowCount(table);
    const char* foreign = table == std::string("xiwe") ? "8" : "7";
    for (const char* parent : {foreign, "9999", "-1"}) {
      EXPECT_FALSE(item(table, "id=0", parent).marked) << table << " below " << parent;
    }
    EXPECT_EQ(rowCount(table), rows);
  }
}

TEST_F(ContentPages, AnItemNeverHangsBelowItself) {
  for (const char* table : {"xiwe", "docu"}) {
    EXPECT_FALSE(item(table, "id=4", "4").marked);
    EXPECT_FALSE(item(table, "id=4", "5").marked) << "its own child";
    EXPECT_TRUE(item(table, "id=6", "5").marked) << "moving it elsewhere is fine";
    EXPECT_FALSE(item(table, "id=5", "6").marked) << "what is now its child";
    EXPECT_EQ(stored(table, 5, "p_id"), "4");
  }
}

TEST_F(ContentPages, ATreeEndsAtADepthThatNobodyKeeps) {
  std::string parent = "4";
  int depth = 0;
  for (; depth < 200; ++depth) {
    const AnswerText answer = item("xiwe", "id=0", parent);
    if (!answer.marked) break;
    parent = answer.firstCell();
  }
  EXPECT_GE(depth, 90);
  EXPECT_LT(depth, 110);
}

TEST_F(ContentPages, ABodyIsKeptWithoutTouchingTheHead) {
  EXPECT_EQ(
      ask(add, {{"stable", "docu"}, {"stother", "id=5"}, {"DOCU", "甲方\r\n乙方"}}).firstCell(),
      "5");
  EXPECT_EQ(stored("docu", 5, "docu"), "甲方<br>乙方");
  EXPECT_EQ(stored("docu", 5, "p_id"), "4");
  EXPECT_EQ(stored("docu", 5, "docu_no"), "馆配合同样本");
}

TEST_F(ContentPages, ACompanySeesItsOwnItemsAndThoseOfAll) {
  const Rows top = ask(list, {{"STABLE", "docu"},
                              {"STRDATA", "id,docu_no,noth,qiye_id,"},
                              {"STOTHER", "P_ID=0 and(qiye_id=0 or qiye_id=1)"},
                              {"STORDER", "ID"}})
                       .rows;
  EXPECT_EQ(top, (Rows{{"1", "交易规则", "True", "0"}, {"4", "青禾书店文件", "True", "1"}}));
}
