#include "forms/ActiveForm.h"

#include <QDialog>
#include <QMenu>

#include "forms/FormsFixture.h"

using namespace Qt::StringLiterals;
using Kind = qinghe::Form::Kind;

namespace {

class ActiveFormTest : public FormsFixture {};

}  // namespace

TEST_F(ActiveFormTest, ActivateComesWhenAnotherFormWasInFront) {
  LoggingForm a(Kind::Window, u"A"_s, log_);
  LoggingForm b(Kind::Window, u"B"_s, log_);
  a.showForm();
  b.showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&b));
  settle();
  log_.clear();
  a.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&a));
  EXPECT_EQ(log_, QStringList{u"A activate"_s});
  a.showForm();  // in front already
  settle();
  EXPECT_EQ(log_, QStringList{u"A activate"_s});
}

TEST_F(ActiveFormTest, ActivateComesWhenTheFrameOrAnotherChildWasInFront) {
  frame();
  auto* a = new LoggingForm(Kind::Child, u"A"_s, log_);
  auto* b = new LoggingForm(Kind::Child, u"B"_s, log_);
  a->load();
  b->load();
  settle();
  log_.clear();
  frame().setActiveSubWindow(windowOf(*a));
  settle();
  EXPECT_EQ(log_, QStringList{u"A activate"_s});
  a->unload();
  settle();
  EXPECT_EQ(log_.last(), u"A gone"_s);
  EXPECT_EQ(log_.count(u"B activate"_s), 1);
}

TEST_F(ActiveFormTest, ActivateComesToTheOpenerWhenAModalFormGoes) {
  frame();
  auto* a = new LoggingForm(Kind::Child, u"A"_s, log_);
  a->load();
  settle();
  log_.clear();
  LoggingForm picker(Kind::Dialog, u"B"_s, log_);
  QTimer::singleShot(0, &picker, [&] { picker.hideForm(); });
  picker.showModal();
  EXPECT_FALSE(log_.contains(u"A activate"_s)) << "not before the opener has read the picker";
  EXPECT_TRUE(QTest::qWaitFor([&] { return log_.contains(u"A activate"_s); }));
  EXPECT_EQ(log_.count(u"A activate"_s), 1);
}

TEST_F(ActiveFormTest, ActivateDoesNotComeAfterAMessageBoxAPopupOrAnotherProgram) {
  frame();
  auto* a = new LoggingForm(Kind::Child, u"A"_s, log_);
  a->load();
  settle();
  log_.clear();

  QDialog box(&frameWindow());
  // A dialog counts as active together with its parent, so ask which of them really is.
  const auto isInFront = [](const QWidget* window) {
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
  };
  box.show();
  box.activateWindow();
  ASSERT_TRUE(isInFront(&box));
  box.hide();
  frameWindow().activateWindow();
  ASSERT_TRUE(isInFront(&frameWindow()));

  QMenu menu(&frameWindow());
  menu.addAction(u"x"_s);
  menu.popup(frameWindow().geometry().center());
  settle();
  menu.close();
  settle();

  QApplication::setActiveWindow(nullptr);
  settle();
  QApplication::setActiveWindow(&frameWindow());
  settle();
  EXPECT_EQ(log_, QStringList{});
}

TEST_F(ActiveFormTest, ActivateWaitsForTheEndOfAPortalRead) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.load();
  log_.clear();
  state_->gate.hold();
  form.showForm();
  settle();
  EXPECT_EQ(log_, QStringList{});
  state_->gate.release();
  EXPECT_EQ(log_, QStringList{}) << "the reader is still at work";
  EXPECT_TRUE(QTest::qWaitFor([&] { return log_ == QStringList{u"A activate"_s}; }));
}
