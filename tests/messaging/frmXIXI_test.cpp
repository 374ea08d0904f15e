#include "messaging/frmXIXI.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <QToolButton>

#include "messaging/PeerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

class History : public PeerFixture {
 protected:
  frmXIXI& history() { return defaultInstance<frmXIXI>(); }
  ListView& contacts() { return *history().ListView1; }
  ListView& messages() { return *history().ListView2; }
  QString text() { return history().Text1->text(); }

  /// A row as the messenger writes it; an empty time is none.
  void add(int id, int to, int from, const QString& content, const QString& time,
           const QString& ownName = u"青禾书店"_s) {
    const auto name = [&](int who) { return who == 25 ? ownName : u"甲"_s; };
    store.exec(
        u"INSERT INTO XIXI (id,qyxx_id,user_id,qyxx,UserName,content,dtime) "
        "VALUES (%1,%2,%3,'%4','%5','%6',%7)"_s.arg(id)
            .arg(to)
            .arg(from)
            .arg(name(to), name(from), content, time.isEmpty() ? u"NULL"_s : u"'%1'"_s.arg(time)));
  }
  void addConversation() {
    add(1, 25, 77, u"您好"_s, u"2026-03-09 08:05:07"_s);
    add(2, 77, 25, u"您也好"_s, u"2026-03-09 08:06:00"_s);
    add(3, 25, 88, u"第一行'||char(13)||char(10)||'第二行"_s, u"2026-03-10 00:00:00"_s);
  }

  void click(ListView& list, int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.cellRect(list.itemAt(row)).center());
  }
  static QStringList cells(const ListItem* item) {
    return {item->key(), item->text(), item->subItem(1), item->subItem(2)};
  }
  static QString title(const ListView& list, int column) {
    return list.model()->headerData(column, Qt::Horizontal).toString();
  }
};

TEST_F(History, OpensWithItsCaptionColumnsAndToolbarAndLoadsTheMessengerHidden) {
  frmXIXI& form = history();
  EXPECT_EQ(form.windowTitle(), u"消息查询"_s);
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(title(contacts(), 0), u"用户名称"_s);
  EXPECT_EQ(contacts().model()->columnCount(), 1);
  EXPECT_EQ(title(messages(), 0), u"发布时间"_s);
  EXPECT_EQ(title(messages(), 1), QString());
  EXPECT_EQ(title(messages(), 2), u"主题"_s);
  EXPECT_EQ(messages().model()->columnCount(), 3);
  messages().setSpreadsColumns(false);
  EXPECT_EQ(messages().columnWidth(1), 53);
  EXPECT_EQ(messages().columnWidth(2), 266);
  EXPECT_EQ(form.Toolbar1->actions().size(), 1);
  ASSERT_NE(form.Toolbar1->button(u"Exit"_s), nullptr);
  EXPECT_EQ(form.StatusBar1->text(), QString());
  EXPECT_TRUE(form.Text1->isReadOnly());
  ASSERT_TRUE(isLoaded<frmPeer>());
  EXPECT_FALSE(screen().isVisible());
  EXPECT_EQ(socket(1).State(), SocketState::Listening);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(History, TheFirstColumnIsAsWideAsItsListButForAMargin) {
  EXPECT_EQ(contacts().columnWidth(0), contacts().width() - 4);
  EXPECT_GT(contacts().width(), 150);
}

TEST_F(History, TheTimesAreWideAndTheWindowHasRoomForTheSubjectsBesideThem) {
  EXPECT_TRUE(
      waitFor([this] { return messages().header()->length() == messages().viewport()->width(); }));
  messages().setSpreadsColumns(false);
  EXPECT_GT(messages().columnWidth(0), 150);
}

TEST_F(History, AnEmptyTableLeavesBothListsEmptyWithTheirColumns) {
  EXPECT_EQ(contacts().itemCount(), 0);
  EXPECT_EQ(messages().itemCount(), 0);
  EXPECT_EQ(contacts().model()->columnCount(), 1);
  EXPECT_EQ(messages().model()->columnCount(), 3);
}

TEST_F(History, TheContactsAreTheEnterprisesOwnEntriesOneForEachSpellingOfItsName) {
  addConversation();
  add(4, 25, 77, u"x"_s, u"2026-03-11 00:00:00"_s, u"青禾书店有限公司"_s);
  add(5, 90, 91, u"between others"_s, u"2026-03-11 00:00:00"_s);
  ASSERT_EQ(contacts().itemCount(), 2);
  EXPECT_EQ(contacts().itemAt(0)->text(), u"青禾书店"_s);
  EXPECT_EQ(contacts().itemAt(1)->text(), u"青禾书店有限公司"_s);
  for (int row = 0; row < 2; ++row) {
    EXPECT_EQ(contacts().itemAt(row)->tag(), u"25"_s);
    EXPECT_EQ(contacts().itemAt(row)->icon(), u"LK"_s);
  }
  EXPECT_EQ(messages().itemCount(), 0) << "nothing is shown before a click";
}

TEST_F(History, AClickOnTheOwnEntryListsAllMessagesNewestFirstWithTheirLabelsTurnedAround) {
  addConversation();
  click(contacts(), 0);
  ASSERT_EQ(messages().itemCount(), 3);
  EXPECT_EQ(cells(messages().itemAt(0)),
            (QStringList{u"3 ID"_s, u"2026-3-10"_s, u"发送"_s, u"第一行\r\n第二行"_s}));
  EXPECT_EQ(cells(messages().itemAt(1)),
            (QStringList{u"2 ID"_s, u"2026-3-9 8:06:00"_s, u"接收"_s, u"您也好"_s}));
  EXPECT_EQ(cells(messages().itemAt(2)),
            (QStringList{u"1 ID"_s, u"2026-3-9 8:05:07"_s, u"发送"_s, u"您好"_s}));
  EXPECT_EQ(messages().itemAt(0)->icon(), u"Xixi"_s);
  EXPECT_EQ(text(), QString());
}

TEST_F(History, EnterOpensTheSelectedContactAndTheSelectedMessage) {
  addConversation();
  ASSERT_EQ(contacts().itemCount(), 1);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    history().Text1->setText({});
    QApplication::setActiveWindow(history().window());
    contacts().setFocus();
    QTest::keyClick(&contacts(), key);
    ASSERT_EQ(messages().itemCount(), 3);
    EXPECT_EQ(text(), QString());
    messages().setFocus();
    QTest::keyClick(&messages(), key);
    EXPECT_EQ(text(), u"第一行\r\n第二行"_s);
    messages().clearItems();
  }
  QTest::keyClick(&messages(), Qt::Key_Return);
  EXPECT_EQ(text(), u"第一行\r\n第二行"_s) << "there is none to open";
}

TEST_F(History, ARowWithoutATimeIsListedWithAnEmptyDateAtTheEnd) {
  addConversation();
  add(4, 25, 77, u"  padded  "_s, {});
  click(contacts(), 0);
  ASSERT_EQ(messages().itemCount(), 4);
  EXPECT_EQ(cells(messages().itemAt(3)), (QStringList{u"4 ID"_s, u""_s, u"发送"_s, u"padded"_s}));
}

TEST_F(History, AClickOnAMessageShowsItsWholeText) {
  addConversation();
  const QString longText = QString(u"很长的消息 "_s).repeated(5000);
  add(4, 25, 77, longText, u"2026-03-12 00:00:00"_s);
  click(contacts(), 0);
  click(messages(), 0);
  EXPECT_EQ(text(), longText);
  click(messages(), 1);
  EXPECT_EQ(text(), u"第一行\r\n第二行"_s);
  click(contacts(), 0);
  EXPECT_EQ(text(), u"第一行\r\n第二行"_s) << "it stays until another message is clicked";
}

TEST_F(History, OfALongMessageTheListPaintsTheBeginningAndKeepsAll) {
  const QString longText = QString(65'000, u'文');
  add(1, 25, 77, longText, u"2026-03-12 00:00:00"_s);
  click(contacts(), 0);
  EXPECT_EQ(messages().itemAt(0)->subItem(2), longText);
  const QString painted = messages().model()->index(0, 2).data().toString();
  EXPECT_EQ(painted, longText.left(1000) + u'…');
}

TEST_F(History, AMessageThatArrivedLaterIsListedWhenTheContactIsClickedAgain) {
  addConversation();
  click(contacts(), 0);
  add(4, 25, 77, u"later"_s, u"2026-03-12 00:00:00"_s);
  EXPECT_EQ(messages().itemCount(), 3);
  click(messages(), 0);
  EXPECT_EQ(text(), u"第一行\r\n第二行"_s);
  click(contacts(), 0);
  ASSERT_EQ(messages().itemCount(), 4);
  EXPECT_EQ(messages().itemAt(0)->subItem(2), u"later"_s);
}

TEST_F(History, AMessageIsFoundInTheHeldSetWithoutANewQuery) {
  addConversation();
  click(contacts(), 0);
  // A row that a new query would find, but the held set does not hold.
  add(4, 25, 77, u"later"_s, u"2026-03-12 00:00:00"_s);
  messages().itemAt(0)->setKey(u"4 ID"_s);
  click(messages(), 0);
  EXPECT_EQ(text(), QString());
}

TEST_F(History, AnIdBeyondSixteenBitsIsListedAndAClickOnItChangesNothing) {
  addConversation();
  add(32767, 25, 77, u"last"_s, u"2026-03-12 00:00:00"_s);
  add(32768, 25, 77, u"beyond"_s, u"2026-03-13 00:00:00"_s);
  click(contacts(), 0);
  ASSERT_EQ(messages().itemCount(), 5);
  EXPECT_EQ(messages().itemAt(0)->key(), u"32768 ID"_s);
  click(messages(), 1);
  EXPECT_EQ(text(), u"last"_s);
  click(messages(), 0);
  EXPECT_EQ(text(), u"last"_s);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(History, AnIdBeyondSixteenBitsIsNotCutDownToAnotherOne) {
  addConversation();
  add(65'537, 25, 77, u"the low bits of it are 1"_s, u"2026-03-12 00:00:00"_s);
  click(contacts(), 0);
  click(messages(), 0);
  EXPECT_EQ(text(), QString());
}

TEST_F(History, AContactBeyondSixteenBitsListsNothing) {
  addConversation();
  contacts().itemAt(0)->setTag(u"40000"_s);
  click(contacts(), 0);
  EXPECT_EQ(messages().itemCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(History, AFailedQueryLeavesTheListEmptyWithoutAWord) {
  addConversation();
  click(contacts(), 0);
  ASSERT_EQ(messages().itemCount(), 3);
  store.exec(u"ALTER TABLE XIXI RENAME TO GONE"_s);
  click(contacts(), 0);
  EXPECT_EQ(messages().itemCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(History, WithoutItsTableItOpensEmpty) {
  store.exec(u"DROP TABLE XIXI"_s);
  EXPECT_EQ(contacts().itemCount(), 0);
  EXPECT_TRUE(history().isVisible());
  EXPECT_TRUE(boxes->asked.isEmpty());
}

TEST_F(History, ItWorksOfflineWithoutAnyRequest) {
  beCompany(2, 0);
  goOffline();
  addConversation();
  click(contacts(), 0);
  EXPECT_EQ(messages().itemCount(), 3);
  EXPECT_TRUE(portal.requests().isEmpty());
}

TEST_F(History, ItChangesNoRow) {
  addConversation();
  const QStringList before = rows();
  click(contacts(), 0);
  click(messages(), 0);
  EXPECT_EQ(rows(), before);
}

TEST_F(History, ExitUnloadsItAndLeavesTheMessengerLoaded) {
  history().Toolbar1->button(u"Exit"_s)->trigger();
  EXPECT_FALSE(isLoaded<frmXIXI>());
  EXPECT_TRUE(isLoaded<frmPeer>());
}

TEST_F(History, APressOnThePictureNamesTheMaker) {
  boxes->expect(Answer::Ok);
  history().Image1->click();
  EXPECT_EQ(boxes->texts(), QStringList{u"澄岚信息工坊"_s});
}

TEST_F(History, HoldsAHundredThousandMessages) {
  store.exec(
      u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<100000) "
      u"INSERT INTO XIXI (qyxx_id,user_id,qyxx,UserName,content) "
      u"SELECT 25,77,'青禾书店','甲','消息'||i FROM n"_s);
  click(contacts(), 0);
  EXPECT_EQ(messages().itemCount(), 100'000);
}

class HistoryBars : public History {
 protected:
  HistoryBars() {
    history().resize(800, 600);
    QCoreApplication::processEvents();
  }

  QWidget& bar(const QString& name) { return *history().findChild<QWidget*>(name); }
  QPoint place(const QString& name) { return bar(name).mapTo(&history(), QPoint(0, 0)); }

  void drag(const QString& name, const QPoint& by, Qt::MouseButton end = Qt::LeftButton) {
    QWidget& one = bar(name);
    QTest::mousePress(&one, Qt::LeftButton, {}, QPoint(2, 2));
    QTest::mouseMove(&one, QPoint(2, 2) + by);
    if (end != Qt::LeftButton) {
      QTest::mousePress(&one, end, {}, QPoint(2, 2));
    } else {
      QTest::mouseRelease(&one, Qt::LeftButton, {}, QPoint(2, 2));
    }
  }
};

TEST_F(HistoryBars, AreFivePixelsThickAndStandBetweenTheirPanes) {
  EXPECT_EQ(bar(u"Splitter"_s).width(), 5);
  EXPECT_EQ(bar(u"Splittes"_s).height(), 5);
  EXPECT_LT(contacts().geometry().right(), place(u"Splitter"_s).x());
  const int below = history().Text1->mapTo(&history(), QPoint(0, 0)).y();
  EXPECT_GT(below, place(u"Splittes"_s).y());
  EXPECT_EQ(bar(u"Splittes"_s).parentWidget()->cursor().shape(), Qt::SplitVCursor);
}

TEST_F(HistoryBars, TheUprightOneMovesSidewaysAndTheLevelOneUpAndDown) {
  const QPoint upright = place(u"Splitter"_s);
  drag(u"Splitter"_s, QPoint(60, 30));
  EXPECT_EQ(place(u"Splitter"_s), upright + QPoint(60, 0));
  EXPECT_GT(contacts().width(), upright.x() + 40);
  const QPoint level = place(u"Splittes"_s);
  const int before = history().Text1->height();
  drag(u"Splittes"_s, QPoint(30, -50));
  EXPECT_EQ(place(u"Splittes"_s), level + QPoint(0, -50));
  EXPECT_EQ(history().Text1->height(), before + 50);
}

TEST_F(HistoryBars, StopAtTheLeastDistanceFromTheEdges) {
  drag(u"Splitter"_s, QPoint(-2000, 0));
  EXPECT_EQ(place(u"Splitter"_s).x(), 42);
  drag(u"Splitter"_s, QPoint(2000, 0));
  EXPECT_EQ(place(u"Splitter"_s).x(), 800 - 42);
  drag(u"Splitter"_s, QPoint(-400, 0));
  QWidget* pane = bar(u"Splittes"_s).parentWidget();
  drag(u"Splittes"_s, QPoint(0, -2000));
  EXPECT_EQ(bar(u"Splittes"_s).y(), 42);
  drag(u"Splittes"_s, QPoint(0, 2000));
  EXPECT_EQ(bar(u"Splittes"_s).y(), pane->height() - 42);
}

TEST_F(HistoryBars, AnotherButtonEndsADragAndCommitsIt) {
  const QPoint before = place(u"Splitter"_s);
  drag(u"Splitter"_s, QPoint(60, 0), Qt::RightButton);
  EXPECT_EQ(place(u"Splitter"_s), before + QPoint(60, 0));
  QTest::mouseMove(&bar(u"Splitter"_s), QPoint(90, 2));
  EXPECT_EQ(place(u"Splitter"_s), before + QPoint(60, 0));
}

}  // namespace
