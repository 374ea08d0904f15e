#include <gtest/gtest.h>

#include "RunningServer.h"
#include "WireClient.h"

namespace {

// Who may write is known by the address alone, and a browser sends a request for any picture or
// link of any page that is looked at there.
class BrowserWrite : public testing::Test {
 protected:
  BrowserWrite() {
    client.get("/_vti_login/_vti_login2.asp?" + field("USER_NO", "1001") + "&" +
               field("USER_PASS", "123456"));
  }

  AnswerText send(const std::string& target, const std::string& header = {}) {
    client.send("GET " + target + " HTTP/1.1\r\nHost: portal\r\n" + header + "\r\n");
    return client.receive().text();
  }
  std::string read(const std::string& table, const std::string& column, int id) {
    return send("/_vti_" + table + "&" + field("STRDATA", column + ",") + "&" +
                field("STOTHER", "id=" + std::to_string(id)))
        .firstCell();
  }
  std::string goodsName() { return read("product/_vti_detail_field_s.asp?STABLE=XIMU", "ximu", 1); }

  RunningServer server;
  WireClient client{server.port()};
  const std::string save = "/_vti_product/_vti_add.asp?" + field("stable", "ximu") + "&" +
                           field("stother", "id=1 and qiye_id=1") + "&" + field("XIMU", "misused");
};

TEST_F(BrowserWrite, IsTakenFromNoPageWhateverTheBrowserTellsOfIt) {
  const std::string name = goodsName();
  for (const char* header :
       {"Origin: http://elsewhere.example\r\n", "Origin: null\r\n", "Origin: http://portal\r\n",
        "Referer: http://portal/link/preview.asp?stuserno=1002\r\n", "Sec-Fetch-Site: none\r\n",
        "Sec-Fetch-Mode: no-cors\r\n", "User-Agent: Mozilla/5.0 (X11; Linux x86_64)\r\n"}) {
    EXPECT_FALSE(send(save, header).marked) << header;
    EXPECT_EQ(goodsName(), name) << header;
  }
  EXPECT_EQ(send(save, "User-Agent: qinghe\r\n").firstCell(), "1") << "the client's own";
  EXPECT_EQ(goodsName(), "misused");
  server.stop();
  EXPECT_NE(server.log().find("refused: a browser's write"), std::string::npos);
}

TEST_F(BrowserWrite, IsRefusedOnEveryPageOfTheClientAndThroughTheRelay) {
  const std::string browser = "User-Agent: Mozilla/5.0\r\n";
  for (const std::string& target :
       {save, "/_vti_comm/review.asp?" + field("review", "HTTP://portal" + save),
        "/_vti_product/_vti_delete.asp?" + field("stable", "publish") + "&" +
            field("stother", "id=1"),
        "/_vti_product/_vti_insert_xixi.asp?" + field("stable", "xixi"),
        "/_vti_login/_vti_add_login.asp?" + field("stable", "qyxx") + "&" + field("stid", "id=1") +
            "&" + field("USER_PASS", "stolen"),
        "/_vti_login/_vti_update_login.asp?" + field("stable", "qyxx") + "&" +
            field("sid", "id=1") + "&" + field("JISH", "misused"),
        "/_vti_login/_vti_login2.asp?" + field("USER_NO", "1002") + "&" +
            field("USER_PASS", "123456"),
        std::string("/_vti_login/_vti_logout2.asp?") + field("USER_NO", "1001")}) {
    EXPECT_FALSE(send(target, browser).marked) << target;
  }
  EXPECT_EQ(read("login/_vti_detail_field_s.asp?STABLE=QYXX", "user_pass", 1), "123456")
      << "still logged in, and nothing has changed";
}

// A name that leads to its own server first and to the portal's address later makes a page look as
// if it came from here.
TEST_F(BrowserWrite, WhatOnlyTheCompanyReadsIsNotToldToABrowserAtItsAddress) {
  const std::string list = "/_vti_product/_vti_detail_field_s.asp?STABLE=";
  const std::string own = "/_vti_login/_vti_detail_field_s.asp?STABLE=QYXX&";
  for (const std::string& target :
       {list + "GOHU&STRDATA=id,", list + "GOKU&STRDATA=id,", list + "DIHU&STRDATA=id,",
        list + "xixi&STRDATA=content,", list + "vGSKH&STRDATA=kehu,",
        own + field("STRDATA", "user_pass,") + "&" + field("STOTHER", "id=1"),
        own + field("STRDATA", "id,") + "&" + field("STOTHER", "user_pass='123456'"),
        own + "STRDATA=id,&STORDER=user_pass",
        std::string("/_vti_product/_vti_detail_page.asp?STABLE=GOHU&STPAGESIZE=10"),
        "/_vti_comm/review.asp?" + field("review", "HTTP://portal" + list + "GOHU&STRDATA=id,")}) {
    EXPECT_FALSE(send(target, "User-Agent: Mozilla/5.0\r\n").marked) << target;
    EXPECT_FALSE(send(target, "Origin: http://portal\r\n").marked) << target;
    EXPECT_TRUE(send(target).marked) << "the client's own " << target;
  }
}

TEST_F(BrowserWrite, ReadingIsOpenToABrowser) {
  const std::string browser = "User-Agent: Mozilla/5.0\r\n";
  EXPECT_TRUE(
      send("/_vti_login/_vti_detail_field_s.asp?STABLE=HAYE&STRDATA=id,haye,", browser).marked);
  EXPECT_NE(send("/link/preview.asp?stuserno=1001", browser).page.find("青禾书店"),
            std::string::npos);
}

}  // namespace
