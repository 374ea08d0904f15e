#include <gtest/gtest.h>

#include <QPointer>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <future>

#include "RegistrationFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QString taken = u"网络注册/修改成功！！！|用户编号：1013|用户名称：0571-5550"_s;
const QString refused = u"网络注册/修改失败！！！|注册名称或编号失败|"_s;
const QByteArray nothing = "<html></html>";

class SavedRecord : public RegistrationFixture {
 protected:
  /// A new company that has filled in everything; the portal gives this answer to its save.
  void newCompany(const QByteArray& answer) {
    screen();
    fillIn();
    portal.answerWith({answer});
  }
  void knownCompany(const QByteArray& answer) {
    beCompany(1, 0);
    portal.answerWith({page({knownRow()})});
    newCompany(answer);
    portal.clear();
  }
  QVariantList localRow() const {
    return store.rows(u"SELECT R_ID,user_no,user_name,user_pass FROM QYXX"_s).value(0);
  }
};

TEST_F(SavedRecord, ANewCompanyIsSentAsIdZeroByteByByte) {
  newCompany(page({accountRow()}));
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(3));
  EXPECT_EQ(targets().first(), savedTarget(0));
  EXPECT_TRUE(targets().first().startsWith(
      u"/_vti_login/_vti_add_login.asp?stable=qyxx&stid=%69%64%3D%30&USER_NAME=%30%35%37%31"_s));
  EXPECT_TRUE(targets().first().contains(u"&shen_id=%31%31&shen=%D5%E3%BD%AD&"_s))
      << "the number of \"11 ID\"";
}

TEST_F(SavedRecord, TheLongTextsFollowAsTwoPosts) {
  newCompany(page({accountRow()}));
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(3));
  EXPECT_EQ(targets().sliced(1), QStringList(2, u"/_vti_login/_vti_update_login.asp"_s));
  const QByteArray row = "stable=%71%79%78%78&sid=%69%64%3D%31%33";
  EXPECT_TRUE(portal.requests()[1].startsWith("POST "));
  EXPECT_TRUE(portal.requests()[1].contains("Content-Type: application/x-www-form-urlencoded\r\n"));
  EXPECT_EQ(portal.body(1), row + "&JISH=" + UrlEncodeField(u"介绍一\r\n二"_s).toLatin1());
  EXPECT_EQ(portal.body(2), row + "&YHLY=" + UrlEncodeField(u"留言 & 三"_s).toLatin1());
}

TEST_F(SavedRecord, TheScreenMayBeClosedWhileTheUsersTextWaitsForTheIntroduction) {
  newCompany({});
  std::atomic<bool> isUnderWay = false;
  std::promise<void> left;
  portal.setHandler([&isUnderWay, leaving = left.get_future().share()](const QByteArray& request) {
    if (request.contains("&JISH=")) {
      isUnderWay = true;
      leaving.wait_for(std::chrono::seconds(60));
    }
    return ScriptedServer::Reply{.bytes =
                                     ScriptedServer::ok(ScriptedServer::table({accountRow()}))};
  });
  const QPointer<FrmRegister_QY> form = &screen();
  boxes->expect(Answer::No);
  QTimer look;
  look.callOnTimeout(&look, [&] {
    if (!isUnderWay) return;
    look.stop();
    press(u"Exit"_s);
    left.set_value();
  });
  look.start(1);
  press(u"Save"_s);
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
  ASSERT_TRUE(portal.waitForRequests(3));
  EXPECT_TRUE(portal.body(2).endsWith("&YHLY=" + UrlEncodeField(u"留言 & 三"_s).toLatin1()));
  EXPECT_EQ(notices, QStringList{taken});
  EXPECT_EQ(localRow(), QVariantList({13, u"1013"_s, u"0571-5550"_s, u"geheim"_s}));
  EXPECT_TRUE(QTest::qWaitFor([&] { return form.isNull(); }, 60'000)) << "and it goes in the end";
}

TEST_F(SavedRecord, TheAnswerLogsTheNewCompanyInButForModeAndLocalId) {
  newCompany(page({accountRow()}));
  press(u"Save"_s);
  EXPECT_EQ(account(), QStringList({u"13"_s, u"1013"_s, u"0571-5550"_s, u"1"_s, u"3"_s, u"图书"_s,
                                    u"1"_s, u"0"_s, u"0"_s}));
  EXPECT_EQ(screen().TxtField0(0)->text(), u"1013"_s);
  EXPECT_TRUE(screen().TxtField0(1)->isReadOnly());
  EXPECT_EQ(notices, QStringList{taken});
  EXPECT_EQ(localRow(), QVariantList({13, u"1013"_s, u"0571-5550"_s, u"geheim"_s}));
}

TEST_F(SavedRecord, ASavedRecordIsUnchanged) {
  newCompany(page({accountRow()}));
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(3));
  press(u"Save"_s);
  EXPECT_EQ(portal.requests().size(), 3);
  EXPECT_EQ(notices.size(), 1);
  EXPECT_TRUE(screen().unload());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(SavedRecord, AKnownCompanyIsSentUnderItsIdAndKeepsItsOneLocalRow) {
  store.exec(
      u"INSERT INTO QYXX (id,R_ID,user_no,user_name,user_pass) VALUES (4,25,'1001','a','b')"_s);
  auto row = accountRow();
  row[0] = u"25"_s;
  knownCompany(page({row}));
  press(u"Save"_s);
  ASSERT_TRUE(portal.waitForRequests(3));
  EXPECT_EQ(targets().first(), savedTarget(25));
  EXPECT_EQ(state.gUserNo, u"1013"_s);
  EXPECT_EQ(state.gLoginMode, 1);
  EXPECT_EQ(state.gLocalId, 1);
  EXPECT_EQ(store.rows(u"SELECT id,R_ID,user_no,user_name,user_pass FROM QYXX"_s),
            QList<QVariantList>{QVariantList({4, 25, u"1013"_s, u"0571-5550"_s, u"geheim"_s})});
}

class MissingField : public SavedRecord, public testing::WithParamInterface<int> {};

TEST_P(MissingField, StopsTheSaveWithABox) {
  newCompany(page({accountRow()}));
  screen().SSTab1->setTab(1);
  screen().TxtField0(GetParam())->setText({});
  boxes->expect(Answer::Ok);
  press(u"Save"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"请填写注册信息"_s});
  EXPECT_EQ(screen().SSTab1->tab(), 0) << "where the field is";
  EXPECT_TRUE(screen().TxtField0(GetParam())->editor()->hasFocus());
  EXPECT_TRUE(portal.requests().isEmpty());
  EXPECT_TRUE(notices.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(FieldsWithAStar, MissingField, testing::Range(1, 11));

TEST_F(SavedRecord, AMissingFieldIsToldBeforeTheChangeIsAskedFor) {
  boxes->expect(Answer::Ok);
  press(u"Save"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"请填写注册信息"_s}) << "nothing was changed yet";
}

TEST_F(SavedRecord, ABlankCountsAsFilledAndTheOtherFieldsMayBeEmpty) {
  newCompany(page({accountRow()}));
  for (int index = 1; index <= 10; ++index) screen().TxtField0(index)->setText(u" "_s);
  screen().TxtField1(2)->setText({});
  press(u"Save"_s);
  EXPECT_TRUE(boxes->asked.isEmpty());
  EXPECT_EQ(notices, QStringList{taken});
}

struct AnswerRow {
  std::string name;
  QByteArray answer;
};
void PrintTo(const AnswerRow& row, std::ostream* out) {
  *out << row.name;
}

class RefusedRecord : public SavedRecord, public testing::WithParamInterface<AnswerRow> {};

TEST_P(RefusedRecord, OfANewCompanyChangesNoVariableAndWritesNoLocalRow) {
  newCompany(GetParam().answer);
  const QStringList before = account();
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{refused});
  EXPECT_EQ(account(), before);
  EXPECT_EQ(portal.requests().size(), 1) << "no long text follows";
  EXPECT_EQ(localRow(), QVariantList());
  EXPECT_EQ(screen().TxtField0(0)->text(), QString());
  EXPECT_FALSE(screen().TxtField0(1)->isReadOnly());
  press(u"Save"_s);
  EXPECT_EQ(notices.size(), 2) << "still changed";
}

TEST_P(RefusedRecord, OfAKnownCompanyStillUpdatesTheLocalRowWithTheTypedPassword) {
  knownCompany(GetParam().answer);
  const QStringList before = account();
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{refused});
  EXPECT_EQ(account(), before);
  EXPECT_EQ(localRow(), QVariantList({25, u"1001"_s, u"0571-5550"_s, u"geheim"_s}));
}

INSTANTIATE_TEST_SUITE_P(
    Answers, RefusedRecord,
    testing::Values(AnswerRow{"zero", ScriptedServer::table({{u"0"_s, {}, {}, {}, {}, {}, {}}})},
                    AnswerRow{"empty", nothing}, AnswerRow{"no_row", ScriptedServer::table({})},
                    AnswerRow{"id_beyond_16_bits",
                              ScriptedServer::table({{u"40000"_s, u"1"_s, u"n"_s, u"1"_s, u"3"_s,
                                                      u"h"_s, u"1"_s}})},
                    AnswerRow{"no_number", ScriptedServer::table({{u"x"_s}})},
                    AnswerRow{"no_cell", "start_pos<tr></tr></table>"},
                    AnswerRow{"no_table_end", "start_pos<tr><td>13</td>"}),
    [](const auto& row) { return row.param.name; });

TEST_F(SavedRecord, AnAnswerThatBreaksOffLeavesWhatCameBeforeIt) {
  newCompany(page({{u"13"_s, u"1013"_s, u"x"_s, u"no mode"_s}}));
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{refused});
  EXPECT_EQ(state.gQiyeId, 13);
  EXPECT_EQ(state.gUnicode, 2);
  EXPECT_EQ(screen().TxtField0(0)->text(), QString());
}

struct FaultRow {
  std::string name;
  ScriptedServer::Reply reply;
};
void PrintTo(const FaultRow& row, std::ostream* out) {
  *out << row.name;
}

class RecordFault : public SavedRecord, public testing::WithParamInterface<FaultRow> {};

TEST_P(RecordFault, IsToldAsAFailure) {
  newCompany(nothing);
  state.inetQuotes.timeLimit = std::chrono::milliseconds(400);
  portal.setHandler([](const QByteArray&) { return GetParam().reply; });
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{refused});
  EXPECT_EQ(state.gQiyeId, 0);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, RecordFault,
    testing::Values(FaultRow{"silent", {.hang = true}},
                    FaultRow{"reset",
                             {.bytes = "HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n<t",
                              .reset = true}},
                    FaultRow{"garbage", {.bytes = "\x00\xff garbage\r\n\r\n", .keepAlive = false}},
                    FaultRow{"error_page", {.bytes = ScriptedServer::ok("<html>500</html>")}}),
    [](const auto& row) { return row.param.name; });

TEST_F(SavedRecord, ALocalStoreThatCannotBeWrittenIsNoFailureOfTheSave) {
  newCompany(page({accountRow()}));
  store.exec(u"DROP TABLE QYXX"_s);
  press(u"Save"_s);
  EXPECT_EQ(notices, QStringList{taken});
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(SavedRecord, EachKindOfFieldMarksTheRecord) {
  for (const QString& name :
       {u"TxtField0(2)"_s, u"TxtField1(9)"_s, u"TxtField3(0)"_s, u"TxtField3(1)"_s}) {
    screen().findChild<TextBox*>(name)->setText(u"neu"_s);
    boxes->expect(Answer::No);
    EXPECT_TRUE(screen().unload()) << name.toStdString();
  }
  EXPECT_EQ(boxes->asked.size(), 4);
}

TEST_F(SavedRecord, ClosingAsksAndCancelKeepsTheForm) {
  newCompany(nothing);
  boxes->expect(Answer::Cancel);
  press(u"Exit"_s);
  EXPECT_TRUE(isLoaded<FrmRegister_QY>());
  ASSERT_EQ(boxes->asked.size(), 1);
  EXPECT_EQ(boxes->asked[0].text, u"数据尚未保存，是否保存"_s);
  EXPECT_EQ(boxes->asked[0].buttons, Buttons::YesNoCancel);
  boxes->expect(Answer::No);
  press(u"Exit"_s);
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
  EXPECT_TRUE(portal.requests().isEmpty());
}

class ClosedRecord : public SavedRecord, public testing::WithParamInterface<bool> {};

TEST_P(ClosedRecord, YesSavesReportsAndClosesWhateverCameOfIt) {
  newCompany(GetParam() ? page({accountRow()}) : nothing);
  auto* status = screen().StatusBar1;
  boxes->expect(Answer::Yes);
  EXPECT_TRUE(screen().unload());
  EXPECT_FALSE(isLoaded<FrmRegister_QY>());
  EXPECT_EQ(status->text(), GetParam() ? u"用户信息保存成功！！！"_s : u"用户信息保存失败！！！"_s);
  EXPECT_EQ(notices, QStringList{GetParam() ? taken : refused});
}

INSTANTIATE_TEST_SUITE_P(TakenAndRefused, ClosedRecord, testing::Bool());

TEST_F(SavedRecord, TheTrayWaitsBehindTheNoticeForTheCheck) {
  newCompany(page({accountRow()}));
  press(u"Save"_s);
  EXPECT_EQ(state.tray.state(), Tray::State::Connected);
  EXPECT_TRUE(state.tray.tip().endsWith(u"0571-5550"_s)) << "the new name stands in the tip";
}

}  // namespace
