#include "LoginBrake.h"
#include "PortalTest.h"

using namespace qinghe::portal_server;

namespace {

constexpr const char* logoutPath = "_vti_login/_vti_logout2.asp";
constexpr const char* registerPath = "_vti_login/_vti_add_login.asp";
constexpr const char* updatePath = "_vti_login/_vti_update_login.asp";

}  // namespace

class AccountPages : public PortalTest {};

TEST_F(AccountPages, LoginAnswersSevenCellsAndNotesAddressAndFlag) {
  const AnswerText answer = login("1002", "123456", "10.0.0.2");
  ASSERT_EQ(answer.rows.size(), 1U);
  EXPECT_EQ(answer.rows[0],
            (std::vector<std::string>{"2", "1002", "明溪书屋", "2", "3", "图书", "0"}));
  EXPECT_EQ(stored("qyxx", 2, "ipurl"), "10.0.0.2");
  EXPECT_EQ(stored("qyxx", 2, "online"), "1");
  EXPECT_EQ(login("1001", "123456", bookshop).rows.at(0).at(6), "2");
}

TEST_F(AccountPages, ALoginThatDoesNotMatchAnswersZeroAndChangesNothing) {
  const struct {
    const char* number;
    const char* password;
  } table[] = {{"1002", "wrong"},     {"1002", ""},        {"", ""},
               {"9999", "123456"},    {"1002", "123456 "}, {"' or '1'='1", "' or '1'='1"},
               {"1002'--", "123456"}, {"1003", "DEMO1003"}};
  for (const auto& row : table) {
    const AnswerText answer = login(row.number, row.password, stranger);
    ASSERT_EQ(answer.rows.size(), 1U) << row.number;
    EXPECT_EQ(answer.rows[0].size(), 7U);
    EXPECT_EQ(answer.firstCell(), "0") << row.number << " " << row.password;
    EXPECT_EQ(answer_.brake, Brake::Tightens);
  }
  EXPECT_EQ(stored("qyxx", 2, "online"), "0");
  EXPECT_EQ(rowCount("session"), 1);
}

TEST_F(AccountPages, LogoutHasTheMarkerAndNoRowAndEndsTheRightToWrite) {
  const AnswerText answer = ask(logoutPath, {{"USER_NO", "1001"}});
  EXPECT_TRUE(answer.marked);
  EXPECT_TRUE(answer.rows.empty());
  EXPECT_EQ(answer_.body.find("<tr"), std::string::npos);
  EXPECT_EQ(stored("qyxx", 1, "online"), "0");
  EXPECT_FALSE(
      ask("_vti_add.asp", {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "x"}})
          .marked);
}

TEST_F(AccountPages, NobodyLogsAnotherEnterpriseOut) {
  for (const char* number : {"1001", "", "9999"}) {
    EXPECT_TRUE(ask(logoutPath, {{"USER_NO", number}}, stranger).marked);
    EXPECT_NE(answer_.note, "");
  }
  EXPECT_EQ(stored("qyxx", 1, "online"), "1");
}

TEST_F(AccountPages, AnEnterpriseOnTwoMachinesStaysOnlineUntilBothLeave) {
  login("1001", "123456", "10.0.0.7");
  login("1001", "123456", "10.0.0.7");
  EXPECT_EQ(rowCount("session"), 2);
  ask(logoutPath, {{"USER_NO", "1001"}}, "10.0.0.7");
  EXPECT_EQ(stored("qyxx", 1, "online"), "1");
  EXPECT_EQ(stored("qyxx", 1, "ipurl"), bookshop);
  ask(logoutPath, {{"USER_NO", "1001"}});
  EXPECT_EQ(stored("qyxx", 1, "online"), "0");
}

class Registration : public PortalTest {
 protected:
  static Fields filled() {
    return {{"stable", "qyxx"},
            {"stid", "id=0"},
            {"USER_NAME", "新书店"},
            {"USER_PASS", "geheim"},
            {"QIYE", "新书店有限公司"},
            {"DIZH", "街1号"},
            {"YOBI", "100000"},
            {"DIHU", "010-1"},
            {"guji_id", "1"},
            {"guji", "中国"},
            {"shen_id", "1"},
            {"shen", "北京"},
            {"area_id", "4"},
            {"area", "海淀"},
            {"haye_id", "3"},
            {"haye", "图书"},
            {"CHZH", ""},
            {"FUZH", ""},
            {"LIXI", ""},
            {"SHJI", ""},
            {"HUJI", ""},
            {"ZHYE", ""},
            {"EMAIL", ""},
            {"KHYH", ""},
            {"YHZH", ""},
            {"SHHA", ""}};
  }
};

TEST_F(Registration, ANewEnterpriseGetsANumberAndIsLoggedIn) {
  const AnswerText answer = ask(registerPath, filled(), stranger);
  ASSERT_EQ(answer.rows.size(), 1U);
  EXPECT_EQ(answer.rows[0],
            (std::vector<std::string>{"13", "1013", "新书店", "1", "3", "图书", "0"}));
  EXPECT_EQ(stored("qyxx", 13, "online"), "1");
  EXPECT_TRUE(ask("_vti_add.asp",
                  {{"stable", "ximu"}, {"stother", "id=0 and qiye_id=13"}, {"QIYE_ID", "13"}},
                  stranger)
                  .marked);
  EXPECT_EQ(login("1013", "geheim", "10.0.0.5").firstCell(), "13");
}

TEST_F(Registration, AMissingOrTakenNameIsRefused) {
  EXPECT_FALSE(
      ask(registerPath, {{"stable", "qyxx"}, {"stid", "id=0"}, {"USER_NAME", "x"}}).marked);
  EXPECT_FALSE(ask(registerPath, {{"stable", "qyxx"},
                                  {"stid", "id=0"},
                                  {"USER_NAME", "青禾书店"},
                                  {"USER_PASS", "x"},
                                  {"QIYE", "y"}})
                   .marked);
  EXPECT_FALSE(ask(registerPath, {{"stable", "ximu"}, {"stid", "id=0"}}).marked);
  EXPECT_EQ(rowCount("qyxx"), 12);
}

TEST_F(Registration, ACompanyWhoseNumberNoClientCouldKeepIsRefused) {
  store_->transact([](StoreWriter& writer) {
    const Table& companies = storedTable("qyxx");
    writer.insert(companies, {assign(companies, "id", std::int64_t{32766}),
                              assign(companies, "user_no", std::string("2000"))});
  });
  EXPECT_EQ(ask(registerPath, filled(), stranger).firstCell(), "32767");
  const auto companies = rowCount("qyxx");
  Fields next = filled();
  for (auto& [name, value] : next) {
    if (name == "USER_NAME") value = "再新书店";
  }
  EXPECT_FALSE(ask(registerPath, next, stranger).marked);
  EXPECT_EQ(answer_.note, "refused: the portal is full");
  EXPECT_EQ(rowCount("qyxx"), companies);
}

TEST_F(Registration, NobodyGivesItselfALevelOrANumber) {
  for (const char* name : {"USER_LEVEL", "SUBMIT_MODE", "USER_NO", "ONLINE", "IPURL", "ID"}) {
    EXPECT_FALSE(ask(registerPath, {{"stable", "qyxx"}, {"stid", "id=1"}, {name, "2"}}).marked)
        << name;
  }
  EXPECT_EQ(stored("qyxx", 1, "user_no"), "1001");
}

TEST_F(Registration, OnlyTheOwnRowChangesAndTheNameStays) {
  const AnswerText answer = ask(registerPath, {{"stable", "qyxx"},
                                               {"stid", "id=1"},
                                               {"USER_NAME", "别名"},
                                               {"USER_PASS", "neu"},
                                               {"DIHU", "025-1"}});
  EXPECT_EQ(answer.rows.at(0).at(2), "青禾书店");
  EXPECT_EQ(stored("qyxx", 1, "dihu"), "025-1");
  EXPECT_EQ(login("1001", "neu", stranger).firstCell(), "1");
  EXPECT_FALSE(ask(registerPath, {{"stable", "qyxx"}, {"stid", "id=2"}, {"DIHU", "x"}}).marked);
  EXPECT_FALSE(
      ask(registerPath, {{"stable", "qyxx"}, {"stid", "id=2"}, {"USER_PASS", "x"}}, "10.0.0.8")
          .marked);
  EXPECT_EQ(stored("qyxx", 2, "user_pass"), "123456");
  ask(registerPath, {{"stable", "qyxx"}, {"stid", "id=1"}, {"USER_PASS", ""}});
  EXPECT_EQ(stored("qyxx", 1, "user_pass"), "neu");
}

TEST_F(Registration, LongTextsOfTheOwnRow) {
  EXPECT_EQ(
      ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=1"}, {"JISH", "介绍\r\n二"}}).firstCell(),
      "1");
  EXPECT_EQ(stored("qyxx", 1, "jish"), "介绍<br>二");
  EXPECT_TRUE(ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=1"}, {"YHLY", "留言"}}).marked);
  EXPECT_FALSE(ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=2"}, {"JISH", "x"}}).marked);
  EXPECT_FALSE(ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=0"}, {"JISH", "x"}}).marked);
  EXPECT_FALSE(ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=1"}}).marked);
  EXPECT_FALSE(ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=1"}, {"QIYE", "x"}}).marked);
  EXPECT_FALSE(
      ask(updatePath, {{"stable", "qyxx"}, {"sid", "id=1"}, {"JISH", "x"}}, stranger).marked);
}

using qinghe::portal_server::LoginBrake;
using namespace std::chrono_literals;

TEST(LoginBrake, SlowsAnAddressDownMoreWithEachFailure) {
  LoginBrake brake;
  LoginBrake::Clock::time_point now{};
  now += 1h;
  const LoginBrake::Clock::duration waits[] = {0ms, 0ms, 0ms, 500ms, 1s, 2s, 4s, 4s};
  for (const auto wait : waits) {
    const auto admitted = brake.admit("a", now);
    ASSERT_TRUE(admitted);
    EXPECT_EQ(*admitted, wait);
    now += wait;
    brake.failed("a", now);
    now += 1ms;
  }
  EXPECT_EQ(brake.admit("b", now), LoginBrake::Clock::duration{});
  brake.succeeded("a");
  EXPECT_EQ(brake.admit("a", now), LoginBrake::Clock::duration{});
}

TEST(LoginBrake, AttemptsOfOneAddressQueueUpToALimit) {
  LoginBrake brake;
  const LoginBrake::Clock::time_point now{1h};
  for (int i = 0; i < 6; ++i) brake.failed("a", now);
  EXPECT_EQ(brake.admit("a", now), 4s);
  EXPECT_EQ(brake.admit("a", now), 8s);
  EXPECT_EQ(brake.admit("a", now), 12s);
  EXPECT_FALSE(brake.admit("a", now));
}

TEST(LoginBrake, ForgetsQuietAddressesAndStaysBounded) {
  LoginBrake brake;
  LoginBrake::Clock::time_point now{1h};
  for (int i = 0; i < 12'000; ++i) brake.failed(std::to_string(i), now);
  EXPECT_LE(brake.size(), 10'000U);
  now += 11min;
  brake.failed("late", now);
  EXPECT_EQ(brake.size(), 1U);
  for (int i = 0; i < 6; ++i) brake.failed("late", now);
  now += 11min;
  brake.failed("late", now);
  EXPECT_EQ(brake.admit("late", now), LoginBrake::Clock::duration{});
}
