#include "reports/engine/Exporter.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <csignal>

#include "tests/reports/engine/ReportFixtures.h"
#include "values/failure.h"

using namespace qinghe;
using namespace fixtures;
using Kind = ReportBox::Kind;

namespace {

const QStringList kGoodsColumns = {u"XIMU_NO"_s, u"XIMU"_s, u"GESH"_s, u"JIGEX"_s};

std::shared_ptr<MemorySet> goods(int count) {
  auto set = memorySet({}, kGoodsColumns);
  for (int i = 1; i <= count; ++i) {
    set->add({u"97870200%1"_s.arg(i, 5, 10, QLatin1Char('0')), u"书名%1"_s.arg(i),
              u"%1"_s.arg(i % 40), u"%1.50"_s.arg(i % 90)});
  }
  return set;
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

/// As a reader by the rules of the format takes it apart.
QList<QStringList> parseCsv(const QString& text) {
  QList<QStringList> rows;
  QStringList row;
  QString cell;
  bool quoted = false;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (quoted) {
      if (c != u'"') {
        cell += c;
      } else if (i + 1 < text.size() && text[i + 1] == u'"') {
        cell += text[++i];
      } else {
        quoted = false;
      }
    } else if (c == u'"') {
      quoted = true;
    } else if (c == u',') {
      row << cell;
      cell.clear();
    } else if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
      ++i;
      row << cell;
      cell.clear();
      rows << row;
      row.clear();
    } else {
      cell += c;
    }
  }
  EXPECT_TRUE(cell.isEmpty() && row.isEmpty()) << "the last line has no end";
  return rows;
}

class Exporter : public testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }
  QStringList files() const {
    return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder_;
};

using Export = ExportResult (*)(PageLayout&, const QString&);
const struct {
  const char* name;
  Export run;
} kExports[] = {
    {"pdf", [](PageLayout& pages, const QString& path) { return exportPdf(pages, path); }},
    {"html", exportHtml},
    {"csv", exportCsv},
};

TEST_F(Exporter, WritesCsvWithMarkTitlesAndRows) {
  PageLayout pages(rptXIMU(), goods(2), kDay);
  ASSERT_TRUE(exportCsv(pages, path(u"a.csv"_s)).ok());
  EXPECT_EQ(contentOf(path(u"a.csv"_s)), QByteArray("\xEF\xBB\xBF"
                                                    "编号:,名称:,包箱:,价格:,数量:,金额:\r\n"
                                                    "9787020000001,书名1,1,1.50,,\r\n"
                                                    "9787020000002,书名2,2,2.50,,\r\n"));
}

TEST_F(Exporter, WritesCsvTitlesAloneWithoutRows) {
  PageLayout pages(rptXIMU(), nullptr, kDay);
  ASSERT_TRUE(exportCsv(pages, path(u"a.csv"_s)).ok());
  EXPECT_EQ(contentOf(path(u"a.csv"_s)), QByteArray("\xEF\xBB\xBF"
                                                    "编号:,名称:,包箱:,价格:,数量:,金额:\r\n"));
  PageLayout statistics(rptGOKU_MONTH(), nullptr, kDay);
  ASSERT_TRUE(exportCsv(statistics, path(u"b.csv"_s)).ok());
  EXPECT_EQ(contentOf(path(u"b.csv"_s)),
            QByteArray("\xEF\xBB\xBF"
                       ",数量:,金额:,退货数量:,退货金额:,应收:,退货应收:\r\n"))
      << "no totals of nothing";
}

TEST_F(Exporter, QuotesAndGuardsCsvCellsSoThatTheTextCanBeHadBack) {
  const struct {
    QString text, cell;
  } cases[] = {
      {u"a,b"_s, u"\"a,b\""_s},
      {u"say \"hi\""_s, u"\"say \"\"hi\"\"\""_s},
      {u"two\r\nlines"_s, u"\"two\r\nlines\""_s},
      {u" blank"_s, u"\" blank\""_s},
      {u"=1+1"_s, u"'=1+1"_s},
      {u"=HYPERLINK(\"http://x\")"_s, u"\"'=HYPERLINK(\"\"http://x\"\")\""_s},
      {u"@SUM(A1)"_s, u"'@SUM(A1)"_s},
      {u"+cmd"_s, u"'+cmd"_s},
      {u"-cmd"_s, u"'-cmd"_s},
      {u"\tx"_s, u"'\tx"_s},
      {u"'quoted"_s, u"''quoted"_s},
      {u"-12.50"_s, u"-12.50"_s},
      {u"+5"_s, u"+5"_s},
      {u"010"_s, u"010"_s},
      {u"中文"_s, u"中文"_s},
  };
  for (const auto& c : cases) {
    PageLayout pages(flatLayout(), memorySet({}, {u"n"_s}, {{c.text}}), kDay);
    ASSERT_TRUE(exportCsv(pages, path(u"a.csv"_s)).ok());
    const QString text = QString::fromUtf8(contentOf(path(u"a.csv"_s)));
    EXPECT_EQ(text, u"\r\n"_s + c.cell + u"\r\n"_s);
    QString back = parseCsv(text)[1][0];
    if (back.startsWith(u'\'')) back.remove(0, 1);
    EXPECT_EQ(back, c.text);
  }
}

TEST_F(Exporter, WritesCsvSumsUnderTheirColumns) {
  PageLayout pages(rptGOKU_LEBI(), statisticsTree(), kDay);
  ASSERT_TRUE(exportCsv(pages, path(u"a.csv"_s)).ok());
  const auto rows = parseCsv(QString::fromUtf8(contentOf(path(u"a.csv"_s))));
  ASSERT_EQ(rows.size(), 1 + 5 + 3 + 2 + 1);
  EXPECT_EQ(rows[0], (QStringList{QString(), u"数量:"_s, u"金额:"_s, u"退货数量:"_s, u"退货金额:"_s,
                                  u"应收:"_s, u"退货应收:"_s}));
  EXPECT_EQ(rows[1], (QStringList{QString(), u"2.000"_s, u"50.500"_s, u"0.000"_s, u"0.000"_s,
                                  u"40.250"_s, u"0.000"_s}));
  EXPECT_EQ(rows[3], (QStringList{u"红楼梦"_s, u"5.000"_s, u"126.250"_s, u"0.000"_s, u"0.000"_s,
                                  u"100.750"_s, u"0.000"_s}));
  EXPECT_EQ(rows[7], (QStringList{u"文学"_s, QString(), u"246.250"_s, QString(), u"-80.000"_s,
                                  u"190.750"_s, u"-60.000"_s}));
  EXPECT_EQ(rows[11], (QStringList{u"总计"_s, QString(), u"346.249"_s, QString(), u"-80.000"_s,
                                   u"270.750"_s, u"-60.000"_s}));
}

TEST_F(Exporter, WritesCsvOfAnOrderWithItsHeaderAboveTheLines) {
  auto top = memorySet(u"Cmd_Gohu"_s, {u"GOHU_NO"_s, u"GHRQ"_s});
  top->add({u"D-1"_s, u"2024-3-9"_s});
  top->hang(memorySet(u"Cmd_goku"_s, {u"XIMU"_s, u"SHLI"_s}, {{u"围城"_s, 3.0}}));
  PageLayout pages(rptGOHU(), top, kDay);
  ASSERT_TRUE(exportCsv(pages, path(u"a.csv"_s)).ok());
  const auto rows = parseCsv(QString::fromUtf8(contentOf(path(u"a.csv"_s))));
  EXPECT_EQ(rows.first(), (QStringList{u"编号:"_s, u"条码:"_s, u"名称:"_s, u"定价:"_s, u"折扣:"_s,
                                       u"数量:"_s, u"金额:"_s, u"应收:"_s, u"包箱:"_s, u"零:"_s}));
  EXPECT_TRUE(rows.contains(QStringList{u"订货单号:"_s, u"D-1"_s, u"销售日期:"_s, u"2024-3-9"_s}));
  EXPECT_EQ(rows.last()[2], u"围城"_s);
  EXPECT_EQ(rows.last()[5], u"3"_s);
}

TEST_F(Exporter, WritesWellFormedHtmlWithAllTextEscaped) {
  auto data = memorySet({}, kGoodsColumns);
  data->add({u"1"_s, u"<script>alert('1')</script> & \"x\""_s, u"\x01\xFFFE"_s,
             QString(QChar(0xD800)) + u"尾"_s});
  ReportLayout layout = rptXIMU();
  layout.caption = u"<单> & \"词\""_s;
  PageLayout pages(layout, data, kDay);
  ASSERT_TRUE(exportHtml(pages, path(u"a.html"_s)).ok());
  const QByteArray html = contentOf(path(u"a.html"_s));
  EXPECT_TRUE(html.startsWith("<!DOCTYPE html>"));
  EXPECT_FALSE(html.contains("<script"));

  QXmlStreamReader reader(html);
  QStringList cells, titles, headings;
  QString title;
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    if (reader.name() == u"td") cells << reader.readElementText();
    if (reader.name() == u"th") titles << reader.readElementText();
    if (reader.name() == u"h1") headings << reader.readElementText();
    if (reader.name() == u"title") title = reader.readElementText();
  }
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
  EXPECT_EQ(title, layout.caption);
  EXPECT_EQ(headings, QStringList{u"商品目录/报价单"_s});
  EXPECT_EQ(titles,
            (QStringList{u"编号:"_s, u"名称:"_s, u"包箱:"_s, u"价格:"_s, u"数量:"_s, u"金额:"_s}));
  EXPECT_EQ(cells, (QStringList{u"1"_s, u"<script>alert('1')</script> & \"x\""_s, u"\xFFFD\xFFFD"_s,
                                u"\xFFFD尾"_s, QString(), QString()}));
}

TEST_F(Exporter, WritesHtmlOfGroupsWithFooterRows) {
  PageLayout pages(rptGOKU_LEBI(), statisticsTree(), kDay);
  ASSERT_TRUE(exportHtml(pages, path(u"a.html"_s)).ok());
  QXmlStreamReader reader(contentOf(path(u"a.html"_s)));
  int rows = 0, sums = 0;
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement || reader.name() != u"tr") continue;
    ++rows;
    if (reader.attributes().value(u"class"_s) == u"sum") ++sums;
  }
  EXPECT_FALSE(reader.hasError());
  EXPECT_EQ(rows, 1 + 5 + 6);
  EXPECT_EQ(sums, 6);
}

TEST_F(Exporter, WritesPdfWithAllPagesOnReportPaper) {
  PageLayout pages(rptXIMU(), goods(80), kDay);
  ASSERT_TRUE(exportPdf(pages, path(u"a.pdf"_s)).ok());
  const QByteArray pdf = contentOf(path(u"a.pdf"_s));
  EXPECT_TRUE(pdf.startsWith("%PDF-1."));
  EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF"));
  EXPECT_EQ(pdf.count("/Type /Page\n"), pages.pageCount());
  EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595"));
}

TEST_F(Exporter, WritesLandscapePdfForWideReports) {
  PageLayout pages(rptXIMU_GOKU(), nullptr, kDay);
  ASSERT_TRUE(exportPdf(pages, path(u"a.pdf"_s)).ok());
  EXPECT_TRUE(contentOf(path(u"a.pdf"_s)).contains("/MediaBox [0 0 842"));
}

TEST_F(Exporter, WritesOnlyThePagesOfARange) {
  PageLayout pages(rptXIMU(), goods(200), kDay);
  ASSERT_GE(pages.pageCount(), 4);
  const struct {
    PageRange range;
    int pages;
  } cases[] = {{{2, 3}, 2},
               {{1, 1}, 1},
               {{3, 0}, pages.pageCount() - 2},
               {{2, 999}, pages.pageCount() - 1},
               {{99, 1}, 1}};
  for (const auto& c : cases) {
    ASSERT_TRUE(exportPdf(pages, path(u"a.pdf"_s), c.range).ok());
    EXPECT_EQ(contentOf(path(u"a.pdf"_s)).count("/Type /Page\n"), c.pages);
  }
}

TEST_F(Exporter, PutsEachFontIntoThePdfOnceHoweverManyPages) {
  PageLayout few(rptXIMU(), goods(80), kDay);
  PageLayout many(rptXIMU(), goods(2000), kDay);
  ASSERT_TRUE(exportPdf(few, path(u"few.pdf"_s)).ok());
  ASSERT_TRUE(exportPdf(many, path(u"many.pdf"_s)).ok());
  const QByteArray pdf = contentOf(path(u"many.pdf"_s));
  EXPECT_EQ(pdf.count("/FontDescriptor\n"),
            contentOf(path(u"few.pdf"_s)).count("/FontDescriptor\n"));
  EXPECT_LE(pdf.count("/Type /FontDescriptor"), 2);
  EXPECT_LT(pdf.size() / many.pageCount(), 16 * 1024);
}

/// The characters that the glyph maps of the file name.
QSet<ushort> charactersOf(const QByteArray& pdf) {
  QSet<ushort> characters;
  for (qsizetype at = pdf.indexOf("begincmap"); at >= 0; at = pdf.indexOf("begincmap", at + 1)) {
    const QString map = QString::fromLatin1(pdf.mid(at, pdf.indexOf("endcmap", at) - at));
    const QRegularExpression arrays(u"\\[([^\\]]*)\\]"_s), code(u"<([0-9A-F]{4})>"_s);
    for (const auto& array : arrays.globalMatch(map)) {
      for (const auto& one : code.globalMatch(array.captured(1))) {
        characters << one.captured(1).toUShort(nullptr, 16);
      }
    }
  }
  return characters;
}

TEST_F(Exporter, LetsAReaderOfThePdfFindTheWordsAsTheyWereWritten) {
  const QString words = u"女子足金水火日月 商品目录"_s;
  auto data = memorySet({}, kGoodsColumns, {{u"1"_s, words, u"2"_s, u"3"_s}});
  PageLayout pages(rptXIMU(), data, kDay);
  ASSERT_TRUE(exportPdf(pages, path(u"a.pdf"_s)).ok());
  const auto characters = charactersOf(contentOf(path(u"a.pdf"_s)));
  for (const QChar c : words)
    EXPECT_TRUE(characters.contains(c.unicode())) << static_cast<int>(c.unicode());
  for (const ushort code : characters) EXPECT_FALSE(code >= 0x2E80 && code < 0x2FE0) << code;
}

TEST_F(Exporter, LetsAReaderOfThePdfFindFiguresBehindALetter) {
  const QString number = u"G3456789"_s;  // figures that stand nowhere else on the page
  auto data = memorySet({}, kGoodsColumns, {{u"x"_s, number, u"x"_s, u"x"_s}});
  PageLayout pages(rptXIMU(), data, QDate(2000, 1, 1));
  ASSERT_TRUE(exportPdf(pages, path(u"a.pdf"_s)).ok());
  const auto characters = charactersOf(contentOf(path(u"a.pdf"_s)));
  for (const QChar c : number) {
    EXPECT_TRUE(characters.contains(c.unicode())) << static_cast<int>(c.unicode());
  }
}

TEST_F(Exporter, KeepsTheOldFileAndNothingElseWhenTheDiskIsFull) {
  // A limit on the size of files fails a write in the middle as a full disk does.
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  for (const auto& format : kExports) {
    const QString target = path(u"old"_s);
    QFile old(target);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    PageLayout pages(rptXIMU(), goods(3000), kDay);
    rlimit small = before;
    small.rlim_cur = 8192;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const ExportResult result = format.run(pages, target);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_FALSE(result.ok()) << format.name;
    EXPECT_TRUE(result.error.startsWith(u"文件无法写入："_s + target))
        << result.error.toStdString();
    EXPECT_EQ(contentOf(target), QByteArray("old")) << format.name;
    EXPECT_EQ(files(), QStringList{u"old"_s}) << format.name;
  }
  std::signal(SIGXFSZ, SIG_DFL);
}

TEST_F(Exporter, TellsOfPathsThatCannotBeWritten) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"folder"_s));
  for (const auto& format : kExports) {
    for (const QString& target : {path(u"no/such/folder/a"_s), path(u"folder"_s), u"/dev/full"_s}) {
      PageLayout pages(rptXIMU(), goods(3000), kDay);
      const ExportResult result = format.run(pages, target);
      EXPECT_FALSE(result.ok()) << format.name << " " << target.toStdString();
      EXPECT_TRUE(result.error.contains(target));
    }
    EXPECT_TRUE(files().isEmpty());
    EXPECT_FALSE(QFileInfo(u"/dev/full"_s).isFile());
  }
}

/// Fails as a store does whose file has gone.
class BrokenSet : public MemorySet {
 public:
  BrokenSet() : MemorySet({}, kGoodsColumns) { add({1, 2, 3, 4}); }
  QVariant value(qint64, int) const override { throw Failure(7, u"读取数据出错"_s); }
};

TEST_F(Exporter, LeavesNoFileWhenTheDataCannotBeRead) {
  for (const auto& format : kExports) {
    PageLayout pages(rptXIMU(), std::make_shared<BrokenSet>(), kDay);
    const ExportResult result = format.run(pages, path(u"a"_s));
    EXPECT_TRUE(result.error.contains(u"读取数据出错"_s)) << format.name;
    EXPECT_TRUE(files().isEmpty()) << format.name;
  }
}

}  // namespace
