#include "portal/page_charset.h"

#include <QStringEncoder>

#include "TransportFixture.h"
#include "values/code_page.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

const QString price = u"銅版紙 6,150 元"_s;  // in all charsets below

QByteArray in(const char* charset, const QString& text) {
  QStringEncoder encoder(charset);
  EXPECT_TRUE(encoder.isValid()) << charset;
  return encoder(text);
}

struct Declaration {
  std::string name;
  QByteArray contentType;
  QByteArray head;      ///< of the page, in ASCII
  const char* written;  ///< what the page is really in
};

class DeclaredPage : public testing::TestWithParam<Declaration> {};

TEST_P(DeclaredPage, IsReadInItsCharset) {
  const auto& page = GetParam();
  EXPECT_EQ(declaredText(page.head + in(page.written, price), page.contentType),
            QString::fromLatin1(page.head) + price);
}

INSTANTIATE_TEST_SUITE_P(
    Charsets, DeclaredPage,
    testing::Values(
        Declaration{"Header", "text/html; charset=utf-8", "<td>", "UTF-8"},
        Declaration{"HeaderInCapitalsAndQuotes", "TEXT/HTML;Charset=\"UTF-8\"", "", "UTF-8"},
        Declaration{"HeaderWithBlanks", "text/html ; charset = 'Big5' ", "", "Big5"},
        Declaration{"HeaderBehindOtherParameters", "text/html; level=1; charset=Shift_JIS", "",
                    "Shift_JIS"},
        Declaration{"HeaderBeforeMeta", "text/html; charset=gb18030", "<meta charset=utf-8>",
                    "GB18030"},
        Declaration{"Meta", "text/html", "<html><head><META CharSet='UTF-8'><title>", "UTF-8"},
        Declaration{"MetaOfAnHttpHeader", "",
                    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=big5\">",
                    "Big5"},
        Declaration{"MetaWithoutQuotes", "",
                    "<meta content=text/html;charset=utf-8 http-equiv=content-type>", "UTF-8"},
        Declaration{"MetaThatSaysUtf16CanBeNone", "", "<meta charset=utf-16le>", "UTF-8"},
        Declaration{"XmlDeclaration", "", "<?xml version=\"1.0\" encoding=\"UTF-8\"?><html>",
                    "UTF-8"},
        Declaration{"Gb2312", "text/html; charset=gb2312", "", "GBK"},
        Declaration{"CodePageByNumber", "text/html; charset=CP936", "", "GBK"},
        Declaration{"NoneIsTheCodePage", "", "<html><body>charset=utf-8", "GBK"},
        Declaration{"ATypeAloneIsTheCodePage", "text/html", "", "GBK"},
        Declaration{"AnUnknownOneIsTheCodePage", "text/html; charset=klingon", "", "GBK"},
        Declaration{"AnUnknownHeaderLeavesTheWordToMeta", "text/html; charset=klingon",
                    "<meta charset=utf-8>", "UTF-8"},
        Declaration{"AnEmptyOneIsTheCodePage", "text/html; charset=", "<meta charset=''>", "GBK"}),
    [](const auto& parameters) { return parameters.param.name; });

TEST(DeclaredPageText, AByteOrderMarkIsBelievedBeforeAllElse) {
  const QByteArray type = "text/html; charset=gbk";
  EXPECT_EQ(declaredText("\xEF\xBB\xBF" + in("UTF-8", price), type), price);
  QStringEncoder wide("UTF-16LE");
  const QByteArray text = wide(price);
  EXPECT_EQ(declaredText(QByteArray("\xFF\xFE", 2) + text, type), price);
}

TEST(DeclaredPageText, ADeclarationFarBehindTheBeginningIsNone) {
  const QByteArray far = QByteArray(9000, ' ') + "<meta charset=utf-8>";
  EXPECT_EQ(declaredText(far + toCodePage(price), {}), QString::fromLatin1(far) + price);
}

TEST(DeclaredPageText, BytesThatAreNoneOfTheCharsetAreReplacedAndTheRestIsRead) {
  const QString text = declaredText("<td>\xFF\xFE</td><td>ok</td>", "text/html; charset=utf-8");
  EXPECT_TRUE(text.endsWith(u"</td><td>ok</td>"_s));
  EXPECT_TRUE(text.contains(QChar(QChar::ReplacementCharacter)));
}

TEST(DeclaredPageText, APageCutAnywhereAndHostileDeclarationsAreRead) {
  const QByteArray page = "<meta charset=utf-8><td>" + in("UTF-8", price) + "</td>";
  for (qsizetype length = 0; length <= page.size(); ++length) declaredText(page.first(length), {});
  declaredText("<meta " + QByteArray(100'000, ' '), {});
  declaredText("<meta charset=" + QByteArray(100'000, 'x'), "; charset=" + QByteArray(9000, 'y'));
  declaredText(QByteArray("\0\0\xFE\xFF\0", 5), QByteArray("\0charset\xFF", 9));
  EXPECT_EQ(declaredText({}, {}), QString());
}

class ForeignPage : public TransportFixture {};

TEST_F(ForeignPage, IsReadByItsDeclarationDirectAndThroughTheRelay) {
  const QByteArray page = "&lt;td&gt;" + in("UTF-8", price) + "<br>";
  answer("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=UTF-8\r\nContent-Length: " +
         QByteArray::number(page.size()) + "\r\n\r\n" + page);
  for (const qint16 mode : {qint16(1), qint16(2)}) {
    EXPECT_EQ(html.GetUrl(mode, url(u"x"_s), PageText::Declared), u"<td>"_s + price + u"\r\n"_s);
  }
}

TEST_F(ForeignPage, TheHeaderIsThatOfTheLastAnswerOfARedirect) {
  server.setHandler([](const QByteArray& request) {
    Reply reply;
    if (request.startsWith("GET /b")) {
      reply.bytes = ScriptedServer::ok(toCodePage(price));
    } else {
      reply.bytes =
          "HTTP/1.1 302 Found\r\nContent-Type: text/html; charset=utf-8\r\nLocation: /b\r\n"
          "Content-Length: 0\r\n\r\n";
    }
    return reply;
  });
  EXPECT_EQ(html.GetUrl(2, url(u"a"_s), PageText::Declared), price);
}

TEST_F(ForeignPage, ThePortalsOwnPagesAreInTheCodePageWhateverTheirHeadersSay) {
  const auto page = toCodePage(price);
  answer("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
         QByteArray::number(page.size()) + "\r\n\r\n" + page);
  EXPECT_EQ(html.GetUrl(2, url(u"x"_s)), price);
}

}  // namespace
