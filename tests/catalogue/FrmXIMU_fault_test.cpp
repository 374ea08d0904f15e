#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <utility>

#include "GoodsFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class FrmXIMUFault : public GoodsFixture {};

struct PortalFault {
  std::string name;
  ScriptedServer::Reply reply;
};

class FrmXIMUPortalFault : public FrmXIMUFault, public testing::WithParamInterface<PortalFault> {};

TEST_P(FrmXIMUPortalFault, IsToldAndLosesNothing) {
  const auto patience = std::exchange(state.inetQuotes.timeLimit, std::chrono::milliseconds(400));
  portal.setHandler([](const QByteArray&) { return GetParam().reply; });
  type(2, u"改"_s);
  QElapsedTimer clock;
  clock.start();
  press(u"Save"_s);
  EXPECT_LT(std::chrono::milliseconds(clock.elapsed()), patience) << "of the limit, no more";
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(field(2), u"改"_s);
  EXPECT_EQ(store.rows(u"SELECT XIMU,R_ID FROM XIMU WHERE id=1"_s),
            QList<QVariantList>({{u"改"_s, 71}}));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "the hourglass is gone";

  portal.clear();
  portalGives(u"71"_s);
  state.inetQuotes.timeLimit = patience;
  type(2, u"又改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FrmXIMUPortalFault,
    testing::Values(
        PortalFault{"silent", {.hang = true}}, PortalFault{"reset", {.reset = true}},
        PortalFault{
            "truncated",
            {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\nstart_pos<tr><td>71</td>",
             .keepAlive = false}},
        PortalFault{
            "broken_chunk",
            {.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nstart_pos",
             .keepAlive = false}},
        PortalFault{"garbage", {.bytes = "no http at all", .keepAlive = false}},
        PortalFault{"no_marker", {.bytes = ScriptedServer::ok("<table><tr><td>71</td></table>")}},
        PortalFault{"marker_in_capitals",
                    {.bytes = ScriptedServer::ok("START_POS<tr><td>71</td></table>")}},
        PortalFault{"word_for_an_id",
                    {.bytes = ScriptedServer::ok("start_pos<tr><td>x</td></table>")}}),
    [](const auto& row) { return row.param.name; });

TEST_F(FrmXIMUFault, ALocalFailureIsToldKeepsTheTextAndThePortalStepStillRuns) {
  type(2, u"改"_s);
  store.exec(
      u"CREATE TRIGGER refuse BEFORE UPDATE OF XIMU ON XIMU "
      "BEGIN SELECT RAISE(ABORT,'no'); END"_s);
  portal.answerWith({"<html></html>"});
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存失败！！！"_s);
  EXPECT_EQ(portal.requests().size(), 1);
  EXPECT_EQ(field(2), u"改"_s);

  store.exec(u"DROP TRIGGER refuse"_s);
  portalGives(u"71"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"网络保存成功！！！"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"改"_s);
}

TEST_F(FrmXIMUFault, ALocalFailureWithoutPortalStaysMarkedAndSaysSo) {
  beCompany(2, 0);
  type(2, u"改"_s);
  store.exec(u"CREATE TRIGGER refuse BEFORE UPDATE ON XIMU BEGIN SELECT RAISE(ABORT,'no'); END"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"本地保存失败！！！"_s);
  boxes->expect(Answer::Yes);
  store.exec(u"DROP TRIGGER refuse"_s);
  EXPECT_TRUE(screen().unload());
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"改"_s);
}

TEST_F(FrmXIMUFault, WhatCouldNotBeSavedIsNotWrittenWithAnotherRow) {
  beCompany(2, 0);
  press(u"Add"_s);
  store.exec(u"CREATE TRIGGER refuse BEFORE INSERT ON XIMU BEGIN SELECT RAISE(ABORT,'no'); END"_s);
  const auto before = store.rows(u"SELECT id,XIMU FROM XIMU ORDER BY id"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"本地保存失败！！！"_s);
  store.exec(u"DROP TRIGGER refuse"_s);
  clickRow(0);
  type(2, u"改"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"本地保存成功！！！"_s);
  auto after = before;
  after[0][1] = u"改"_s;
  EXPECT_EQ(store.rows(u"SELECT id,XIMU FROM XIMU ORDER BY id"_s), after);
}

TEST_F(FrmXIMUFault, ARowChangedBehindTheScreenIsNotOverwritten) {
  beCompany(2, 0);
  type(2, u"我的"_s);
  store.exec(u"UPDATE XIMU SET XIMU='别人的' WHERE id=1"_s);
  press(u"Save"_s);
  EXPECT_EQ(status(), u"本地保存失败！！！"_s);
  EXPECT_EQ(store.value(u"SELECT XIMU FROM XIMU WHERE id=1"_s).toString(), u"别人的"_s);
  EXPECT_EQ(field(2), u"我的"_s);
}

TEST_F(FrmXIMUFault, AMissingTableIsToldAndTheScreenStaysUsable) {
  store.exec(u"DROP TABLE XIMU"_s);
  boxes->expect(Answer::Ok);
  EXPECT_EQ(list().itemCount(), 0);
  ASSERT_EQ(boxes->asked.size(), 1);
  press(u"Add"_s);
  EXPECT_EQ(field(2), u"新添商品"_s);
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
}

}  // namespace
