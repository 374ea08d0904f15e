#include "PortalTest.h"
#include "demo_pictures.h"
#include "pages/TestPicture.h"
#include "picture_pages.h"
#include "pictures.h"
#include "text_codec.h"

using namespace qinghe::portal_server;

namespace {

class CompanyPage : public PortalTest {
 protected:
  /// The page's markup.
  std::string markup(const std::string& address, const std::string& from = stranger) {
    target(address, from);
    return utf8FromCodePage(answer_.body);
  }
  std::string preview() { return markup("/link/preview.asp?stuserno=1001"); }
  bool has(const std::string& piece) { return preview().find(piece) != std::string::npos; }
  void write(const std::string& table, std::int64_t id, const std::string& column,
             const std::string& text) {
    store_->transact([&](StoreWriter& writer) {
      const Table& stored = storedTable(table);
      writer.update(stored, id, {assign(stored, column, text)});
    });
  }
};

TEST_F(CompanyPage, TellsTheCompanyAndWhatItOffers) {
  for (const char* piece :
       {"青禾书店", "图书 · 江苏 · 南京", "江苏南京市中山门外大街18号", "0637-55501001", "沈女士",
        "面向院校与社区的综合书店", "<h2>商品</h2>", "砖石的语言", "￥72.00 七五折",
        "建筑 · 东篱大学出版社", "<h2>服务</h2>", "馆配加工", "￥2.00 每册", "<h2>品牌</h2>",
        "青禾文库", "<h2>图片</h2>", "门面"}) {
    EXPECT_TRUE(has(piece)) << piece;
  }
  EXPECT_TRUE(answer_.forBrowser);
}

TEST_F(CompanyPage, OnlyLiveRecordsStandThere) {
  store_->transact([](StoreWriter& writer) {
    const Table& table = storedTable("ximu");
    writer.update(table, 1, {assign(table, "noth", std::int64_t{0})});
  });
  EXPECT_FALSE(has("砖石的语言"));
}

TEST_F(CompanyPage, ARecordsPictureStandsOnItsCard) {
  PictureFault fault{};
  const auto copies = readPicture(testPicture("PNG", 20, 20), fault);
  store_->transact([&](StoreWriter& writer) {
    keepPicture(writer, {.kind = "ximu", .id = 1, .owner = 1, .name = {}}, copies);
    keepPicture(writer, {.kind = "qyxx", .id = 1, .owner = 1, .name = {}}, copies);
    keepPicture(writer, {.kind = "ximu", .id = 3000, .owner = 2, .name = {}}, copies);
  });
  const std::string page = preview();
  for (const char* kind : {"ximu", "qyxx"}) {
    const auto address = attributeText(pictureAddress(kind, 1, PictureSize::Small));
    EXPECT_NE(page.find("src=\"" + address + "\""), std::string::npos) << address;
  }
  EXPECT_EQ(page.find("id=3000"), std::string::npos);
}

TEST_F(CompanyPage, WithoutPicturesItsCardsAreWordsAndBesideOthersTheyShowAnInitial) {
  EXPECT_FALSE(has("class=\"face\""));
  PictureFault fault{};
  const auto copies = readPicture(testPicture("PNG", 20, 20), fault);
  store_->transact([&](StoreWriter& writer) {
    keepPicture(writer, {.kind = "ximu", .id = 1, .owner = 1, .name = {}}, copies);
  });
  EXPECT_TRUE(has("<div class=\"face\">睡</div>"));
}

TEST_F(CompanyPage, TheDemoTradeHasPicturesOfEveryKind) {
  fillDemoPictures(*store_);
  for (const char* kind : {"qyxx", "ximu", "mumu", "tupi"}) {
    EXPECT_FALSE(picturedRecords(store_->reader(), kind, 1).empty()) << kind;
  }
  const auto subject = findSubject(store_->reader(), "ximu", "1");
  const auto picture = loadPicture(store_->reader(), *subject, PictureSize::Large);
  EXPECT_EQ(pictureOf(picture->bytes).size(), QSize(360, 480));
  EXPECT_FALSE(hasPicture(store_->reader(), "tupi", 1));
}

TEST_F(CompanyPage, TextsOfAStrangerStayTexts) {
  const std::string hostile = "<script>alert(1)</script>\"onmouseover='x'";
  for (const char* column : {"qiye", "dizh", "jish", "zhye", "email"}) {
    write("qyxx", 1, column, hostile);
  }
  for (const char* table : {"ximu", "fuwu", "mumu", "tupi"}) {
    const std::int64_t id = std::string_view(table) == "mumu" ? 501 : 1;
    write(table, id, "ximu", hostile);
    write(table, id, "zhko", hostile);
    write(table, id, "jish", hostile);
  }
  const std::string page = preview();
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find("href=\"&lt;"), std::string::npos);
  EXPECT_NE(page.find("&lt;script&gt;"), std::string::npos);
}

TEST_F(CompanyPage, LongTextsAreToldByTheirBeginning) {
  const auto told = [&](const std::string& text) {
    store_->transact([&](StoreWriter& writer) {
      const Table& services = storedTable("fuwu");
      writer.update(services, 1, {assign(services, "jish", text)});
    });
    const std::string page = preview();
    const std::size_t at = page.find("BEGIN");
    return at == std::string::npos ? std::string() : page.substr(at, page.find("</p>", at) - at);
  };
  EXPECT_EQ(told("BEGIN" + std::string(595, 'x')), "BEGIN" + std::string(595, 'x'));
  EXPECT_EQ(told("BEGIN" + std::string(596, 'x')), "BEGIN" + std::string(595, 'x') + "……");
  const std::string before = "BEGIN" + std::string(593, 'x');
  for (const char* whole : {"书书", "&lt;x", "<br>x"}) {
    EXPECT_EQ(told(before + whole + std::string(1'000'000, 'y')), before + "……") << whole;
  }
  EXPECT_LT(preview().size(), 200'000U);
}

TEST_F(CompanyPage, OnlyWebAddressesBecomeLinks) {
  const struct {
    std::string typed, link;
  } table[] = {{"www.1001.example", "http://www.1001.example"},
               {"http://a.example/x?y=1&z=2", "http://a.example/x?y=1&z=2"},
               {"HTTPS://a.example", "HTTPS://a.example"},
               {"a.example:8080/x", "http://a.example:8080/x"},
               {"javascript:alert(1)", ""},
               {"JAVASCRIPT:alert(1)", ""},
               {"data:text/html,x", ""},
               {"file:///etc/passwd", ""},
               {"//elsewhere.example", ""},
               {"a b.example", ""},
               {"a\".example", ""},
               {"书店", ""}};
  for (const auto& row : table) {
    write("qyxx", 1, "zhye", row.typed);
    const std::string cell = "<th>主页</th>\n<td>";
    if (!row.link.empty()) {
      EXPECT_TRUE(has(cell + "<a href=\"" + row.link + "\"")) << row.typed;
    }
    EXPECT_EQ(has(cell + "<a"), !row.link.empty()) << row.typed;
  }
}

TEST_F(CompanyPage, AnUnknownNumberIsSaidInWords) {
  for (const char* number : {"", "9", "1001'", "1001 or 1=1"}) {
    const std::string page = markup("/link/preview.asp?" + field("stuserno", number));
    EXPECT_EQ(answer_.status, 404U) << number;
    EXPECT_NE(page.find("没有这个企业。"), std::string::npos);
  }
}

class HelpPages : public CompanyPage {
 protected:
  std::string help(const std::string& id = {}) {
    return markup("/link/help.asp" + (id.empty() ? "" : "?" + field("id", id)));
  }
  static int count(const std::string& page, const std::string& piece) {
    int found = 0;
    for (auto at = page.find(piece); at != std::string::npos; at = page.find(piece, at + 1))
      ++found;
    return found;
  }
};

TEST_F(HelpPages, TheTreeStandsBesideEveryTopic) {
  const std::string start = help();
  EXPECT_NE(start.find("欢迎使用青禾云集帮助"), std::string::npos);
  EXPECT_EQ(count(start, "<li>"), rowCount("help"));
  EXPECT_EQ(count(start, "<ul>"), count(start, "</ul>"));
  EXPECT_EQ(count(start, "<li>"), count(start, "</li>"));
}

TEST_F(HelpPages, ATopicHasItsTextItsWayUpAndItsNeighbours) {
  const std::string page = help("3");
  const std::string name = stored("help", 3, "help_no");
  EXPECT_EQ(answer_.status, 200U);
  EXPECT_NE(page.find("<h1>" + name + "</h1>"), std::string::npos);
  EXPECT_NE(page.find("class=\"here\">" + name), std::string::npos);
  EXPECT_NE(page.find("系统帮助</a> / <a href=\"/link/help.asp?id=1\">" +
                      stored("help", 1, "help_no") + "</a>"),
            std::string::npos);
  EXPECT_NE(page.find("上一篇：<a href=\"/link/help.asp?id=2\">"), std::string::npos);
  EXPECT_NE(page.find("下一篇：<a href=\"/link/help.asp?id=4\">"), std::string::npos);
}

TEST_F(HelpPages, AnUnknownTopicShowsTheTreeAllTheSame) {
  for (const char* id : {"999", "x", "-1", "1'"}) {
    const std::string page = help(id);
    EXPECT_EQ(answer_.status, 404U) << id;
    EXPECT_NE(page.find("没有这篇帮助"), std::string::npos);
    EXPECT_NE(page.find("登录与注册"), std::string::npos);
  }
}

TEST_F(HelpPages, ATreeThatBitesItsTailStillGivesAPage) {
  store_->transact([](StoreWriter& writer) {
    const Table& table = storedTable("help");
    writer.update(table, 1, {assign(table, "p_id", std::int64_t{2})});
    writer.update(table, 5, {assign(table, "p_id", std::int64_t{5})});
  });
  for (const char* id : {"", "1", "2", "5", "6"}) {
    EXPECT_NE(help(id).find("</html>"), std::string::npos) << id;
  }
}

TEST_F(HelpPages, ATreeOfAnyDepthGivesABoundedPage) {
  store_->transact([](StoreWriter& writer) {
    const Table& table = storedTable("help");
    std::int64_t above = 20;
    for (int i = 0; i < 50; ++i) {
      above =
          writer.insert(table, {assign(table, "p_id", above), assign(table, "help_no", "deep")});
    }
  });
  const std::string page = help();
  EXPECT_GT(count(page, ">deep<"), 3);
  EXPECT_LT(count(page, ">deep<"), 9);
  EXPECT_EQ(count(page, "<ul>"), count(page, "</ul>"));
}

}  // namespace
