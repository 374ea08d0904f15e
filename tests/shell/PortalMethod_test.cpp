#include "shell/PortalMethod.h"

#include <QGuiApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "ShellTest.h"
#include "forms/FormTimer.h"
#include "support/ScriptedServer.h"

namespace qinghe {
namespace {

class PortalMethodTest : public ShellTest {
 protected:
  PortalMethodTest() {
    state.gUnicode = 2;
    state.gWebServer = u"HTTP://"_s + server.host() + u'/';
    state.inetQuotes.AccessType = 1;
  }

  bool read(EmptyAnswer empty = EmptyAnswer::IsNoRows) {
    return readPortal(state.gWebServer + u"list.asp?a=1"_s, empty, [this](GetHtml& html) {
      rows << html.GetRowItem();
      return true;
    });
  }

  static bool hourglassIsOn() { return QGuiApplication::overrideCursor() != nullptr; }

  ScriptedServer server;
  QStringList rows;
};

TEST_F(PortalMethodTest, GoesThroughEveryRow) {
  server.answerWith({ScriptedServer::table({{u"7"_s, u"大学语文"_s}, {u"9"_s, u"高等数学"_s}})});
  EXPECT_TRUE(read());
  EXPECT_EQ(rows, (QStringList{u"7"_s, u"9"_s}));
  EXPECT_EQ(server.requestTargets(), QList<QByteArray>{"/list.asp?a=1"});
  EXPECT_TRUE(state.gResponse.isEmpty());
}

TEST_F(PortalMethodTest, APageFetchedInAWayOfItsOwnIsReadLikeAnyOther) {
  server.answerWith({ScriptedServer::table({{u"7"_s}, {u"9"_s}})});
  state.gUnicode = 0;
  EXPECT_TRUE(readPortal(
      [this](GetHtml& html) {
        EXPECT_TRUE(hourglassIsOn());
        return html.openUrl(state.gWebServer + u"raw"_s);
      },
      EmptyAnswer::IsFailure,
      [this](GetHtml& html) {
        rows << html.GetRowItem();
        return true;
      }));
  EXPECT_EQ(rows, (QStringList{u"7"_s, u"9"_s}));
  EXPECT_EQ(server.requestTargets(), QList<QByteArray>{"/raw"});
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, AFetchThatFailsIsAFailure) {
  EXPECT_FALSE(readPortal([](GetHtml&) -> QString { throw InvalidCall(u"no line"_s); },
                          EmptyAnswer::IsNoRows, [](GetHtml&) { return true; }));
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, TheHourglassStandsDuringTheRowsAndIsOffBehindThem) {
  server.answerWith({ScriptedServer::table({{u"7"_s}})});
  bool during = false;
  EXPECT_TRUE(readPortal(state.gWebServer + u"x"_s, EmptyAnswer::IsFailure, [&](GetHtml& html) {
    html.GetRowItem();
    during = hourglassIsOn();
    return true;
  }));
  EXPECT_TRUE(during);
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, AnAnswerWithoutTheMarkerMeansWhatTheCallerSays) {
  server.answerWith({"<html>error</html>"});
  EXPECT_TRUE(read(EmptyAnswer::IsNoRows));
  EXPECT_FALSE(read(EmptyAnswer::IsFailure));
  EXPECT_TRUE(rows.isEmpty());
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, AMarkedTableWithoutRowsIsAnAnswer) {
  server.answerWith({"<table start_pos></table>"});
  EXPECT_TRUE(read(EmptyAnswer::IsFailure));
  EXPECT_TRUE(rows.isEmpty());
}

TEST_F(PortalMethodTest, ATableThatDoesNotEndIsAFailure) {
  server.answerWith({"<table start_pos><tr><td>7</td>"});
  EXPECT_FALSE(read());
  EXPECT_TRUE(rows.isEmpty());
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, ARowWithoutCellsIsAFailureThatKeepsTheRowsBefore) {
  server.answerWith({"<table start_pos><tr><td>7</td></tr><tr></tr></table>"});
  EXPECT_FALSE(read());
  EXPECT_EQ(rows, QStringList{u"7"_s});
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, ACallerThatHasSeenEnoughEndsWithFalse) {
  server.answerWith({ScriptedServer::table({{u"0"_s}, {u"1"_s}})});
  int calls = 0;
  EXPECT_FALSE(readPortal(state.gWebServer + u"x"_s, EmptyAnswer::IsNoRows, [&](GetHtml&) {
    ++calls;
    return false;
  }));
  EXPECT_EQ(calls, 1);
}

TEST_F(PortalMethodTest, AFailedConversionInARowIsAFalse) {
  server.answerWith({ScriptedServer::table({{u"32768"_s}})});
  EXPECT_FALSE(readPortal(state.gWebServer + u"x"_s, EmptyAnswer::IsNoRows,
                          [](GetHtml&) -> bool { throw Overflow(u"32768"_s); }));
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, NoConnectionIsAFalseAndKeepsTheLastAnswer) {
  state.gResponse = u"last"_s;
  server.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.reset = true;
    return reply;
  });
  EXPECT_FALSE(read());
  EXPECT_EQ(state.gResponse.text(), u"last"_s);
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, InModeZeroNothingIsSent) {
  state.gUnicode = 0;
  EXPECT_TRUE(read(EmptyAnswer::IsNoRows));
  EXPECT_FALSE(read(EmptyAnswer::IsFailure));
  EXPECT_TRUE(server.requests().isEmpty());
}

TEST_F(PortalMethodTest, InModeOneTheRelayIsAsked) {
  state.gUnicode = 1;
  server.answerWith({ScriptedServer::table({{u"7"_s}})});
  EXPECT_TRUE(read());
  ASSERT_EQ(server.requestTargets().size(), 1);
  EXPECT_TRUE(server.requestTargets().first().startsWith("/_vti_comm/review.asp?review=%48%54%54"))
      << server.requestTargets().first().constData();
}

TEST_F(PortalMethodTest, NoTimerFiresDuringTheRead) {
  server.setHandler([](const QByteArray&) {
    ScriptedServer::Reply reply;
    reply.bytes = ScriptedServer::ok(ScriptedServer::table({{u"7"_s}}));
    reply.delay = std::chrono::milliseconds(150);
    return reply;
  });
  QObject owner;
  FormTimer timer(u"Timer1"_s, 1, &owner);
  int fired = 0;
  QObject::connect(&timer, &FormTimer::timer, &owner, [&] { ++fired; });
  timer.setEnabled(true);
  int duringRead = -1;
  EXPECT_TRUE(readPortal(state.gWebServer + u"x"_s, EmptyAnswer::IsFailure, [&](GetHtml& html) {
    html.GetRowItem();
    duringRead = fired;
    return true;
  }));
  EXPECT_EQ(duringRead, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired > 0; }, 5000));
}

TEST_F(PortalMethodTest, PostsALongTextAndGoesOn) {
  EXPECT_TRUE(postToPortal(state.gWebServer + u"add.asp"_s, u"id=1&JISH=%41"_s));
  ASSERT_TRUE(server.waitForRequests(1));
  EXPECT_TRUE(server.requests().first().startsWith("POST /add.asp HTTP/1.1\r\n"));
  EXPECT_EQ(server.body(0), "id=1&JISH=%41");
  EXPECT_FALSE(hourglassIsOn());
}

TEST_F(PortalMethodTest, APostThatCannotBeStartedIsAFalse) {
  EXPECT_FALSE(postToPortal(u"no such://thing"_s, u"a=1"_s));
  EXPECT_FALSE(hourglassIsOn());
}

/// A form whose button posts two long texts, one waiting for the other.
class PostingForm : public Form {
 public:
  PostingForm() : Form(Kind::Window, u"Posting"_s, u"Posting"_s) {
    connect(&button, &QPushButton::clicked, this, [this] {
      const QPointer<PostingForm> self(this);
      for (const QString& text : {u"a=1"_s, u"a=2"_s}) {
        postToPortal(app().gWebServer + u"add.asp"_s, text);
      }
      outlived = !self.isNull();
    });
  }
  QPushButton button{this};
  static inline bool outlived = false;
};

TEST_F(PortalMethodTest, AFormUnloadedWhileItsPostWaitsIsGoneOnlyBehindItsHandler) {
  server.setHandler([](const QByteArray& request) {
    ScriptedServer::Reply reply{.bytes = ScriptedServer::ok({})};
    if (request.endsWith("a=1")) reply.delay = std::chrono::milliseconds(100);
    return reply;
  });
  QPointer<PostingForm> form = new PostingForm;
  form->showForm();
  QTimer::singleShot(0, form, [form] { form->unload(); });
  QTest::mouseClick(&form->button, Qt::LeftButton);
  EXPECT_TRUE(PostingForm::outlived);
  ASSERT_TRUE(server.waitForRequests(2));
  EXPECT_TRUE(QTest::qWaitFor([&] { return form.isNull(); }));
}

}  // namespace
}  // namespace qinghe
