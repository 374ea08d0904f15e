#include <chrono>

#include "PortalTest.h"
#include "column_value.h"

using namespace qinghe::portal_server;
using namespace std::chrono_literals;

class Presence : public PortalTest {
 protected:
  // What a partner is told who looks up where the first company is.
  std::vector<std::string> told() {
    return ask("_vti_login/_vti_detail_field_s.asp",
               {{"STABLE", "QYXX"}, {"STRDATA", "qiye,ipurl,online,"}, {"STOTHER", "ID=1"}},
               stranger)
        .rows.at(0);
  }
  std::string online(std::int64_t enterprise = 1) { return stored("qyxx", enterprise, "online"); }

  const Visits::Clock::time_point now_ = Visits::Clock::now();
};

TEST_F(Presence, ACompanyThatAsksForNothingGoesOfflineAfterItsTime) {
  EXPECT_EQ(told(), (std::vector<std::string>{"青禾书店", bookshop, "True"}));
  portal_->keepHouse({}, now_ + 14min);
  EXPECT_EQ(online(), "1");
  portal_->keepHouse({}, now_ + 16min);
  EXPECT_EQ(told(), (std::vector<std::string>{"青禾书店", bookshop, "False"}));
}

TEST_F(Presence, TheOperatorSetsTheTime) {
  Portal patient(*store_, {.offlineAfter = 60min});
  patient.keepHouse({}, now_ + 59min);
  EXPECT_EQ(online(), "1");
  patient.keepHouse({}, now_ + 61min);
  EXPECT_EQ(online(), "0");
}

TEST_F(Presence, ARequestFromItsAddressKeepsItOnline) {
  portal_->keepHouse({{bookshop, now_ + 10min}, {stranger, now_ + 10min}}, now_ + 16min);
  EXPECT_EQ(online(), "1");
  portal_->keepHouse({{stranger, now_ + 26min}}, now_ + 26min);
  EXPECT_EQ(online(), "0");
}

TEST_F(Presence, WhoWasIdleStillReadsAndWrites) {
  portal_->keepHouse({}, now_ + 24h);
  ASSERT_EQ(online(), "0");
  EXPECT_TRUE(ask("_vti_insert_xixi.asp",
                  {{"stable", "xixi"}, {"QYXX_ID", "2"}, {"USER_ID", "1"}, {"CONTENT", "午后"}})
                  .marked);
  EXPECT_EQ(
      ask("_vti_add.asp", {{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "午后"}})
          .firstCell(),
      "1");
  EXPECT_TRUE(ask("_vti_detail_field_s.asp", {{"STABLE", "xixi"}, {"STRDATA", "content,"}}).marked);
  EXPECT_EQ(rowCount("session"), 1);
}

TEST_F(Presence, ALoginIsForgottenWhenNobodyAskedFromThereForAWeek) {
  login("1002", "123456", "10.0.0.2");
  portal_->keepHouse({{bookshop, now_ + 24h}}, now_ + 24h);
  portal_->keepHouse({}, now_ + 7 * 24h + 1h);
  EXPECT_EQ(rowCount("session"), 1) << "the address may be somebody else's by now";
  const Fields save{{"stable", "ximu"}, {"stother", "id=1 and qiye_id=1"}, {"XIMU", "周末"}};
  EXPECT_EQ(ask("_vti_add.asp", save).firstCell(), "1");
  portal_->keepHouse({}, now_ + 8 * 24h + 1h);
  EXPECT_EQ(rowCount("session"), 0);
  EXPECT_FALSE(ask("_vti_add.asp", save).marked);
  EXPECT_EQ(login("1001", "123456", bookshop).firstCell(), "1");
  EXPECT_EQ(ask("_vti_add.asp", save).firstCell(), "1");
}

TEST_F(Presence, TheOperatorSetsHowLongLoginsStay) {
  Portal generous(*store_, {.keepLogins = std::chrono::days(30)});
  generous.keepHouse({}, now_ + 29 * 24h);
  EXPECT_EQ(rowCount("session"), 1);
  generous.keepHouse({}, now_ + 31 * 24h);
  EXPECT_EQ(rowCount("session"), 0);
}

TEST_F(Presence, WhoComesBackIsOnlineAtOnceAndStaysSo) {
  portal_->keepHouse({}, now_ + 60min);
  ASSERT_EQ(online(), "0");
  portal_->welcome({bookshop, now_ + 61min});
  EXPECT_EQ(online(), "1");
  portal_->keepHouse({}, now_ + 70min);
  EXPECT_EQ(online(), "1");
}

TEST_F(Presence, AVisitorWhoIsNotLoggedInIsNobody) {
  portal_->keepHouse({}, now_ + 60min);
  portal_->welcome({stranger, now_ + 60min});
  portal_->keepHouse({{stranger, now_ + 60min}}, now_ + 60min);
  for (const std::int64_t enterprise : {1, 2, 3}) EXPECT_EQ(online(enterprise), "0");
}

TEST_F(Presence, WhoLoggedOutIsNotBroughtBackByRequestsFromItsAddress) {
  ask("_vti_login/_vti_logout2.asp", {{"USER_NO", "1001"}});
  portal_->welcome({bookshop, now_});
  portal_->keepHouse({{bookshop, now_}}, now_);
  EXPECT_EQ(online(), "0");
}

TEST_F(Presence, ARequestCountsForAllWhoAreLoggedInOnTheMachine) {
  login("1002", "123456", bookshop);
  portal_->keepHouse({}, now_ + 60min);
  portal_->welcome({bookshop, now_ + 60min});
  EXPECT_EQ(online(1), "1");
  EXPECT_EQ(online(2), "1");
}

TEST_F(Presence, OfTwoMachinesTheOneStillInUseIsTold) {
  login("1001", "123456", "10.0.0.7");
  const Visit here{bookshop, now_ + 20min};
  const Visit there{"10.0.0.7", now_ + 19min};
  portal_->keepHouse({here, there}, now_ + 20min);
  EXPECT_EQ(stored("qyxx", 1, "ipurl"), "10.0.0.7");
  portal_->keepHouse({{bookshop, now_ + 40min}}, now_ + 40min);
  EXPECT_EQ(stored("qyxx", 1, "ipurl"), bookshop);
  EXPECT_EQ(online(), "1");
}

TEST_F(Presence, ANewLoginTellsTheNewAddress) {
  portal_->keepHouse({}, now_ + 60min);
  login("1001", "123456", "10.0.0.7");
  EXPECT_EQ(told(), (std::vector<std::string>{"青禾书店", "10.0.0.7", "True"}));
}

TEST(Visits, TellWhoComesBack) {
  Visits visits;
  const Visits::Clock::time_point start{1000h};
  EXPECT_TRUE(visits.note("a", start));
  EXPECT_FALSE(visits.note("a", start + 5min));
  EXPECT_TRUE(visits.note("b", start + 1min));
  visits.forgetBefore(start + 2min);
  ASSERT_EQ(visits.all().size(), 1U);
  EXPECT_EQ(visits.all().front().address, "a");
  EXPECT_EQ(visits.all().front().at, start + 5min);
  EXPECT_FALSE(visits.note("a", start + 6min));
  EXPECT_TRUE(visits.note("b", start + 6min));
}

TEST(Visits, AreBounded) {
  Visits visits;
  for (int i = 0; i < 12'000; ++i) visits.note(std::to_string(i), {});
  EXPECT_EQ(visits.all().size(), 10'000U);
}

class Inbox : public PortalTest {
 protected:
  static constexpr const char* neighbour = "10.0.0.2";

  AnswerText send(const Fields& more = {}, const char* address = bookshop) {
    Fields fields{{"stable", "xixi"},   {"structn", "7"}, {"QYXX_ID", "2"},
                  {"QYXX", "明溪书屋"}, {"USER_ID", "1"}, {"USERNAME", "青禾书店"},
                  {"CONTENT", "新消息"}};
    fields.insert(fields.end(), more.begin(), more.end());
    return ask("_vti_insert_xixi.asp", fields, address);
  }
  AnswerText fetch(const std::string& addressee, const char* address) {
    return ask("_vti_detail_field_s.asp",
               {{"STABLE", "xixi"},
                {"STRDATA", "user_id,username,dTime,content,"},
                {"STOTHER", "qyxx_id=" + addressee}},
               address);
  }
  // A message as if it had been sent so long ago.
  void keep(std::chrono::seconds age) {
    const Table& messages = storedTable("xixi");
    store_->transact([&](StoreWriter& writer) {
      writer.insert(messages, {assign(messages, "qyxx_id", std::int64_t{1}),
                               assign(messages, "dtime", storedLocal(now_ - age))});
    });
  }

  const Visits::Clock::time_point now_ = Visits::Clock::now();
};

TEST_F(Inbox, AMessageIsToldAgainAtEachLoadAsNobodySaysThatItWasRead) {
  login("1002", "123456", neighbour);
  send();
  const AnswerText first = fetch("2", neighbour);
  ASSERT_EQ(first.rows.size(), 4U);
  EXPECT_EQ(first.rows.back().at(0), "1");
  EXPECT_EQ(first.rows.back().at(1), "青禾书店");
  EXPECT_EQ(first.rows.back().at(3), "新消息");
  EXPECT_EQ(fetch("2", neighbour).rows, first.rows);
}

TEST_F(Inbox, TheTimeIsTheServersWhateverTheSenderSays) {
  const std::string before = storedLocal(now_);
  send({{"DTIME", "1999-1-1"}});
  EXPECT_GE(stored("xixi", 8, "dtime"), before);
  EXPECT_LE(stored("xixi", 8, "dtime"), storedNow());
}

TEST_F(Inbox, TheSenderAndStrangersDoNotReadIt) {
  login("1003", "demo1003", "10.0.0.3");
  send();
  for (const char* address : {bookshop, "10.0.0.3"}) {
    const AnswerText answer = fetch("2", address);
    EXPECT_TRUE(answer.marked);
    EXPECT_TRUE(answer.rows.empty());
  }
  EXPECT_FALSE(fetch("2", stranger).marked);
}

TEST_F(Inbox, ASenderWhoLoggedOutSendsNothing) {
  ask("_vti_login/_vti_logout2.asp", {{"USER_NO", "1001"}});
  EXPECT_FALSE(send().marked);
  EXPECT_EQ(rowCount("xixi"), 7);
}

TEST_F(Inbox, AMessageThatNoReaderCouldTakeIsRefused) {
  login("1002", "123456", neighbour);
  EXPECT_TRUE(send({}, bookshop).marked);
  const auto rows = rowCount("xixi");
  const auto sent = [&](const std::string& text) {
    return ask("_vti_insert_xixi.asp",
               {{"stable", "xixi"}, {"QYXX_ID", "2"}, {"USER_ID", "1"}, {"CONTENT", text}})
        .marked;
  };
  EXPECT_FALSE(sent(std::string(30'001, 'x')));
  EXPECT_EQ(rowCount("xixi"), rows);
  EXPECT_TRUE(sent(std::string(30'000, 'x')));
  EXPECT_EQ(rowCount("xixi"), rows + 1);
}

TEST_F(Inbox, AFloodPushesOutItsOwnOldestMessagesAndNobodyElses) {
  login("1002", "123456", neighbour);
  const Table& messages = storedTable("xixi");
  const auto total = rowCount("xixi");
  const auto before = fetch("2", neighbour).column(3);
  ASSERT_GT(before.size(), 1U);
  const int most = 1'000;
  const auto room = most - static_cast<int>(before.size());
  store_->transact([&](StoreWriter& writer) {
    for (int i = 0; i < room; ++i) {
      writer.insert(messages, {assign(messages, "qyxx_id", std::int64_t{2}),
                               assign(messages, "user_id", std::int64_t{3}),
                               assign(messages, "content", "m" + std::to_string(i)),
                               assign(messages, "dtime", storedNow())});
    }
  });
  send();
  const auto kept = fetch("2", neighbour).column(3);
  ASSERT_EQ(kept.size(), std::size_t{most});
  EXPECT_TRUE(std::equal(before.begin(), before.end(), kept.begin()));
  EXPECT_EQ(kept.at(before.size()), "m1");
  EXPECT_EQ(kept.back(), "新消息");
  EXPECT_EQ(rowCount("xixi"), total + room);
}

TEST_F(Inbox, OldMessagesLeaveAfterThirtyDays) {
  keep(30 * 24h - 1h);
  keep(30 * 24h + 1h);
  keep(400 * 24h);
  portal_->keepHouse({}, now_);
  EXPECT_EQ(rowCount("xixi"), 8);
  EXPECT_NE(stored("xixi", 8, "id"), "no row");
}

TEST_F(Inbox, TheOperatorSetsHowLongTheyStay) {
  keep(40 * 24h);
  Portal generous(*store_, {.keepMessages = std::chrono::days(60)});
  generous.keepHouse({}, now_);
  EXPECT_EQ(rowCount("xixi"), 8);
  Portal strict(*store_, {.keepMessages = std::chrono::days(39)});
  strict.keepHouse({}, now_);
  EXPECT_EQ(rowCount("xixi"), 7);
}
