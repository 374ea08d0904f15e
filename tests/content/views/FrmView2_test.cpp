#include "content/views/FrmView2.h"

#include <gtest/gtest.h>

#include "ViewFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> twoColumns = {{u"品名"_s, u"2400"_s}, {u"价格"_s, u"1200"_s}};

class FrmView2Test : public ViewFixture<FrmView2> {
 protected:
  /// One service of so many columns, its columns, and its data.
  void service(const QString& zidu, const QList<QStringList>& rows) {
    portal.answerWith(
        {page({{u"3"_s, u" 纸张 "_s, u"1"_s, zidu, u"ZHIJ"_s}}), page(twoColumns), page(rows)});
  }
  QList<QStringList> rows() {
    QList<QStringList> all;
    for (int row = 0; row < data().itemCount(); ++row) {
      all.append(QStringList{data().itemAt(row)->key()} + dataRow(row));
    }
    return all;
  }
};

TEST_F(FrmView2Test, LoadAsksForTheServicesWithoutAConditionByteByByte) {
  service(u"3"_s, {});
  EXPECT_EQ(screen().windowTitle(), u"固定信息"_s);
  EXPECT_EQ(screen().objectName(), u"FrmView2"_s);
  ASSERT_EQ(portal.requests().size(), 1);
  EXPECT_TRUE(portal.requests()[0].startsWith(
      "GET /_vti_login/_vti_detail_field_s.asp?STABLE=%46%55%57%55%32&STRDATA="
      "%69%64%2C%66%75%77%75%2C%77%65%7A%68%2C%7A%69%64%75%2C%62%69%61%6F%2C HTTP/1.1\r\n"))
      << portal.requests()[0].toStdString();
}

TEST_F(FrmView2Test, ServicesAreListedTrimmedUnderTheirIds) {
  service(u"3"_s, {});
  ASSERT_EQ(services().itemCount(), 1);
  const ListItem* item = services().itemAt(0);
  EXPECT_EQ(item->key(), u"3 ID"_s);
  EXPECT_EQ(item->text(), u"纸张"_s);
  EXPECT_EQ(item->subItem(1), u"1"_s);
  EXPECT_EQ(item->subItem(2), u"3"_s);
  EXPECT_EQ(item->subItem(3), u"ZHIJ"_s);
  for (int column = 0; column < services().model()->columnCount(); ++column) {
    EXPECT_EQ(services().model()->headerData(column, Qt::Horizontal).toString(), u"名称"_s);
  }
  EXPECT_EQ(services().columnWidth(0), services().width() - 4);
}

TEST_F(FrmView2Test, AClickAsksForTheColumnsThenTheTableAndShowsIt) {
  service(u"3"_s, {{u"11"_s, u" 铜版纸 "_s, u"6150"_s}, {u"12"_s, u"胶版纸"_s, u"5900"_s}});
  clickService(0);
  ASSERT_EQ(targets().size(), 3);
  EXPECT_EQ(targets()[1], rowsTarget(u"ZIDU2"_s, u"bimi,chdu,"_s, u"FUWU_ID=3"_s));
  EXPECT_EQ(targets()[2], u"/_vti_login/_vti_detail.asp?STABLE=%5A%48%49%4A&STRUCTN=%33"_s);
  EXPECT_EQ(headers(), QStringList({u"品名"_s, u"价格"_s}));
  EXPECT_EQ(data().header()->length(), data().viewport()->width());
  data().setSpreadsColumns(false);
  EXPECT_EQ(data().columnWidth(0), 160);
  EXPECT_EQ(rows(), QList<QStringList>({{u"11 ID"_s, u"铜版纸"_s, u"6150"_s},
                                        {u"12 ID"_s, u"胶版纸"_s, u"5900"_s}}));
}

TEST_F(FrmView2Test, TheKeyCellIsOneOfTheColumns) {
  const QList<QStringList> sent = {{u"1"_s, u"a"_s, u"b"_s, u"c"_s},
                                   {u"2"_s, u"d"_s, u"e"_s, u"f"_s}};
  const QList<std::pair<QString, QList<QStringList>>> cases = {
      {u"1"_s, {{u"1 ID"_s, u""_s}, {u"2 ID"_s, u""_s}}},
      {u"2"_s, {{u"1 ID"_s, u"a"_s}, {u"2 ID"_s, u"d"_s}}},
      {u"3"_s, {{u"1 ID"_s, u"a"_s, u"b"_s}, {u"2 ID"_s, u"d"_s, u"e"_s}}},
      {u"4"_s, {{u"1 ID"_s, u"a"_s, u"b"_s, u"c"_s}, {u"2 ID"_s, u"d"_s, u"e"_s, u"f"_s}}}};
  for (const auto& [zidu, wanted] : cases) {
    unload<FrmView2>();
    service(zidu, sent);
    clickService(0);
    EXPECT_EQ(rows(), wanted) << zidu.toStdString();
    EXPECT_EQ(headers().size(), 2) << "sub-items beyond the headers are kept";
  }
}

TEST_F(FrmView2Test, MissingCellsComeFromTheNextRowAndALastRowThatFailsIsNotShown) {
  service(u"3"_s,
          {{u"1"_s, u"a"_s}, {u"2"_s, u"b"_s, u"c"_s}, {u"3"_s, u"d"_s, u"e"_s}, {u"4"_s, u"f"_s}});
  clickService(0);
  EXPECT_EQ(rows(), QList<QStringList>({{u"1 ID"_s, u"a"_s, u"2"_s}, {u"3 ID"_s, u"d"_s, u"e"_s}}));
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(FrmView2Test, ACountThatIsNoneLeavesTheColumnsAndAsksForNoTable) {
  for (const QString& zidu : {u""_s, u"三"_s, u"70000"_s}) {
    unload<FrmView2>();
    portal.clear();
    service(zidu, {{u"1"_s, u"a"_s}});
    clickService(0);
    EXPECT_EQ(headers().size(), 2);
    EXPECT_TRUE(rows().isEmpty());
    EXPECT_EQ(targets().size(), 2);
  }
}

TEST_F(FrmView2Test, AnAnswerWithoutTableLeavesTheColumnsWithoutRowsAndWithoutAMessage) {
  service(u"3"_s, {{u"1"_s, u"a"_s, u"b"_s}});
  clickService(0);
  ASSERT_EQ(data().itemCount(), 1);
  portal.answerWith({page(twoColumns), "<html>error</html>"});
  clickService(0);
  EXPECT_EQ(headers().size(), 2);
  EXPECT_EQ(data().itemCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(screen().StatusBar1->text(), QString());
}

TEST_F(FrmView2Test, AServiceWithoutColumnsGivesRowsWithNoHeadersToShowThem) {
  portal.answerWith(
      {page({{u"3"_s, u"纸张"_s, u"1"_s, u"2"_s, u"ZHIJ"_s}}), page({}), page({{u"1"_s, u"a"_s}})});
  clickService(0);
  EXPECT_TRUE(headers().isEmpty());
  EXPECT_EQ(rows(), QList<QStringList>({{u"1 ID"_s, u"a"_s}}));
}

TEST_F(FrmView2Test, APortalThatNamesColumnsWithoutEndGetsTheFirstTwoHundred) {
  QList<QStringList> columns;
  for (int column = 1; column <= 1500; ++column)
    columns.append({QString::number(column), u"900"_s});
  portal.answerWith({page({{u"3"_s, u"纸张"_s, u"1"_s, u"3"_s, u"ZHIJ"_s}}), page(columns),
                     page({{u"1"_s, u"a"_s, u"b"_s}})});
  clickService(0);
  ASSERT_EQ(headers().size(), 200);
  EXPECT_EQ(headers().constLast(), u"200"_s);
  EXPECT_EQ(rows(), QList<QStringList>({{u"1 ID"_s, u"a"_s, u"b"_s}}));
}

TEST_F(FrmView2Test, ExitLeaves) {
  service(u"3"_s, {});
  QTest::mouseClick(screen().Toolbar1->widgetForAction(screen().Toolbar1->button(u"Exit"_s)),
                    Qt::LeftButton);
  EXPECT_FALSE(isLoaded<FrmView2>());
}

}  // namespace
