#include "forms/LogBox.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>

#include "support/cpu_time.h"
#include "support/resident_memory.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

TEST(LogBox, PutsNewTextOnTopAndGivesItBackWithItsLineBreaks) {
  LogBox box(u"txtReceive(0)"_s, 1000);
  const QSignalSpy changed(&box, &TextBox::changed);
  box.prepend(u"old\r\n\r\n"_s);
  box.prepend(u"new\nline\r\n"_s);
  EXPECT_EQ(box.text(), u"new\r\nline\r\nold\r\n\r\n"_s);
  EXPECT_EQ(changed.count(), 2);
  box.prepend({});
  EXPECT_EQ(changed.count(), 2);
  EXPECT_TRUE(box.isReadOnly());
}

TEST(LogBox, KeepsWhatFitsItsLimitTheNewest) {
  LogBox box(u"txtReceive(0)"_s, 10);
  box.prepend(u"0123456789"_s);
  EXPECT_EQ(box.text(), u"0123456789"_s);
  box.prepend(u"ab"_s);
  EXPECT_EQ(box.text(), u"ab01234567"_s);
  box.prepend(QString(50, u'z'));
  EXPECT_EQ(box.text(), QString(10, u'z'));
}

TEST(LogBox, CutsNoCharacterInTwo) {
  LogBox box(u"txtReceive(0)"_s, 4);
  box.prepend(u"ab😀c"_s);
  EXPECT_EQ(box.text(), u"ab😀"_s);
  box.prepend(u"x"_s);
  EXPECT_EQ(box.text(), u"xab"_s);
}

TEST(LogBox, KeepsNoUndoAndShowsMarkupAsItIs) {
  LogBox box(u"txtReceive(0)"_s, 1000);
  box.prepend(u"<b>bold</b>"_s);
  auto* memo = qobject_cast<QPlainTextEdit*>(box.editor());
  ASSERT_NE(memo, nullptr);
  EXPECT_FALSE(memo->isUndoRedoEnabled());
  EXPECT_EQ(box.text(), u"<b>bold</b>"_s);
}

TEST(LogBox, KeepsNothingOfWhatFellOff) {
  LogBox box(u"txtReceive(0)"_s, 100'000);
  const QString text = QString(999, u'文') + u'\n';
  for (int i = 0; i < 1000; ++i) box.prepend(text);
  const qint64 before = residentMemory();
  for (int i = 0; i < 30'000; ++i) box.prepend(text);
  EXPECT_EQ(box.text().left(999), text.left(999));
  if (memoryCanBeMeasured) {
    EXPECT_LT(residentMemory() - before, 20 * 1024) << "KiB, of 60,000 that came";
  }
}

/// Counts how often a widget is painted.
class PaintCounter : public QObject {
 public:
  int count = 0;

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

TEST(LogBox, PaintsABurstOfTextsAFewTimesAndTheLastOfThemSurely) {
  LogBox box(u"txtReceive(0)"_s, 1000);
  box.resize(300, 200);
  box.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
  QCoreApplication::processEvents();
  auto* memo = qobject_cast<QPlainTextEdit*>(box.editor());
  PaintCounter painted;
  memo->viewport()->installEventFilter(&painted);
  QElapsedTimer clock;
  clock.start();
  constexpr int texts = 500;
  for (int i = 0; i < texts; ++i) {
    box.prepend(u"你好\r\n"_s);
    QCoreApplication::processEvents();
  }
  EXPECT_LE(painted.count, clock.elapsed() / 15 + 2);
  // Within one interval, which ends with a timer, once at most; however slow the machine is.
  int before = painted.count;
  for (int i = 0; i < texts; ++i) {
    box.prepend(u"你好\r\n"_s);
    QCoreApplication::sendPostedEvents();
  }
  EXPECT_LE(painted.count, before + 1);
  before = painted.count;
  box.prepend(u"最后"_s);
  EXPECT_TRUE(QTest::qWaitFor([&] { return painted.count > before; }));
  EXPECT_TRUE(QTest::qWaitFor([&] { return memo->updatesEnabled(); }));
}

double millisecondsOfHundred(LogBox& box) {
  const double before = workedMilliseconds();
  for (int i = 0; i < 100; ++i) box.prepend(u"接收：Li\r\n2026-3-9 8:05:07\r\n你好\r\n\r\n"_s);
  return workedMilliseconds() - before;
}

TEST(LogBox, ATextOnTopOfALongLogCostsNoMoreThanOnTopOfAShortOne) {
  LogBox little(u"txtReceive(0)"_s, 1 << 20);
  LogBox full(u"txtReceive(1)"_s, 1 << 20);
  for (int i = 0; i < 20; ++i)
    full.prepend(QString(u"一行文字，二十个字左右的样子。\r\n"_s).repeated(4000));
  millisecondsOfHundred(little);
  // Copying a megabyte for each would cost a hundred times as much.
  EXPECT_LT(millisecondsOfHundred(full), millisecondsOfHundred(little) * 10 + 20);
}

}  // namespace
