#include <set>

#include "PortalTest.h"

using namespace qinghe::portal_server;

namespace {

constexpr const char* loginList = "_vti_login/_vti_detail_field_s.asp";
constexpr const char* list = "_vti_detail_field_s.asp";
constexpr const char* page = "_vti_detail_onepage.asp";
constexpr const char* count = "_vti_detail_page.asp";

}  // namespace

class ReadPages : public PortalTest {};

// What each screen asks for, by table, path family, fields, condition and order.
TEST_F(ReadPages, EveryListOfTheClientIsAnswered) {
  const std::string ownOrder = "1";
  const struct {
    const char* family;
    const char* table;
    const char* fields;
    const char* condition;
    const char* order;
    std::size_t cells;
  } requests[] = {
      {loginList, "SHEN", "id,shen,", "", "", 2},
      {loginList, "AREA", "id,area,", "SHEN_ID=10", "", 2},
      {loginList, "HAYE", "id,haye,", "", "", 2},
      {loginList, "LEBI", "id,lebi,", "P_ID=0 AND HAYE_ID=3", "", 2},
      {loginList, "SHXI", "id,shxi,", "HAYE_ID=3 and xuze=0", "", 2},
      {list, "SHXI", "id,shxi,", "HAYE_ID=3", "", 2},
      {loginList, "HELP", "id,help_no,", "P_ID=0", "", 2},
      {loginList, "HELP", "help,", "ID=2", "", 1},
      {loginList, "CYXX", "id,qiye,", "HAYE_ID=3", "", 2},
      {loginList, "QYXX", "id,qiye,", "qiye like '%青%'", "", 2},
      {loginList, "QYXX",
       "qiye,dizh,yobi,fuzh,lixi,dihu,chzh,shji,huji,zhye,email,khyh,yhzh,shha,jish,", "id=2", "",
       15},
      {list, "QYXX", "qiye,dizh,yobi,dihu,lixi,khyh,yhzh,shha,", "id=2", "", 8},
      {loginList, "QYXX", "qiye,ipurl,online,", "ID=2", "", 3},
      {loginList, "QYXX",
       "id,user_no,user_name,user_pass,qiye,dizh,yobi,dihu,guji_id,shen_id,area_id,haye_id,guji,"
       "shen,area,haye,chzh,fuzh,lixi,shji,huji,zhye,email,khyh,yhzh,shha,jish,yhly,",
       "id=1", "", 28},
      {list, "XIMU", "id,ximu,diji,noth,", "QIYE_ID=1", "NOTH,ID", 4},
      {list, "XIMU", "id,ximu_no,ximu,jigex,zhko,gesh,lebi_id,lebi,chye_id,chye,jish,shxi,liuy,",
       "id=1", "", 13},
      {list, "XIMU", "ximu,ximu_bh,ximu_no,lebi,gesh,jigex,zhko,jish,shxi,", "id=1", "", 9},
      {list, "XIMU", "id,ximu,", "LEBI_ID=29", "", 2},
      {list, "XIMU",
       "ximu_no,ximu,ximu_bh,jigex,zhko,gesh,lebi_id,lebi,chye_id,chye,jish,shxi,noth,", "id=1", "",
       13},
      {list, "XIMU", "id,ximu,jigex,", "id in (1,2) and qiye_id=1", "ID", 3},
      {list, "FUWU", "id,ximu,diji,noth,", "QIYE_ID=1", "NOTH,ID", 4},
      {list, "FUWU", "id,ximu_no,ximu,jigex,zhko,jish,shxi,liuy,", "id=1", "", 8},
      {loginList, "FUWU", "id,fuwu,wazh,guji,wezh,zidu,", "noth=true", "", 6},
      {loginList, "FUWU2", "id,fuwu,wezh,zidu,biao,", "", "", 5},
      {loginList, "ZIDU", "bimi,chdu,", "FUWU_ID=1", "", 2},
      {loginList, "ZIDU2", "bimi,chdu,", "FUWU_ID=1", "", 2},
      {list, "MUMU", "id,ximu,", "NOTH=TRUE", "", 2},
      {list, "MUMU", "id,ximu,diji,noth,", "QIYE_ID=1", "NOTH,ID", 4},
      {list, "MUMU",
       "id,ximu_no,ximu,jigex,zhko,gesh,shen_id,shen,area_id,area,lebi_id,lebi,shxi,jish,liuy,",
       "id=501", "", 15},
      {list, "MUMU", "ximu,ximu_no,jigex,zhko,jish,", "id=501", "", 5},
      {list, "mumu", "id,ximu,", "ximu like '%文库%'", "", 2},
      {list, "TUPI", "id,ximu,diji,noth,", "QIYE_ID=1", "NOTH,ID", 4},
      {list, "TUPI", "id,ximu,zhko,jish,liuy,", "id=1", "", 5},
      {list, "QUST", "id,qust,diji,noth,", "QIYE_ID=1", "NOTH,ID", 4},
      {list, "QUST", "lebi_id,qust_no,qust,answ,", "id=1", "", 4},
      {list, "GOHU", "id,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu,feyo,fhrq,jhhs,xshs,sh,fh,fhfs,",
       "id=1", "", 14},
      {list, "GOHU", "id,gohu_no,ghrq,gosh,gosh_id,sh,", "kehu_id=1", "GHRQ DESC", 6},
      {list, "GOHU", "id,gohu_no,ghrq,kehu,kehu_id,fh,", "gosh_id=1", "GHRQ DESC", 6},
      {list, "GOKU",
       "id,ximu_id,ximu,ximu_bh,shli,jige,jine,zhko,ynsh,baxi,ling,bazh,gesh,ximu_no,lebi,",
       "gohu_id=1", "ID", 15},
      {list, "DIHU", "id,dihu_no,dhrq,qyxx_id,qyxx,yhxx_id,yhxx,feyo,fhrq,hs,fh,fhfs,ximus,shlis,",
       "qyxx_id=1", "", 14},
      {list, "DIHU", "id,dihu_no,dhrq,yhxx,yhxx_id,fh,", "qyxx_id=1", "DHRQ DESC", 6},
      {list, "vGSKH", "gosh_id,gosh,", "KEHU_ID=1", "", 2},
      {list, "vGSKH", "kehu_id,kehu,", "GOSH_ID=1", "", 2},
      {list, "vQYYH", "yhxx_id,yhxx,", "QYXX_ID=1", "", 2},
      {list, "forum", "id,forum_name,border_id,", "border_id=0 or border_id=1", "ID", 3},
      {list, "publish", "id,content,", "p_id=0 and forum_id=3", "ID", 2},
      {list, "publish", "id,content,", "P_ID=1", "ID", 2},
      {list, "publish", "user_name,publish_time,return_num,content,", "ID=1", "", 4},
      {list, "xiwe", "id,docu_no,noth,qiye_id,", "P_ID=0 and (qiye_id=0 or qiye_id=1)", "ID", 4},
      {list, "docu", "id,docu_no,noth,qiye_id,", "P_ID=0 and(qiye_id=0 or qiye_id=1)", "ID", 4},
      {list, "xiwe", "docu,", "ID=1", "ID", 1},
      {list, "xixi", "user_id,username,dTime,content,", "qyxx_id=1", "", 4},
  };
  for (const auto& request : requests) {
    const Fields fields{{"STABLE", request.table},
                        {"STRDATA", request.fields},
                        {"STOTHER", request.condition},
                        {"STORDER", request.order}};
    for (const bool mixed : {false, true}) {
      const AnswerText answer =
          mixed ? relayed(request.family, fields) : ask(request.family, fields);
      ASSERT_TRUE(answer.marked) << request.table << " " << request.fields << answer_.note;
      ASSERT_FALSE(answer.rows.empty()) << request.table << " " << request.condition;
      for (const auto& row : answer.rows) {
        EXPECT_EQ(row.size(), request.cells) << request.table << " " << request.fields;
      }
    }
  }
}

TEST_F(ReadPages, CellsStandInTheOrderOfTheFieldList) {
  const AnswerText answer =
      ask(loginList, {{"STABLE", "HAYE"}, {"STRDATA", "haye,id,haye,"}, {"STOTHER", "id=3"}});
  ASSERT_EQ(answer.rows.size(), 1U);
  EXPECT_EQ(answer.rows[0], (std::vector<std::string>{"图书", "3", "图书"}));
}

TEST_F(ReadPages, FlagsDatesAndNumbersPrintAsTheClientReadsThem) {
  const AnswerText order = ask(
      list, {{"STABLE", "GOHU"}, {"STRDATA", "ghrq,fhrq,jhhs,shli,heji,"}, {"STOTHER", "id=1"}});
  ASSERT_EQ(order.rows.size(), 1U);
  EXPECT_EQ(order.rows[0],
            (std::vector<std::string>{"2026-3-7", "2026-3-10", "True", "56", "3184.44"}));
  const AnswerText post =
      ask(list, {{"STABLE", "publish"}, {"STRDATA", "publish_time,"}, {"STOTHER", "id=1"}});
  EXPECT_EQ(post.firstCell(), "2026-9-3 20:11:00");
  const AnswerText ended =
      ask(list, {{"STABLE", "MUMU"}, {"STRDATA", "noth,"}, {"STOTHER", "id=507"}});
  EXPECT_EQ(ended.firstCell(), "False");
}

TEST_F(ReadPages, PagesTogetherAreTheWholeListInOrder) {
  const AnswerText whole = ask(list, {{"STABLE", "XIMU"},
                                      {"STRDATA", "id,ximu,diji,noth,"},
                                      {"STOTHER", "QIYE_ID=1"},
                                      {"STORDER", "NOTH,ID"}});
  ASSERT_EQ(whole.rows.size(), 118U);
  EXPECT_EQ(whole.rows.front()[3], "False");
  EXPECT_EQ(whole.rows.back()[3], "True");
  const AnswerText pages =
      ask(count, {{"STABLE", "XIMU"}, {"STOTHER", "QIYE_ID=1"}, {"STPAGESIZE", "20"}});
  EXPECT_EQ(pages.firstCell(), "6");
  std::vector<std::vector<std::string>> together;
  for (const char* number : {"1", "2", "3", "4", "5", "6", "7"}) {
    const AnswerText one = ask(page, {{"STABLE", "XIMU"},
                                      {"STRDATA", "id,ximu,diji,noth,"},
                                      {"STOTHER", "QIYE_ID=1"},
                                      {"STPAGE", number},
                                      {"STPAGESIZE", "20"},
                                      {"STORDER", "NOTH,ID"}});
    EXPECT_TRUE(one.marked);
    together.insert(together.end(), one.rows.begin(), one.rows.end());
  }
  EXPECT_EQ(together, whole.rows);
}

TEST_F(ReadPages, PagesOfEqualRowsDoNotOverlap) {
  std::set<std::string> seen;
  for (const char* number : {"1", "2", "3", "4", "5", "6"}) {
    const AnswerText one = ask(page, {{"STABLE", "XIMU"},
                                      {"STRDATA", "id,"},
                                      {"STOTHER", "QIYE_ID=1"},
                                      {"STPAGE", number},
                                      {"STPAGESIZE", "20"},
                                      {"STORDER", "QIYE_ID"}});
    for (const std::string& id : one.column(0)) EXPECT_TRUE(seen.insert(id).second) << id;
  }
  EXPECT_EQ(seen.size(), 118U);
}

TEST_F(ReadPages, PageCountRoundsUpAndIsZeroForNothing) {
  const struct {
    const char* condition;
    const char* size;
    const char* pages;
  } table[] = {{"QIYE_ID=2", "8", "1"},   {"QIYE_ID=2", "7", "2"},     {"QIYE_ID=2", "1", "8"},
               {"QIYE_ID=99", "20", "0"}, {"QIYE_ID=2", "32767", "1"}, {"", "419", "1"}};
  for (const auto& row : table) {
    const AnswerText answer =
        ask(count, {{"STABLE", "XIMU"}, {"STOTHER", row.condition}, {"STPAGESIZE", row.size}});
    EXPECT_EQ(answer.firstCell(), row.pages) << row.condition << " " << row.size;
  }
}

TEST_F(ReadPages, ParameterOrderDoesNotMatter) {
  const AnswerText answer = ask(page, {{"STABLE", "MUMU"},
                                       {"STRDATA", "id,ximu,"},
                                       {"STPAGE", "1"},
                                       {"STPAGESIZE", "3"},
                                       {"STOTHER", "NOTH=TRUE"}});
  EXPECT_EQ(answer.rows.size(), 3U);
}

TEST_F(ReadPages, WhatIsNotUnderstoodAnswersWithoutTheMarker) {
  const struct {
    const char* page;
    Fields fields;
    const char* reason;
  } requests[] = {
      {list, {{"STABLE", "NOSUCH"}, {"STRDATA", "id,"}}, "unknown table"},
      {list, {{"STRDATA", "id,"}}, "unknown table"},
      {list, {{"STABLE", "session"}, {"STRDATA", "id,"}}, "unknown table"},
      {list, {{"STABLE", ""}, {"STRDATA", "id,"}}, "unknown table"},
      {list, {{"STABLE", "sqlite_master"}, {"STRDATA", "name,"}}, "unknown table"},
      {loginList, {{"STABLE", "GOHU"}, {"STRDATA", "id,"}}, "unknown table"},
      {list, {{"STABLE", "XIMU"}, {"STRDATA", "id,nosuch,"}}, "unknown column"},
      {list, {{"STABLE", "XIMU"}}, "no fields"},
      {list, {{"STABLE", "QYXX"}, {"STRDATA", "user_level,"}}, "unknown column"},
      {list, {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STOTHER", "id="}}, "value"},
      {list, {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STOTHER", "ximu like '%'%'"}}, ""},
      {list, {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STORDER", "nosuch"}}, "unknown column"},
      {page, {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "1"}}, "page size"},
      {page,
       {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "0"}, {"STPAGESIZE", "5"}},
       "page number"},
      {page,
       {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "-1"}, {"STPAGESIZE", "5"}},
       "page number"},
      {page,
       {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "1"}, {"STPAGESIZE", "0"}},
       "page size"},
      {page,
       {{"STABLE", "XIMU"}, {"STRDATA", "id,"}, {"STPAGE", "1"}, {"STPAGESIZE", "40000"}},
       "page size"},
      {count, {{"STABLE", "XIMU"}, {"STPAGESIZE", "x"}}, "page size"},
      {"_vti_login/_vti_nosuch.asp", {{"STABLE", "XIMU"}}, "unknown page"},
  };
  for (const auto& request : requests) {
    const AnswerText answer = ask(request.page, request.fields);
    EXPECT_FALSE(answer.marked) << query(request.page, request.fields);
    EXPECT_NE(answer_.note.find(request.reason), std::string::npos) << answer_.note;
    EXPECT_NE(answer_.note, "");
  }
}

TEST_F(ReadPages, OrdersAreReadByTheirPartiesAlone) {
  login("1010", "demo1010", "10.0.0.10");
  const Fields order{{"STABLE", "GOHU"}, {"STRDATA", "id,"}, {"STOTHER", "id=1"}};
  const Fields lines{{"STABLE", "GOKU"}, {"STRDATA", "id,"}, {"STOTHER", "gohu_id=1"}};
  const Fields all{{"STABLE", "GOHU"}, {"STRDATA", "id,"}};
  EXPECT_EQ(ask(list, order).rows.size(), 1U);
  EXPECT_FALSE(ask(list, lines).rows.empty());
  EXPECT_TRUE(ask(list, order, "10.0.0.10").rows.empty());
  EXPECT_TRUE(ask(list, lines, "10.0.0.10").rows.empty());
  EXPECT_TRUE(ask(list, all, "10.0.0.10").rows.empty());
  EXPECT_FALSE(ask(list, order, stranger).marked);
  EXPECT_FALSE(ask(list, lines, stranger).marked);
  EXPECT_LT(ask(list, all).rows.size(), 45U);
  EXPECT_FALSE(ask(list, {{"STABLE", "vGSKH"}, {"STRDATA", "gosh_id,"}}, stranger).marked);
}

TEST_F(ReadPages, AConditionCannotWidenWhatAnAddressMaySee) {
  login("1010", "demo1010", "10.0.0.10");
  for (const char* condition : {"id>0 or id=0", "(kehu_id=1) or (gosh_id=1)", "gosh like '%'"}) {
    const AnswerText answer =
        ask(list, {{"STABLE", "GOHU"}, {"STRDATA", "id,"}, {"STOTHER", condition}}, "10.0.0.10");
    EXPECT_TRUE(answer.rows.empty()) << condition;
  }
}

TEST_F(ReadPages, ALinkToAnOwnPageNamesTheHostThatTheClientAskedFor) {
  const struct {
    const char* host;
    const char* link;
  } table[] = {{"portal:8180", "http://portal:8180/link/paper.asp"},
               {"[::1]:90", "http://[::1]:90/link/paper.asp"},
               {"a-b.example", "http://a-b.example/link/paper.asp"},
               {"", "/link/paper.asp"},
               {"x\"><td>", "/link/paper.asp"},
               {"a/b", "/link/paper.asp"}};
  for (const auto& row : table) {
    host_ = row.host;
    for (const char* page : {loginList, "_vti_login/_vti_detail_onepage.asp"}) {
      EXPECT_EQ(ask(page, {{"STABLE", "FUWU"},
                           {"STRDATA", "id,wazh,guji,"},
                           {"STOTHER", "noth=true"},
                           {"STPAGE", "1"},
                           {"STPAGESIZE", "5"}})
                    .rows.at(0),
                (std::vector<std::string>{"1", row.link, "纸张参考价格"}));
    }
  }
}

TEST_F(ReadPages, ALinkToAnotherSiteStaysAsItIs) {
  const Table& services = storedTable("info_fuwu");
  store_->transact([&](StoreWriter& writer) {
    writer.update(services, 1, {assign(services, "wazh", "http://other.example/p")});
  });
  EXPECT_EQ(ask(loginList, {{"STABLE", "FUWU"}, {"STRDATA", "wazh,"}}).firstCell(),
            "http://other.example/p");
}

TEST_F(ReadPages, MessagesAreReadByTheirAddresseeAlone) {
  const AnswerText answer = ask(list, {{"STABLE", "xixi"}, {"STRDATA", "qyxx_id,content,"}});
  ASSERT_EQ(answer.rows.size(), 4U);
  for (const std::string& addressee : answer.column(0)) EXPECT_EQ(addressee, "1");
}

TEST_F(ReadPages, RetailOrdersAreReadByTheirSellerAlone) {
  for (const std::string& seller :
       ask(list, {{"STABLE", "DIHU"}, {"STRDATA", "qyxx_id,"}}).column(0)) {
    EXPECT_EQ(seller, "1");
  }
}

TEST_F(ReadPages, PartnersAreToldOnce) {
  const AnswerText partners =
      ask(list, {{"STABLE", "vGSKH"}, {"STRDATA", "kehu_id,kehu,"}, {"STOTHER", "GOSH_ID=1"}});
  const auto ids = partners.column(0);
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
  EXPECT_GE(ids.size(), 2U);
}

TEST_F(ReadPages, PasswordIsReadByItsOwnEnterpriseAlone) {
  const auto password = [&](const char* condition, const char* address) {
    return ask(loginList,
               {{"STABLE", "QYXX"}, {"STRDATA", "id,user_pass,"}, {"STOTHER", condition}}, address);
  };
  EXPECT_EQ(password("id=1", bookshop).rows.at(0).at(1), "123456");
  EXPECT_FALSE(password("id=2", bookshop).marked);
  EXPECT_FALSE(password("id=1", stranger).marked);
  EXPECT_EQ(password("", bookshop).rows.size(), 1U);
  EXPECT_EQ(password("id=1 or id=2", bookshop).rows.size(), 1U);
}

TEST_F(ReadPages, PasswordCannotBeGuessedThroughConditionsOrOrder) {
  const auto found = [&](const char* condition, const char* order) {
    return ask(
        loginList,
        {{"STABLE", "QYXX"}, {"STRDATA", "id,qiye,"}, {"STOTHER", condition}, {"STORDER", order}});
  };
  for (const char* condition : {"id=2 and user_pass='123456'", "user_pass like '1%' and id<>1",
                                "id=2 and (qiye='' or user_pass='123456')"}) {
    EXPECT_TRUE(found(condition, "").rows.empty()) << condition;
  }
  EXPECT_EQ(found("", "user_pass").rows.size(), 1U);
  EXPECT_EQ(ask("_vti_login/_vti_detail_page.asp",
                {{"STABLE", "QYXX"}, {"STOTHER", "user_pass='demo1003'"}, {"STPAGESIZE", "1"}})
                .firstCell(),
            "0");
  EXPECT_FALSE(ask(loginList,
                   {{"STABLE", "QYXX"}, {"STRDATA", "id,"}, {"STOTHER", "user_pass='123456'"}},
                   stranger)
                   .marked);
}

TEST_F(ReadPages, StructurePageGivesAsManyCellsAsAreAskedFor) {
  const auto structure = [&](const char* table, const char* cells) {
    return ask("_vti_login/_vti_detail.asp", {{"STABLE", table}, {"STRUCTN", cells}});
  };
  const AnswerText prices = structure("ZHIJ", "5");
  ASSERT_EQ(prices.rows.size(), 10U);
  EXPECT_EQ(prices.rows[0],
            (std::vector<std::string>{"1", "双胶纸", "70克 787×1092", "6150", "元/吨"}));
  EXPECT_EQ(structure("HAYE", "1").rows.at(2).size(), 1U);
  EXPECT_EQ(structure("HAYE", "4").rows.at(2), (std::vector<std::string>{"3", "图书", "", ""}));
  for (const char* table : {"QYXX", "XIMU", "GOHU", "NOSUCH"}) {
    EXPECT_FALSE(structure(table, "3").marked) << table;
  }
  for (const char* cells : {"", "0", "-1", "65", "x"}) {
    EXPECT_FALSE(structure("HAYE", cells).marked) << cells;
  }
}

TEST_F(ReadPages, RelayServesOwnPagesForTheSameAddressAndNothingElse) {
  const Fields own{{"STABLE", "QYXX"}, {"STRDATA", "user_pass,"}, {"STOTHER", "id=1"}};
  EXPECT_EQ(relayed(loginList, own).firstCell(), "123456");
  EXPECT_FALSE(relayed(loginList, own, stranger).marked);
  const std::string inner = "_vti_login/_vti_detail_field_s.asp?STABLE=HAYE&STRDATA=id,";
  const auto relay = [&](const std::string& url) {
    return target("/_vti_comm/review.asp?" + field("review", url));
  };
  EXPECT_TRUE(relay("http://portal:8180/" + inner).marked);
  EXPECT_TRUE(relay("HTTP://PORTAL:8180/" + inner).marked);
  for (const std::string& url :
       {"http://elsewhere/" + inner, "http://portal:9999/" + inner, "/" + inner, inner,
        std::string("file:///etc/passwd"), std::string(),
        std::string("http://portal:8180/_vti_comm/review.asp?review=x")}) {
    EXPECT_FALSE(relay(url).marked) << url;
  }
  EXPECT_FALSE(target("/_vti_comm/review.asp").marked);
}

TEST_F(ReadPages, BrowserPagesAreWholePagesForEveryInput) {
  for (const char* address :
       {"/", "/link/help.asp", "/link/preview.asp?stuserno=1001", "/link/paper.asp",
        "/_vti_login/_vti_image.asp?id=1", "/_vti_product/_vti_image.asp?stable=ximu&id=1",
        "/_vti_product/_vti_image.asp?stable=fuwu&id=1",
        "/_vti_product/_vti_image.asp?stable=mumu&id=501",
        "/_vti_product/_vti_image.asp?stable=tupi&id=1", "/_vti_comm/close.asp?url_no=login_qy"}) {
    const AnswerText answer = target(address);
    EXPECT_EQ(answer_.status, 200U) << address;
    EXPECT_TRUE(answer_.forBrowser) << address;
    EXPECT_FALSE(answer.marked) << address;
    EXPECT_NE(answer.page.find("</html>"), std::string::npos) << address;
  }
  EXPECT_NE(target("/link/preview.asp?stuserno=1001").page.find("青禾书店"), std::string::npos);
  EXPECT_NE(target("/link/help.asp").page.find("登录与注册"), std::string::npos);
  for (const char* address :
       {"/link/preview.asp", "/link/preview.asp?stuserno=9", "/_vti_login/_vti_image.asp?id=x",
        "/_vti_product/_vti_image.asp?stable=qyxx&id=1",
        "/_vti_product/_vti_image.asp?stable=ximu&id=99999"}) {
    target(address);
    EXPECT_EQ(answer_.status, 404U) << address;
  }
}

TEST_F(ReadPages, NoPageShowsAPasswordToAStranger) {
  for (const char* address : {"/link/preview.asp?stuserno=1003", "/_vti_login/_vti_image.asp?id=3",
                              "/link/help.asp", "/"}) {
    EXPECT_EQ(target(address, stranger).page.find("demo1003"), std::string::npos) << address;
  }
}
