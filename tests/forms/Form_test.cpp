#include "forms/Form.h"

#include <QEventLoop>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "forms/FormTimer.h"
#include "forms/FormsFixture.h"

using namespace Qt::StringLiterals;
using qinghe::Form;
using Kind = Form::Kind;

namespace {

class FormTest : public FormsFixture {};

/// A form class of its own, for the default instance.
class FrmOne : public Form {
 public:
  FrmOne() : Form(Kind::Window, u"FrmOne"_s, u"One"_s) {}
  static inline std::function<void(FrmOne&)> inLoad;
  static inline bool keepsItself = false;

 protected:
  void onLoad() override {
    if (inLoad) inLoad(*this);
  }
  void onQueryUnload(qinghe::Cancel& cancel) override { cancel.value = keepsItself; }
};

class FrmTwo : public Form {
 public:
  FrmTwo() : Form(Kind::Child, u"FrmTwo"_s, u"Two"_s) {}
};

}  // namespace

TEST_F(FormTest, NameAndCaptionAreItsOwn) {
  LoggingForm form(Kind::Window, u"frmA"_s, log_);
  form.setCaption(u"商品登记(本地)"_s);
  EXPECT_EQ(form.objectName(), u"frmA"_s);
  EXPECT_EQ(form.windowTitle(), u"商品登记(本地)"_s);
}

TEST_F(FormTest, LoadsOnlyOnceAndAWindowStaysHiddenUntilShown) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.load();
  form.load();
  EXPECT_EQ(log_, QStringList{u"A load"_s});
  EXPECT_FALSE(form.isVisible());
  form.showForm();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(log_, (QStringList{u"A load"_s, u"A activate"_s}));
}

TEST_F(FormTest, ShowingLoadsFirst) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.showForm();
  EXPECT_EQ(log_, (QStringList{u"A load"_s, u"A activate"_s}));
}

TEST_F(FormTest, AChildShowsInTheFrameOnLoad) {
  frame();
  auto* form = new LoggingForm(Kind::Child, u"A"_s, log_);
  form->load();
  ASSERT_NE(windowOf(*form), nullptr);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(frame().currentSubWindow(), windowOf(*form));
}

TEST_F(FormTest, AChildThatShowsItselfInLoadIsShownOnce) {
  frame();
  auto* form = new LoggingForm(Kind::Child, u"A"_s, log_);
  form->inLoad = [form] { form->showForm(); };
  form->load();
  EXPECT_EQ(frame().subWindowList().size(), 1);
  EXPECT_EQ(log_, (QStringList{u"A load"_s, u"A activate"_s}));
}

TEST_F(FormTest, WithoutAFrameAChildIsAPlainWindow) {
  LoggingForm form(Kind::Child, u"A"_s, log_);
  form.load();
  EXPECT_TRUE(form.isVisible());
  EXPECT_TRUE(form.isWindow());
}

TEST_F(FormTest, UnloadAsksThenUnloadsThenDestroysLater) {
  QPointer<LoggingForm> form = new LoggingForm(Kind::Window, u"A"_s, log_);
  form->showForm();
  log_.clear();
  EXPECT_TRUE(form->unload());
  ASSERT_FALSE(form.isNull());
  EXPECT_TRUE(form->isUnloaded());
  EXPECT_FALSE(form->isVisible());
  EXPECT_TRUE(form->unload());
  EXPECT_EQ(log_, (QStringList{u"A query"_s, u"A unload"_s}));
  settle();
  EXPECT_TRUE(form.isNull());
}

TEST_F(FormTest, CancelKeepsTheForm) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.showForm();
  form.inQueryUnload = [](qinghe::Cancel& cancel) { cancel.value = true; };
  EXPECT_FALSE(form.unload());
  EXPECT_FALSE(form.isUnloaded());
  EXPECT_TRUE(form.isVisible());
  EXPECT_FALSE(log_.contains(u"A unload"_s));
}

TEST_F(FormTest, ClosingTheWindowAsksTheForm) {
  QPointer<LoggingForm> form = new LoggingForm(Kind::Window, u"A"_s, log_);
  form->showForm();
  bool keep = true;
  form->inQueryUnload = [&](qinghe::Cancel& cancel) { cancel.value = keep; };
  EXPECT_FALSE(form->close());
  EXPECT_TRUE(form->isVisible());
  keep = false;
  EXPECT_TRUE(form->close());
  EXPECT_TRUE(form->isUnloaded());
}

TEST_F(FormTest, ClosingAChildWindowAsksTheForm) {
  frame();
  QPointer<LoggingForm> form = new LoggingForm(Kind::Child, u"A"_s, log_);
  form->load();
  bool keep = true;
  form->inQueryUnload = [&](qinghe::Cancel& cancel) { cancel.value = keep; };
  EXPECT_FALSE(windowOf(*form)->close());
  EXPECT_TRUE(form->isVisible());
  ASSERT_EQ(frame().subWindowList().size(), 1);
  keep = false;
  EXPECT_TRUE(windowOf(*form)->close());
  EXPECT_EQ(log_.count(u"A unload"_s), 1);
  settle();
  EXPECT_TRUE(form.isNull());
  EXPECT_TRUE(frame().subWindowList().isEmpty());
}

TEST_F(FormTest, UnloadingAChildTakesItsWindowOutOfTheFrame) {
  frame();
  QPointer<LoggingForm> form = new LoggingForm(Kind::Child, u"A"_s, log_);
  form->load();
  EXPECT_TRUE(form->unload());
  EXPECT_FALSE(form->isVisible());
  settle();
  EXPECT_TRUE(frame().subWindowList().isEmpty());
  EXPECT_TRUE(form.isNull());
  EXPECT_EQ(log_.count(u"A query"_s), 1);
}

TEST_F(FormTest, AHiddenChildComesBackWhenShownAgain) {
  frame();
  auto* form = new LoggingForm(Kind::Child, u"A"_s, log_);
  form->load();
  form->hideForm();
  EXPECT_FALSE(form->isVisible());
  EXPECT_FALSE(windowOf(*form)->isVisible());
  log_.clear();
  form->showForm();
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(frame().subWindowList().size(), 1);
  EXPECT_EQ(log_, QStringList{u"A activate"_s});
}

TEST_F(FormTest, UnloadingInItsOwnButtonsHandlerIsSafe) {
  QPointer<LoggingForm> form = new LoggingForm(Kind::Dialog, u"A"_s, log_);
  auto* button = new QPushButton(form);
  QObject::connect(button, &QPushButton::clicked, form, [&] {
    form->unload();
    EXPECT_TRUE(form->isUnloaded());
    button->setText(u"still there"_s);
  });
  form->showForm();
  QTest::mouseClick(button, Qt::LeftButton);
  settle();
  EXPECT_TRUE(form.isNull());
}

TEST_F(FormTest, UnloadingInLoadLeavesNothingBehind) {
  for (const auto kind : {Kind::Child, Kind::Dialog, Kind::Window}) {
    frame();
    QPointer<LoggingForm> form = new LoggingForm(kind, u"A"_s, log_);
    form->inLoad = [&form] { form->unload(); };
    form->load();
    ASSERT_FALSE(form.isNull());
    EXPECT_FALSE(form->isVisible());
    form->showForm();
    EXPECT_FALSE(form->isVisible());
    form->showModal();
    settle();
    EXPECT_TRUE(form.isNull());
  }
}

TEST_F(FormTest, AFormUnloadedInAnInnerLoopOfItsOwnStepOutlivesTheStep) {
  QPointer<LoggingForm> form = new LoggingForm(Kind::Window, u"A"_s, log_);
  form->inLoad = [&] {
    QEventLoop inner;
    QTimer::singleShot(0, form, [&] { form->unload(); });
    QTimer::singleShot(20, &inner, &QEventLoop::quit);
    inner.exec();
    ASSERT_FALSE(form.isNull());
  };
  form->load();
  EXPECT_TRUE(form->isUnloaded());
  settle();
  EXPECT_TRUE(form.isNull());
}

TEST_F(FormTest, AFormUnloadedBehindAModalOneOutlivesItsOwnHandler) {
  // As when the tray's exit unloads everything while a picker is open over a screen.
  QPointer<LoggingForm> opener = new LoggingForm(Kind::Window, u"A"_s, log_);
  auto* button = new QPushButton(opener);
  bool outlived = false;
  QObject::connect(button, &QPushButton::clicked, opener, [&] {
    auto* picker = new LoggingForm(Kind::Dialog, u"B"_s, log_);
    QTimer::singleShot(0, picker, [&] { opener->unload(); });
    QTimer::singleShot(20, picker, [picker] { picker->unload(); });
    picker->showModal();
    outlived = !opener.isNull();
  });
  opener->showForm();
  QEventLoop outer;  // as the program's own
  QTimer::singleShot(0, &outer, [&] { QTest::mouseClick(button, Qt::LeftButton); });
  QTimer::singleShot(100, &outer, &QEventLoop::quit);
  outer.exec();
  EXPECT_TRUE(outlived);
  settle();
  EXPECT_TRUE(opener.isNull());
}

TEST_F(FormTest, AskedAgainWhileTheQuestionIsOpenItStays) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.showForm();
  form.inQueryUnload = [&](qinghe::Cancel& cancel) {
    EXPECT_FALSE(form.unload());
    cancel.value = true;
  };
  EXPECT_FALSE(form.unload());
  EXPECT_EQ(log_.count(u"A query"_s), 1);
}

TEST_F(FormTest, UnloadStopsItsTimers) {
  auto* form = new LoggingForm(Kind::Window, u"A"_s, log_);
  auto* timer = new qinghe::FormTimer(u"Timer1"_s, 1, form);
  timer->setEnabled(true);
  form->unload();
  EXPECT_FALSE(timer->isEnabled());
}

TEST_F(FormTest, AWindowManagersCloseDuringAPortalReadIsIgnored) {
  LoggingForm form(Kind::Window, u"A"_s, log_);
  form.showForm();
  state_->gate.hold();
  EXPECT_FALSE(form.close());
  EXPECT_FALSE(form.isUnloaded());
  state_->gate.release();
  EXPECT_FALSE(log_.contains(u"A query"_s));
}

// Modal showing

TEST_F(FormTest, ModalShowingReturnsWhenTheFormIsHidden) {
  LoggingForm form(Kind::Dialog, u"A"_s, log_);
  QTimer::singleShot(0, &form, [&] {
    EXPECT_TRUE(form.isVisible());
    form.hideForm();
  });
  form.showModal();
  EXPECT_FALSE(form.isVisible());
  EXPECT_FALSE(form.isUnloaded());
  EXPECT_FALSE(form.isModal());
}

TEST_F(FormTest, ModalShowingReturnsWhenTheFormIsUnloadedAndItsControlsCanStillBeRead) {
  auto* form = new LoggingForm(Kind::Dialog, u"A"_s, log_);
  auto* edit = new QLineEdit(u"chosen"_s, form);
  QTimer::singleShot(0, form, [form] { form->unload(); });
  form->showModal();
  EXPECT_TRUE(form->isUnloaded());
  EXPECT_EQ(edit->text(), u"chosen"_s);
}

TEST_F(FormTest, ModalShowingReturnsAtOnceWhenTheFormIsGoneAlready) {
  auto* form = new LoggingForm(Kind::Dialog, u"A"_s, log_);
  form->unload();
  form->showModal();
  EXPECT_FALSE(form->isVisible());
}

TEST_F(FormTest, ModalShowingReturnsWhenActivateUnloadsTheForm) {
  auto* form = new LoggingForm(Kind::Dialog, u"A"_s, log_);
  form->inActivate = [form] { form->unload(); };
  form->showModal();
  EXPECT_TRUE(form->isUnloaded());
}

TEST_F(FormTest, ModalFormsNest) {
  LoggingForm outer(Kind::Dialog, u"A"_s, log_);
  LoggingForm inner(Kind::Dialog, u"B"_s, log_);
  QStringList order;
  QTimer::singleShot(0, &outer, [&] {
    QTimer::singleShot(0, &inner, [&] { inner.hideForm(); });
    inner.showModal();
    order << u"inner"_s;
    EXPECT_TRUE(outer.isVisible());
    outer.hideForm();
  });
  outer.showModal();
  order << u"outer"_s;
  EXPECT_EQ(order, (QStringList{u"inner"_s, u"outer"_s}));
}

TEST_F(FormTest, AModalFormBlocksTheFrameBelowIt) {
  auto* button = new QPushButton(u"below"_s);
  frameWindow().setMenuWidget(button);
  settle();
  QSignalSpy clicked(button, &QPushButton::clicked);
  LoggingForm form(Kind::Dialog, u"A"_s, log_);
  QTimer::singleShot(0, &form, [&] {
    QTest::mouseClick(frameWindow().windowHandle(), Qt::LeftButton, {},
                      button->mapTo(&frameWindow(), button->rect().center()));
    EXPECT_EQ(clicked.count(), 0);
    form.hideForm();
  });
  form.showModal();
  QTest::mouseClick(frameWindow().windowHandle(), Qt::LeftButton, {},
                    button->mapTo(&frameWindow(), button->rect().center()));
  EXPECT_EQ(clicked.count(), 1);
}

TEST_F(FormTest, EscUnloadsADialogAndNoOtherForm) {
  auto* dialog = new LoggingForm(Kind::Dialog, u"A"_s, log_);
  auto* edit = new QLineEdit(dialog);
  dialog->showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
  edit->setFocus();
  QTest::keyClick(edit, Qt::Key_Escape);
  EXPECT_TRUE(dialog->isUnloaded());

  LoggingForm window(Kind::Window, u"B"_s, log_);
  window.showForm();
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isUnloaded());
}

TEST_F(FormTest, EnterInADialogPressesTheDefaultButtonOrTheOneWithTheFocus) {
  LoggingForm form(Kind::Dialog, u"A"_s, log_);
  auto* box = new QVBoxLayout(&form);
  auto* edit = new QLineEdit;
  auto* ok = new QPushButton(u"确定"_s);
  auto* cancel = new QPushButton(u"取消"_s);
  for (auto* widget : std::initializer_list<QWidget*>{edit, ok, cancel}) box->addWidget(widget);
  ok->setDefault(true);
  QSignalSpy okClicked(ok, &QPushButton::clicked);
  QSignalSpy cancelClicked(cancel, &QPushButton::clicked);
  form.showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  edit->setFocus();
  QTest::keyClick(edit, Qt::Key_Return);
  EXPECT_EQ(okClicked.count(), 1);
  cancel->setFocus();
  QTest::keyClick(cancel, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(okClicked.count(), 1);
  EXPECT_EQ(cancelClicked.count(), 1);
}

// Focus and place

TEST_F(FormTest, AChildOpensWithTheFocusOnTheFirstThatTakesIt) {
  frame();
  LoggingForm form(Kind::Child, u"A"_s, log_);
  auto* closed = new QLineEdit(&form);
  closed->setEnabled(false);
  auto* hidden = new QLineEdit(&form);
  hidden->hide();
  auto* open = new QLineEdit(&form);
  new QLineEdit(&form);
  form.showForm();
  settle();
  EXPECT_EQ(QApplication::focusWidget(), open);
}

TEST_F(FormTest, AChildThatIsAskedForAgainKeepsTheFocusWhereItWas) {
  frame();
  LoggingForm form(Kind::Child, u"A"_s, log_);
  new QLineEdit(&form);
  auto* second = new QLineEdit(&form);
  form.showForm();
  second->setFocus();
  form.showForm();
  settle();
  EXPECT_EQ(QApplication::focusWidget(), second);
}

TEST_F(FormTest, ADialogStaysOnTheScreenHoweverLargeItWouldBe) {
  const QRect screen = frameWindow().screen()->availableGeometry();
  frameWindow().move(screen.bottomRight() - QPoint(60, 60));
  settle();
  LoggingForm form(Kind::Dialog, u"A"_s, log_);
  (new QVBoxLayout(&form))->addWidget(new QPlainTextEdit);
  form.resize(screen.size() * 2);
  form.showForm();
  EXPECT_TRUE(screen.contains(form.geometry()));
  LoggingForm small(Kind::Dialog, u"B"_s, log_);
  (new QVBoxLayout(&small))->addWidget(new QPlainTextEdit);
  small.resize(200, 100);
  frameWindow().activateWindow();
  small.showForm();
  EXPECT_EQ(small.size(), QSize(200, 100));
  EXPECT_TRUE(screen.contains(small.geometry()));
}

// Default instances

TEST_F(FormTest, TheDefaultInstanceIsMadeAndLoadedOnFirstUse) {
  FrmOne::inLoad = [](FrmOne& self) { EXPECT_EQ(&qinghe::defaultInstance<FrmOne>(), &self); };
  EXPECT_FALSE(qinghe::isLoaded<FrmOne>());
  auto& form = qinghe::defaultInstance<FrmOne>();
  FrmOne::inLoad = {};
  EXPECT_TRUE(qinghe::isLoaded<FrmOne>());
  EXPECT_EQ(&qinghe::defaultInstance<FrmOne>(), &form);
  EXPECT_FALSE(qinghe::isLoaded<FrmTwo>());
}

TEST_F(FormTest, UnloadingClearsTheDefaultInstanceAtOnce) {
  QPointer<FrmOne> first = &qinghe::defaultInstance<FrmOne>();
  EXPECT_TRUE(qinghe::unload<FrmOne>());
  EXPECT_FALSE(qinghe::isLoaded<FrmOne>());
  QPointer<FrmOne> second = &qinghe::defaultInstance<FrmOne>();
  EXPECT_NE(first, second);
  settle();
  EXPECT_TRUE(first.isNull());
  EXPECT_FALSE(second.isNull());
}

TEST_F(FormTest, ADefaultInstanceThatKeepsItselfStays) {
  EXPECT_TRUE(qinghe::unload<FrmOne>()) << "nothing to unload";
  qinghe::defaultInstance<FrmOne>();
  FrmOne::keepsItself = true;
  EXPECT_FALSE(qinghe::unload<FrmOne>());
  EXPECT_TRUE(qinghe::isLoaded<FrmOne>());
  FrmOne::keepsItself = false;
}

TEST_F(FormTest, ADefaultInstanceThatUnloadsItselfInLoadIsNotLoaded) {
  FrmOne::inLoad = [](FrmOne& self) { self.unload(); };
  auto& form = qinghe::defaultInstance<FrmOne>();
  FrmOne::inLoad = {};
  EXPECT_TRUE(form.isUnloaded());
  form.showForm();
  EXPECT_FALSE(qinghe::isLoaded<FrmOne>());
}

TEST_F(FormTest, LoadedFormsAreListedInTheOrderOfLoading) {
  auto& two = qinghe::defaultInstance<FrmTwo>();
  auto& one = qinghe::defaultInstance<FrmOne>();
  EXPECT_EQ(state_->registry.loaded(), (std::vector<Form*>{&two, &one}));
}

TEST_F(FormTest, AnUnloadedFormThatIsStillToBeDestroyedGoesWithTheStateToo) {
  auto* form = new LoggingForm(Form::Kind::Window, u"late"_s, log_);
  form->load();
  EXPECT_TRUE(form->unload());
  EXPECT_FALSE(log_.contains(u"late gone"_s));
  state_.reset();
  EXPECT_TRUE(log_.contains(u"late gone"_s));
}

TEST_F(FormTest, FormsGoWithTheirState) {
  QPointer<FrmOne> loaded = &qinghe::defaultInstance<FrmOne>();
  QPointer<FrmTwo> unloaded = &qinghe::defaultInstance<FrmTwo>();
  unloaded->unload();
  state_.reset();
  EXPECT_TRUE(loaded.isNull());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(unloaded.isNull());
}
