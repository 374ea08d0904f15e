#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "orders/chooser/frmGetCYXXX.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QStringList book = {u"大学语文"_s,  u"YW01"_s, u"978-7-7"_s,    u"教材"_s,
                          u"12"_s,        u"12.5"_s, u"满百册八折"_s, u"第一行<br>第二行"_s,
                          u"16开,平装,"_s};
const QList<QStringList> attributes = {
    {u"3"_s, u" 开本 "_s}, {u"5"_s, u"装帧"_s}, {u"8"_s, u"版次"_s}};

class Details : public ClientFixture {
 protected:
  Details() {
    beCompany(1, 0);
    state.gGoodsId = 7;
    state.gPartnerId = 31;
    state.gBrandId = 4;
  }

  template <class Screen>
  Screen& show() {
    auto& form = defaultInstance<Screen>();
    form.showForm();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    return form;
  }
  static QString target(const QString& folder, const QString& table, const QString& fields,
                        const QString& condition) {
    return u"/"_s + folder + u"/_vti_detail_field_s.asp?STABLE="_s +
           UrlEncodeField(QString(table)) + u"&STRDATA="_s + UrlEncodeField(QString(fields)) +
           u"&STOTHER="_s + UrlEncodeField(QString(condition));
  }
  static QString goodsTarget() {
    return target(u"_vti_product"_s, u"XIMU"_s,
                  u"ximu,ximu_bh,ximu_no,lebi,gesh,jigex,zhko,jish,shxi,"_s, u"id=7"_s);
  }
  static QStringList names(const DetailForm& form) {
    QStringList result;
    for (int row = 0; row < form.ListView1->itemCount(); ++row) {
      result << form.ListView1->itemAt(row)->text();
    }
    return result;
  }
  static QStringList contents(const DetailForm& form) {
    QStringList result;
    for (int row = 0; row < form.ListView1->itemCount(); ++row) {
      result << form.ListView1->itemAt(row)->subItem(1);
    }
    return result;
  }
  static void expectColumns(const DetailForm& form, int nameWidth) {
    const auto* model = form.ListView1->model();
    ASSERT_EQ(model->columnCount(), 2);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), u"内容"_s);
    EXPECT_EQ(form.ListView1->columnWidth(0), nameWidth);
  }
};

TEST_F(Details, GoodsShowTheirFieldsIntroductionAndAttributes) {
  portal.answerWith({page({book}), page(attributes)});
  const auto& form = show<frmGetXIMUX>();
  EXPECT_EQ(form.windowTitle(), u"商品详细信息"_s);
  expectColumns(form, 1600 / 15);
  EXPECT_EQ(names(form), (QStringList{u"名称"_s, u"编号"_s, u"编码"_s, u"类别"_s, u"包箱"_s,
                                      u"价格"_s, u"折扣"_s, u"开本"_s, u"装帧"_s, u"版次"_s}));
  EXPECT_EQ(contents(form), (book.first(7) + QStringList{u"16开"_s, u"平装"_s, {}}))
      << "fewer values than attributes leave the last rows empty";
  EXPECT_EQ(form.Text2->text(), u"第一行\r\n第二行"_s);
  EXPECT_EQ(form.Text1->text(), u"16开,平装,"_s);
  EXPECT_FALSE(form.Text1->isVisible());
  EXPECT_EQ(form.ListView1->itemAt(0)->icon(), u"Shxi"_s);
  EXPECT_EQ(form.ListView1->itemAt(7)->icon(), u"Shxi"_s);
  EXPECT_EQ(form.ListView1->itemAt(7)->key(), u"3 ID"_s);
}

TEST_F(Details, TheContentsFillTheListAndGrowWithIt) {
  portal.answerWith({page({book}), page(attributes)});
  auto& form = show<frmGetXIMUX>();
  const auto* list = form.ListView1;
  const auto filled = [list] {
    return list->columnWidth(0) + list->columnWidth(1) == list->viewport()->width();
  };
  EXPECT_TRUE(filled());
  const int before = list->width();
  form.resize(form.width() + 200, form.height());
  EXPECT_TRUE(QTest::qWaitFor([list, before] { return list->width() == before + 200; }, 60'000));
  EXPECT_TRUE(QTest::qWaitFor(filled, 60'000));
  EXPECT_EQ(list->columnWidth(0), 1600 / 15);
}

TEST_F(Details, TheIntroductionStandsBelowTheListBehindItsName) {
  portal.answerWith({page({book}), page(attributes)});
  auto& form = show<frmGetXIMUX>();
  const auto* label = form.findChild<QLabel*>();
  EXPECT_EQ(label->text(), u"介绍"_s);
  EXPECT_EQ(label->buddy(), form.Text2->editor());
  EXPECT_GT(label->y(), form.ListView1->geometry().bottom());
  EXPECT_GT(form.Text2->y(), label->geometry().bottom() - 1);
  EXPECT_GT(form.commandT->y(), form.Text2->geometry().bottom());
}

TEST_F(Details, GoodsAskForTheirRowAndThenForTheAttributesOfTheOwnIndustry) {
  portal.answerWith({page({book}), page(attributes)});
  show<frmGetXIMUX>();
  EXPECT_EQ(targets(), (QStringList{goodsTarget(), target(u"_vti_product"_s, u"SHXI"_s,
                                                          u"id,shxi,"_s, u"HAYE_ID=3"_s)}));
}

struct AttributeCase {
  std::string name;
  QString values;
  QStringList shown;
};

class AttributeValues : public Details, public testing::WithParamInterface<AttributeCase> {};

TEST_P(AttributeValues, GoToTheAttributesInTheirPlaces) {
  auto row = book;
  row.last() = GetParam().values;
  portal.answerWith({page({row}), page(attributes)});
  EXPECT_EQ(contents(show<frmGetXIMUX>()).mid(7), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Details, AttributeValues,
    testing::Values(AttributeCase{"None", u""_s, {{}, {}, {}}},
                    AttributeCase{"All", u"a,b,c,"_s, {u"a"_s, u"b"_s, u"c"_s}},
                    AttributeCase{"ATailWithoutAComma", u"a,b"_s, {u"a"_s, {}, {}}},
                    AttributeCase{"OnlyATail", u"a"_s, {{}, {}, {}}},
                    AttributeCase{"AnEmptyPlace", u"a,,c,"_s, {u"a"_s, {}, u"c"_s}},
                    AttributeCase{"MoreThanAttributes", u"a,b,c,d,e,"_s, {u"a"_s, u"b"_s, u"c"_s}}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(Details, GoodsThatThePortalDoesNotKnowLeaveTheRowsEmpty) {
  portal.answerWith({page({}), page(attributes)});
  const auto& form = show<frmGetXIMUX>();
  EXPECT_EQ(form.ListView1->itemCount(), 10);
  EXPECT_EQ(contents(form).join(QString()), QString());
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(Details, AnAnswerThatBreaksOffKeepsWhatCame) {
  portal.answerWith({page({book.first(3)}), "<html>gone</html>"});
  const auto& form = show<frmGetXIMUX>();
  EXPECT_EQ(contents(form), (book.first(3) + QStringList{{}, {}, {}, {}}));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Details, EveryOpeningReadsAnew) {
  portal.answerWith({page({book}), page(attributes)});
  QTest::mouseClick(show<frmGetXIMUX>().commandT, Qt::LeftButton);
  EXPECT_FALSE(isLoaded<frmGetXIMUX>());
  state.gGoodsId = 9;
  auto other = book;
  other.first() = u"高等数学"_s;
  portal.answerWith({page({other}), page(attributes)});
  EXPECT_EQ(contents(show<frmGetXIMUX>()).first(), u"高等数学"_s);
}

TEST_F(Details, ABrandAsksForTheIdThatNobodySetsAndStaysEmpty) {
  portal.answerWith({page({})});
  const auto& form = show<frmGetCYXXX>();
  EXPECT_EQ(form.windowTitle(), u"品牌详细信息"_s);
  expectColumns(form, 1200 / 15);
  EXPECT_EQ(names(form), (QStringList{u"名称"_s, u"编号"_s, u"价格"_s, u"说明"_s, u"介绍"_s}));
  EXPECT_EQ(contents(form).join(QString()), QString());
  EXPECT_EQ(targets(), (QStringList{target(u"_vti_product"_s, u"MUMU"_s,
                                           u"ximu,ximu_no,jigex,zhko,jish,"_s, u"id=0"_s)}));
}

TEST_F(Details, ABrandZeroOfThePortalIsShown) {
  const QStringList brand = {u"青禾文库"_s, u"P1"_s, u"10"_s, u"九折"_s, u"丛书"_s};
  portal.answerWith({page({brand})});
  EXPECT_EQ(contents(show<frmGetCYXXX>()), brand);
}

TEST_F(Details, AnEnterpriseShowsItsRegistration) {
  const QStringList enterprise = {u"云集书社"_s, u"北京市海淀区"_s,   u"100080"_s,       u"王"_s,
                                  u"李"_s,       u"010-1"_s,          u"010-2"_s,        u"139"_s,
                                  u"126"_s,      u"www.example.cn"_s, u"a@example.cn"_s, u"工行"_s,
                                  u"6222"_s,     u"1101"_s,           u"老字号"_s};
  portal.answerWith({page({enterprise})});
  const auto& form = show<frmGetQYXXX>();
  EXPECT_EQ(form.windowTitle(), u"发行商详细信息"_s);
  EXPECT_EQ(names(form),
            (QStringList{u"名称"_s, u"地址"_s, u"邮编"_s, u"负责人"_s, u"联系人"_s, u"电话"_s,
                         u"传真"_s, u"手机"_s, u"呼机"_s, u"主页"_s, u"信箱"_s, u"开户银行"_s,
                         u"银行帐户"_s, u"税号"_s, u"介绍"_s}));
  EXPECT_EQ(contents(form), enterprise);
  EXPECT_EQ(targets(),
            (QStringList{target(
                u"_vti_login"_s, u"QYXX"_s,
                u"qiye,dizh,yobi,fuzh,lixi,dihu,chzh,shji,huji,zhye,email,khyh,yhzh,shha,jish,"_s,
                u"id=31"_s)}));
}

TEST_F(Details, InPostModeNothingIsAskedFor) {
  state.gUnicode = 0;
  EXPECT_EQ(contents(show<frmGetQYXXX>()).join(QString()), QString());
  EXPECT_EQ(portal.requests().size(), 0);
}

TEST_F(Details, APressOnARowChangesNothing) {
  portal.answerWith({page({book}), page(attributes)});
  const auto& form = show<frmGetXIMUX>();
  const auto before = contents(form);
  QTest::mouseClick(form.ListView1->viewport(), Qt::LeftButton, {},
                    form.ListView1->cellRect(form.ListView1->itemAt(3), 1).center());
  EXPECT_EQ(contents(form), before);
  EXPECT_TRUE(form.Text2->isReadOnly());
}

TEST_F(Details, EscAndEnterCloseThem) {
  portal.answerWith({page({})});
  QTest::keyClick(&show<frmGetCYXXX>(), Qt::Key_Escape);
  EXPECT_FALSE(isLoaded<frmGetCYXXX>());
  QTest::keyClick(&show<frmGetQYXXX>(), Qt::Key_Return);
  EXPECT_FALSE(isLoaded<frmGetQYXXX>());
}

}  // namespace
