#include "WritePages.h"

TEST_F(WritePages, ANewGoodsRowGetsAnIdAndKeepsWhatWasTyped) {
  const AnswerText answer = ask(add, {{"stable", "ximu"},
                                      {"structn", "18"},
                                      {"stother", "id=0 and qiye_id=1"},
                                      {"QIYE_ID", "1"},
                                      {"QIYE", "青禾书店"},
                                      {"LEBI_ID", "29"},
                                      {"CHYE_ID", "3"},
                                      {"XIMU_NO", "NO"},
                                      {"XIMU", "新添商品"},
                                      {"GESH", "010"},
                                      {"LEBI", "建筑"},
                                      {"CHYE", ""},
                                      {"SHXI", ",,,"},
                                      {"JIGEX", "25.50"},
                                      {"ZHKO", "说明"},
                                      {"NOTH", "True"}});
  ASSERT_EQ(answer.rows.size(), 1U);
  const std::int64_t id = std::stoll(answer.firstCell());
  EXPECT_EQ(id, 420);
  EXPECT_EQ(stored("ximu", id, "qiye_id"), "1");
  EXPECT_EQ(stored("ximu", id, "ximu"), "新添商品");
  EXPECT_EQ(stored("ximu", id, "jigex"), "25.50");
  EXPECT_EQ(stored("ximu", id, "gesh"), "010");
  EXPECT_EQ(stored("ximu", id, "noth"), "1");
  EXPECT_EQ(stored("ximu", id, "diji"), "0");
}

TEST_F(WritePages, OnlyPostedFieldsChange) {
  const std::string title = stored("ximu", 1, "ximu");
  const AnswerText answer =
      ask(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"JIGEX", "1.00"}});
  EXPECT_EQ(answer.firstCell(), "1");
  EXPECT_EQ(stored("ximu", 1, "jigex"), "1.00");
  EXPECT_EQ(stored("ximu", 1, "ximu"), title);
  EXPECT_EQ(stored("ximu", 1, "noth"), "1");
}

TEST_F(WritePages, WritesTravelThroughTheRelayToo) {
  EXPECT_EQ(
      relayed(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "大学语文"}})
          .firstCell(),
      "1");
  EXPECT_EQ(stored("ximu", 1, "ximu"), "大学语文");
}

TEST_F(WritePages, TextComesBackWholeAndNeverAsMarkup) {
  for (const char* text :
       {"a<b", "a>b", "<b>粗</b>", "R&D", "第一行\r\n第二行", "\"引号\" 'x'", "50%", "a\tb",
        "<script>alert(1)</script>", "</table><table id=\"start_pos\">"}) {
    ask(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", text}});
    const AnswerText answer = ask("_vti_detail_field_s.asp",
                                  {{"STABLE", "XIMU"}, {"STRDATA", "ximu,"}, {"STOTHER", "id=1"}});
    EXPECT_EQ(answer.firstCell(), text);
    const std::string& body = answer_.body;
    const std::string cells = body.substr(body.find("<td>"));
    EXPECT_EQ(cells.find("<b>"), std::string::npos) << text;
    EXPECT_EQ(cells.find("<script"), std::string::npos) << text;
    EXPECT_EQ(cells.find("<table"), std::string::npos) << text;
  }
}

TEST_F(WritePages, RawBytesInARequestCannotBreakAPage) {
  target("/_vti_product/_vti_add.asp?stable=ximu&stother=id=1&XIMU=<td>x</td></tr>&JIGEX=9");
  EXPECT_EQ(stored("ximu", 1, "ximu"), "&lt;td&gt;x&lt;/td&gt;&lt;/tr&gt;");
  EXPECT_EQ(stored("ximu", 1, "jigex"), "9");
}

TEST_F(WritePages, ABareAmpersandInAValueCutsItThere) {
  const AnswerText answer =
      target("/_vti_product/_vti_add.asp?stable=ximu&stother=id=1&XIMU=R&D&JIGEX=9");
  EXPECT_EQ(answer.firstCell(), "1");
  EXPECT_EQ(stored("ximu", 1, "ximu"), "R");
  EXPECT_EQ(stored("ximu", 1, "jigex"), "9");
}

TEST_F(WritePages, OfTwoParametersOfOneNameTheFirstCounts) {
  const AnswerText answer =
      target("/_vti_product/_vti_add.asp?stable=ximu&stother=id=1&QIYE_ID=1&XIMU=a&ximu=b&XIMU=c");
  EXPECT_EQ(answer.firstCell(), "1");
  EXPECT_EQ(stored("ximu", 1, "ximu"), "a");
}

TEST_F(WritePages, ARawValueReplacesNothingThatStoodBeforeIt) {
  const std::string foreign = stored("ximu", 119, "ximu");
  const AnswerText answer = target(
      "/_vti_product/_vti_add.asp?stable=ximu&stother=id=1&QIYE_ID=1&XIMU_NO=N"
      "&XIMU=x&stother=id=119&QIYE_ID=2&XIMU_NO=M&stable=mumu&NOTH=True");
  EXPECT_EQ(answer.firstCell(), "1");
  EXPECT_EQ(stored("ximu", 1, "ximu"), "x");
  EXPECT_EQ(stored("ximu", 1, "ximu_no"), "N");
  EXPECT_EQ(stored("ximu", 1, "qiye_id"), "1");
  EXPECT_EQ(stored("ximu", 119, "ximu"), foreign);
}

TEST_F(WritePages, ForeignAndBrokenWritesChangeNothing) {
  const std::string foreign = stored("ximu", 119, "ximu");
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=119 and qiye_id=2"}, {"XIMU", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=119"}, {"XIMU", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=119 and qiye_id=1"}, {"XIMU", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"QIYE_ID", "2"}});
  expectRefused(
      "ximu",
      {{"stable", "ximu"}, {"stother", "id=0 and qiye_id=2"}, {"QIYE_ID", "2"}, {"XIMU", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=0 and qiye_id=1"}, {"XIMU", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "x"}},
                stranger);
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id="}, {"QIYE_ID", "1"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"QIYE_ID", "1"}, {"XIMU", "x"}});
  expectRefused("ximu",
                {{"stable", "ximu"}, {"stother", "id=0"}, {"QIYE_ID", "1"}, {"NOSUCH", "1"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=0"}, {"QIYE_ID", "1"}, {"ID", "77"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=0"}, {"QIYE_ID", "1"}, {"DIJI", "9"}});
  expectRefused("ximu",
                {{"stable", "ximu"}, {"stother", "id=0"}, {"QIYE_ID", "1"}, {"NOTH", "perhaps"}});
  expectRefused("ximu",
                {{"stable", "ximu"}, {"stother", "id=0"}, {"QIYE_ID", "1"}, {"LEBI_ID", "x"}});
  EXPECT_EQ(stored("ximu", 119, "ximu"), foreign);
  EXPECT_NE(stored("ximu", 1, "ximu"), "x");
}

TEST_F(WritePages, TablesOfThePortalItselfAreNotWritten) {
  for (const char* table : {"haye", "lebi", "qyxx", "publish", "xixi", "help", "vGSKH", "nosuch"}) {
    EXPECT_FALSE(ask(add, {{"stable", table}, {"stother", "id=0"}}).marked) << table;
  }
  EXPECT_EQ(stored("qyxx", 1, "user_pass"), "123456");
}

TEST_F(WritePages, AnothersGoodsPairedWithTheOwnEnterpriseBecomeANewRow) {
  const std::string foreign = stored("ximu", 119, "ximu");
  const AnswerText answer = ask(add, {{"stable", "ximu"},
                                      {"structn", "18"},
                                      {"stother", "id=119 and qiye_id=1"},
                                      {"QIYE_ID", "1"},
                                      {"QIYE", "青禾书店"},
                                      {"XIMU", "导入的商品"},
                                      {"NOTH", "True"}});
  EXPECT_EQ(answer.firstCell(), "420");
  EXPECT_EQ(stored("ximu", 420, "qiye_id"), "1");
  EXPECT_EQ(stored("ximu", 119, "ximu"), foreign);
  EXPECT_EQ(stored("ximu", 119, "qiye_id"), "2");
}

TEST_F(WritePages, OtherTablesTakeNoForeignIdForANewRow) {
  expectRefused("mumu",
                {{"stable", "mumu"}, {"stother", "id=502 and qiye_id=1"}, {"QIYE_ID", "1"}});
  expectRefused("fuwu", {{"stable", "FUWU"}, {"stother", "id=4 and qiye_id=1"}, {"QIYE_ID", "1"}});
}

TEST_F(WritePages, LongTextsGoToTheirRowAndNeverMakeOne) {
  const std::string text(100'000, 'x');
  ask(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"JISH", text}});
  EXPECT_EQ(stored("ximu", 1, "jish"), text);
  ask(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"LIUY", "留言"}});
  EXPECT_EQ(stored("ximu", 1, "liuy"), "留言");
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=0 and qiye_id=1"}, {"JISH", "x"}});
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=9999 and qiye_id=1"}, {"JISH", "x"}});
  const std::string tooLong((1U << 20U) + 1, 'x');
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"JISH", tooLong}});
}

TEST_F(WritePages, EveryEditorOfTheClientSaves) {
  const struct {
    const char* storage;
    Fields fields;
    const char* column;
  } saves[] = {
      {"fuwu",
       {{"stable", "FUWU"},
        {"structn", "18"},
        {"stother", "id=0 and qiye_id=1"},
        {"QIYE_ID", "1"},
        {"QIYE", "青禾书店"},
        {"XIMU_NO", "NO"},
        {"XIMU", "新名"},
        {"SHXI", ""},
        {"JIGEX", "0"},
        {"ZHKO", "说明"},
        {"NOTH", "True"}},
       "ximu"},
      {"mumu",
       {{"stable", "mumu"},
        {"structn", "18"},
        {"stother", "id=0 and qiye_id=1"},
        {"QIYE_ID", "1"},
        {"QIYE", "青禾书店"},
        {"SHEN_ID", "10"},
        {"AREA_ID", "90"},
        {"LEBI_ID", "1"},
        {"XIMU_NO", "NO"},
        {"XIMU", "新名"},
        {"GESH", "1"},
        {"SHEN", "江苏"},
        {"AREA", "南京"},
        {"LEBI", "小说"},
        {"SHXI", ""},
        {"JIGEX", "0"},
        {"ZHKO", "说明"},
        {"NOTH", "False"}},
       "ximu"},
      {"tupi",
       {{"stable", "tupi"},
        {"stother", "id=0 and qiye_id=1"},
        {"QIYE_ID", "1"},
        {"QIYE", "青禾书店"},
        {"XIMU", "新名"},
        {"ZHKO", ""},
        {"NOTH", "True"}},
       "ximu"},
      {"qust",
       {{"stable", "qust"},
        {"stother", "id=0 and qiye_id=1"},
        {"QIYE_ID", "1"},
        {"QUST_NO", "NO"},
        {"QUST", "新名"},
        {"ANSW", "谢谢"},
        {"NOTH", "True"}},
       "qust"},
      {"xiwe",
       {{"stable", "xiwe"},
        {"stother", "id=0"},
        {"QIYE_ID", "1"},
        {"QIYE", "青禾书店"},
        {"P_ID", "4"},
        {"DOCU_NO", "新名"},
        {"NOTH", "True"}},
       "docu_no"},
      {"docu",
       {{"stable", "docu"},
        {"stother", "id=0"},
        {"QIYE_ID", "1"},
        {"QIYE", "青禾书店"},
        {"P_ID", "4"},
        {"DOCU_NO", "新名"},
        {"NOTH", "True"}},
       "docu_no"},
      {"forum",
       {{"stable", "forum"},
        {"stother", "id=0"},
        {"BORDER_ID", "1"},
        {"BORDER_NAME", "青禾书店"},
        {"FORUM_NAME", "新名"},
        {"NOTH", "True"}},
       "forum_name"},
  };
  for (const auto& save : saves) {
    const auto rows = rowCount(save.storage);
    const AnswerText answer = ask(add, save.fields);
    ASSERT_EQ(answer.rows.size(), 1U) << save.storage << answer_.note;
    EXPECT_EQ(rowCount(save.storage), rows + 1) << save.storage;
    EXPECT_EQ(stored(save.storage, std::stoll(answer.firstCell()), save.column), "新名");
  }
}

TEST_F(WritePages, RowsOpenToAllBelongToNobodyWhoLogsIn) {
  expectRefused("xiwe", {{"stable", "xiwe"}, {"stother", "id=1"}, {"DOCU", "x"}});
  expectRefused("xiwe",
                {{"stable", "xiwe"}, {"stother", "id=0"}, {"QIYE_ID", "0"}, {"DOCU_NO", "x"}});
  expectRefused("forum", {{"stable", "forum"}, {"stother", "id=1"}, {"FORUM_NAME", "x"}});
  EXPECT_EQ(ask(add, {{"stable", "xiwe"}, {"stother", "id=5"}, {"DOCU", "正文"}}).firstCell(), "5");
}

TEST_F(WritePages, SeveralEnterprisesOfOneAddressWriteEachItsOwn) {
  login("1002", "123456", bookshop);
  EXPECT_TRUE(
      ask(add, {{"stable", "ximu"}, {"stother", "id=119 and qiye_id=2"}, {"JIGEX", "2"}}).marked);
  EXPECT_TRUE(
      ask(add, {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"JIGEX", "1"}}).marked);
  expectRefused("ximu", {{"stable", "ximu"}, {"stother", "id=119 and qiye_id=1"}, {"JIGEX", "3"}});
  EXPECT_EQ(stored("ximu", 119, "jigex"), "2");
}

class PostAndMessagePages : public WritePages {
 protected:
  AnswerText remove(const char* key, const char* address = bookshop) {
    return ask("_vti_delete.asp", {{"stable", "publish"}, {"stother", key}}, address);
  }
};

TEST_F(PostAndMessagePages, ALeafOfAnOwnForumIsDeletedAndItsParentCountsOneLess) {
  const std::string before = stored("publish", 2, "return_num");
  EXPECT_EQ(before, "1");
  EXPECT_EQ(remove("id=3").firstCell(), "0");
  EXPECT_EQ(stored("publish", 3, "id"), "no row");
  EXPECT_EQ(stored("publish", 2, "return_num"), "0");
}

TEST_F(PostAndMessagePages, APostWithRepliesStaysAndAnswersTheirNumber) {
  EXPECT_EQ(remove("id=1").firstCell(), "2");
  EXPECT_EQ(stored("publish", 1, "id"), "1");
}

TEST_F(PostAndMessagePages, ForeignPostsAndOtherTablesAreNotDeleted) {
  const auto posts = rowCount("publish");
  for (const char* key : {"id=10", "id=13", "id=9999", "id=", "id=3 or id=4", "id>0"}) {
    EXPECT_FALSE(remove(key).marked) << key;
  }
  EXPECT_FALSE(remove("id=3", stranger).marked);
  EXPECT_FALSE(ask("_vti_delete.asp", {{"stable", "ximu"}, {"stother", "id=1"}}).marked);
  EXPECT_EQ(rowCount("publish"), posts);
  EXPECT_EQ(rowCount("ximu"), 419);
}

TEST_F(PostAndMessagePages, AMessageIsStoredForItsAddresseeWithTheServersTime) {
  const AnswerText answer = ask("_vti_insert_xixi.asp", {{"stable", "xixi"},
                                                         {"structn", "7"},
                                                         {"QYXX_ID", "2"},
                                                         {"QYXX", "明溪书屋"},
                                                         {"USER_ID", "1"},
                                                         {"USERNAME", "青禾书店"},
                                                         {"CONTENT", "你好\r\n再见"}});
  EXPECT_EQ(answer.firstCell(), "8");
  EXPECT_EQ(stored("xixi", 8, "content"), "你好<br>再见");
  EXPECT_EQ(stored("xixi", 8, "dtime").size(), 19U);
  login("1002", "123456", "10.0.0.2");
  const AnswerText inbox = ask("_vti_detail_field_s.asp",
                               {{"STABLE", "xixi"},
                                {"STRDATA", "user_id,username,dTime,content,"},
                                {"STOTHER", "qyxx_id=2"}},
                               "10.0.0.2");
  ASSERT_FALSE(inbox.rows.empty());
  EXPECT_EQ(inbox.rows.back().at(3), "你好\r\n再见");
}

TEST_F(PostAndMessagePages, NobodyWritesMessagesInAForeignNameOrToNobody) {
  const char* page = "_vti_insert_xixi.asp";
  expectRefused("xixi", {{"stable", "xixi"}, {"QYXX_ID", "1"}, {"USER_ID", "2"}, {"CONTENT", "x"}},
                bookshop, page);
  expectRefused("xixi", {{"stable", "xixi"}, {"QYXX_ID", "2"}, {"USER_ID", "1"}, {"CONTENT", "x"}},
                stranger, page);
  expectRefused("xixi", {{"stable", "xixi"}, {"QYXX_ID", "99"}, {"USER_ID", "1"}, {"CONTENT", "x"}},
                bookshop, page);
  expectRefused("xixi", {{"stable", "ximu"}, {"QYXX_ID", "2"}, {"USER_ID", "1"}}, bookshop, page);
  expectRefused("xixi", {{"stable", "xixi"}}, bookshop, page);
}
