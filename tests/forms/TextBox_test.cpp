#include "forms/TextBox.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/FormsFixture.h"
#include "forms/ListView.h"
#include "forms/Toolbar.h"

using namespace Qt::StringLiterals;
using qinghe::TextBox;
using Lines = TextBox::Lines;

namespace {

class TextBoxTest : public FormsFixture {
 protected:
  TextBoxTest() {
    auto* column = new QVBoxLayout(&form_);
    bar_->addButton(u"Save"_s, u"保存"_s, u"Save"_s);
    for (auto* widget :
         std::initializer_list<QWidget*>{bar_, price_, memo_, list_, check_, button_}) {
      column->addWidget(widget);
    }
    list_->addColumn(u"商品名称"_s, 100);
    list_->addItem(u"1 ID"_s, u"a"_s);
    list_->addItem(u"2 ID"_s, u"b"_s);
    button_->setFocusPolicy(Qt::StrongFocus);
    price_->onValidate = [this] {
      ++asked_;
      if (inValidate_) inValidate_();
      return accepts_;
    };
  }

  void open() {
    form_.showForm();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form_));
    price_->setFocus();
    ASSERT_TRUE(price_->editor()->hasFocus());
  }

  LoggingForm form_{qinghe::Form::Kind::Window, u"frmTest"_s, log_};
  qinghe::Toolbar* bar_ = new qinghe::Toolbar(u"Toolbar1"_s, &form_);
  TextBox* price_ = new TextBox(u"txtFields(3)"_s, Lines::One, &form_);
  TextBox* memo_ = new TextBox(u"txtFields(8)"_s, Lines::Many, &form_);
  qinghe::ListView* list_ = new qinghe::ListView(u"ListView1"_s, &form_);
  QCheckBox* check_ = new QCheckBox(u"check"_s, &form_);
  QPushButton* button_ = new QPushButton(u"button"_s, &form_);
  int asked_ = 0;
  bool accepts_ = true;
  std::function<void()> inValidate_;
};

}  // namespace

TEST_F(TextBoxTest, TheEditorIsFoundByNameAndTakesTheFocus) {
  open();
  EXPECT_EQ(form_.findChild<QLineEdit*>(u"txtFields(3).editor"_s), price_->editor());
  EXPECT_EQ(form_.findChild<TextBox*>(u"txtFields(3)"_s), price_);
  EXPECT_NE(qobject_cast<QPlainTextEdit*>(memo_->editor()), nullptr);
  price_->setFocus();
  EXPECT_EQ(QApplication::focusWidget(), price_->editor());
  static_cast<QWidget*>(memo_)->setFocus();
  EXPECT_EQ(QApplication::focusWidget(), memo_->editor());
}

TEST_F(TextBoxTest, TabComesToABoxOnceWhereverItsEditorWasPut) {
  QWidget* const order[] = {list_, memo_->editor(), button_, price_->editor(), check_};
  for (std::size_t i = 1; i < std::size(order); ++i) QWidget::setTabOrder(order[i - 1], order[i]);
  accepts_ = true;
  form_.showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form_));
  order[0]->setFocus();
  for (std::size_t i = 1; i <= std::size(order); ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), order[i % std::size(order)]) << i;
  }
  for (std::size_t i = std::size(order); i-- > 0;) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), order[i]) << i;
  }
}

TEST_F(TextBoxTest, ADisabledBoxHasTheColourOfTheFormBehindItInEveryTheme) {
  QPalette dark = form_.palette();
  dark.setColor(QPalette::Window, QColor(40, 44, 48));
  dark.setColor(QPalette::Base, QColor(20, 22, 24));
  form_.setPalette(dark);
  EXPECT_EQ(price_->editor()->palette().color(QPalette::Active, QPalette::Base),
            QColor(20, 22, 24));
  EXPECT_EQ(price_->editor()->palette().color(QPalette::Disabled, QPalette::Base),
            QColor(40, 44, 48));
}

TEST_F(TextBoxTest, LineBreaksGoInEitherWayAndComeOutAsCrLf) {
  const std::pair<QString, QString> cases[] = {
      {u""_s, u""_s},
      {u"one"_s, u"one"_s},
      {u"a\nb"_s, u"a\r\nb"_s},
      {u"a\r\nb"_s, u"a\r\nb"_s},
      {u"a\rb"_s, u"a\r\nb"_s},
      {u"a\r\n\r\nb\n"_s, u"a\r\n\r\nb\r\n"_s},
      {u"\n"_s, u"\r\n"_s},
      {u"一\u00A0二\tthree  "_s, u"一\u00A0二\tthree  "_s},
      {u"<b>not bold</b> & \"'"_s, u"<b>not bold</b> & \"'"_s},
  };
  for (const auto& [in, out] : cases) {
    memo_->setText(in);
    EXPECT_EQ(memo_->text(), out);
  }
}

TEST_F(TextBoxTest, ASingleLineKeepsItsTextWhateverItHolds) {
  for (const auto& text : {u""_s, u"  blanks "_s, u"<i>x</i>"_s, QString(40000, u'字')}) {
    price_->setText(text);
    EXPECT_EQ(price_->text(), text);
  }
}

TEST_F(TextBoxTest, ChangedComesForCodeAndUserAndOnlyWhenTheTextDiffers) {
  open();
  for (auto* box : {price_, memo_}) {
    QSignalSpy changed(box, &TextBox::changed);
    box->setText(u"x"_s);
    EXPECT_EQ(changed.count(), 1);
    box->setText(u"x"_s);
    EXPECT_EQ(changed.count(), 1);
    QTest::keyClick(box->editor(), Qt::Key_End);
    EXPECT_EQ(changed.count(), 1);
    QTest::keyClicks(box->editor(), u"yz"_s);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(box->text(), u"xyz"_s);
    box->setText(QString());
    EXPECT_EQ(changed.count(), 4);
    box->setText(QString());
    EXPECT_EQ(changed.count(), 4);
  }
}

TEST_F(TextBoxTest, TheSameTextWithOtherLineBreaksIsNoChange) {
  memo_->setText(u"a\r\nb"_s);
  QSignalSpy changed(memo_, &TextBox::changed);
  memo_->setText(u"a\nb"_s);
  EXPECT_EQ(changed.count(), 0);
}

TEST_F(TextBoxTest, TypingTheSameTextOverItselfIsNoChange) {
  open();
  for (auto* box : {price_, memo_}) {
    box->setText(u"x"_s);
    box->setFocus();
    box->selectAll();
    QSignalSpy changed(box, &TextBox::changed);
    QTest::keyClicks(box->editor(), u"x"_s);
    EXPECT_EQ(box->text(), u"x"_s);
    EXPECT_EQ(changed.count(), 0);
  }
}

TEST_F(TextBoxTest, TheTagIsCarriedAlongWithoutAChange) {
  QSignalSpy changed(price_, &TextBox::changed);
  price_->Tag = u"12"_s;
  EXPECT_EQ(changed.count(), 0);
  EXPECT_EQ(price_->Tag, u"12"_s);
}

TEST_F(TextBoxTest, PastedMarkupArrivesAsItsPlainText) {
  open();
  auto* mime = new QMimeData;
  mime->setText(u"bold"_s);
  mime->setData(u"text/html"_s, "<b>bold</b>");
  QApplication::clipboard()->setMimeData(mime);
  memo_->setFocus();
  QTest::keyClick(memo_->editor(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(memo_->text(), u"bold"_s);
}

TEST_F(TextBoxTest, ReadOnlyAndPasswordBoxes) {
  open();
  price_->setReadOnly(true);
  EXPECT_TRUE(price_->isReadOnly());
  QTest::keyClicks(price_->editor(), u"1"_s);
  EXPECT_EQ(price_->text(), QString());
  memo_->setReadOnly(true);
  QTest::keyClicks(memo_->editor(), u"1"_s);
  EXPECT_EQ(memo_->text(), QString());
  price_->setPasswordMode();
  EXPECT_EQ(qobject_cast<QLineEdit*>(price_->editor())->echoMode(), QLineEdit::Password);
}

TEST_F(TextBoxTest, AReadOnlyBoxHasTheColourOfTheFormInEveryTheme) {
  const auto base = [this] { return price_->editor()->palette().color(QPalette::Base); };
  EXPECT_EQ(base(), form_.palette().color(QPalette::Base));
  price_->setReadOnly(true);
  EXPECT_EQ(base(), form_.palette().color(QPalette::Window));
  auto dark = form_.palette();
  dark.setColor(QPalette::Window, QColor(40, 41, 42));
  form_.setPalette(dark);
  EXPECT_EQ(base(), QColor(40, 41, 42));
  price_->setReadOnly(false);
  EXPECT_EQ(base(), dark.color(QPalette::Base));
}

TEST_F(TextBoxTest, ItsHintCanBeReadInADarkTheme) {
  const auto hint = [this] { return price_->editor()->palette().color(QPalette::PlaceholderText); };
  EXPECT_EQ(hint().rgb(), form_.palette().color(QPalette::Text).rgb());
  auto dark = form_.palette();
  dark.setColor(QPalette::Text, QColor(250, 251, 252));
  dark.setColor(QPalette::PlaceholderText, Qt::black);
  form_.setPalette(dark);
  EXPECT_EQ(hint().rgb(), QColor(250, 251, 252).rgb());
  EXPECT_GT(hint().alpha(), 140);
}

TEST_F(TextBoxTest, SelectAllSelectsTheWholeText) {
  price_->setText(u"abc"_s);
  price_->selectAll();
  EXPECT_EQ(qobject_cast<QLineEdit*>(price_->editor())->selectedText(), u"abc"_s);
  memo_->setText(u"abc"_s);
  memo_->selectAll();
  EXPECT_TRUE(qobject_cast<QPlainTextEdit*>(memo_->editor())->textCursor().hasSelection());
}

TEST_F(TextBoxTest, TabMovesOnInBoxesOfManyLines) {
  open();
  memo_->setFocus();
  QTest::keyClick(memo_->editor(), Qt::Key_Tab);
  EXPECT_TRUE(list_->hasFocus());
  QTest::keyClick(list_, Qt::Key_Backtab);
  EXPECT_TRUE(memo_->editor()->hasFocus());
  QTest::keyClick(memo_->editor(), Qt::Key_Backtab);
  EXPECT_TRUE(price_->editor()->hasFocus());
  EXPECT_EQ(memo_->text(), QString());
}

TEST_F(TextBoxTest, GotAndLostFocusTellMovesAndNoSwitchOfWindows) {
  open();
  QSignalSpy got(price_, &TextBox::gotFocus);
  QSignalSpy lost(price_, &TextBox::lostFocus);
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(lost.count(), 1);
  price_->setFocus();
  EXPECT_EQ(got.count(), 1);
  QApplication::setActiveWindow(nullptr);
  QApplication::setActiveWindow(&form_);
  settle();
  EXPECT_EQ(got.count(), 1);
  EXPECT_EQ(lost.count(), 1);
}

// Validate

TEST_F(TextBoxTest, ValidateIsAskedOnTabBacktabAndMouse) {
  open();
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(asked_, 1);
  EXPECT_TRUE(memo_->editor()->hasFocus());
  price_->setFocus();
  QTest::keyClick(price_->editor(), Qt::Key_Backtab);
  EXPECT_EQ(asked_, 2);
  price_->setFocus();
  QTest::mouseClick(check_, Qt::LeftButton, {}, QPoint(8, check_->height() / 2));
  EXPECT_EQ(asked_, 3);
  EXPECT_TRUE(check_->isChecked());
  price_->setFocus();
  QTest::mouseClick(list_->viewport(), Qt::LeftButton, {},
                    list_->cellRect(list_->itemAt(1)).center());
  EXPECT_EQ(asked_, 4);
  EXPECT_EQ(list_->selectedItem(), list_->itemAt(1));
}

TEST_F(TextBoxTest, ARefusedValidateKeepsFocusAndTextOnTab) {
  open();
  accepts_ = false;
  QTest::keyClicks(price_->editor(), u"abc"_s);
  QSignalSpy lost(price_, &TextBox::lostFocus);
  QSignalSpy got(price_, &TextBox::gotFocus);
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(asked_, 1);
  EXPECT_TRUE(price_->editor()->hasFocus());
  EXPECT_EQ(price_->text(), u"abc"_s);
  EXPECT_EQ(lost.count() + got.count(), 0);
  QTest::keyClicks(price_->editor(), u"d"_s);
  EXPECT_EQ(price_->text(), u"abcd"_s);
}

TEST_F(TextBoxTest, ARefusedValidateEatsThePressThatLeftTheBox) {
  open();
  accepts_ = false;
  auto* first = list_->selectedItem();
  QSignalSpy clicked(list_, &qinghe::ListView::itemClick);
  QSignalSpy up(list_, &qinghe::ListView::mouseUp);
  const auto place = list_->cellRect(list_->itemAt(1)).center();
  QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(asked_, 1);
  EXPECT_EQ(clicked.count() + up.count(), 0);
  EXPECT_EQ(list_->selectedItem(), first);
  EXPECT_TRUE(price_->editor()->hasFocus());

  QSignalSpy pressed(button_, &QPushButton::clicked);
  QTest::mouseClick(button_, Qt::LeftButton);
  EXPECT_EQ(pressed.count(), 0);

  accepts_ = true;
  QTest::mouseClick(list_->viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(clicked.count(), 1) << "only the refused press was eaten";
}

TEST_F(TextBoxTest, AMessageBoxInValidateIsAskedOnce) {
  open();
  accepts_ = false;
  inValidate_ = [this] {
    QDialog box(&form_);
    QTimer::singleShot(0, &box, [&] {
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &box; }));
      box.accept();
    });
    box.exec();
    price_->setFocus();
  };
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(asked_, 1);
  form_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form_));
  EXPECT_TRUE(price_->editor()->hasFocus());
  EXPECT_EQ(asked_, 1);
  inValidate_ = {};
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(asked_, 2) << "and again at the next try";
}

TEST_F(TextBoxTest, BoxesThatRefuseDoNotAskEachOther) {
  open();
  accepts_ = false;
  int memoAsked = 0;
  memo_->onValidate = [&] {
    ++memoAsked;
    return false;
  };
  QTest::keyClick(price_->editor(), Qt::Key_Tab);
  EXPECT_EQ(asked_, 1);
  EXPECT_EQ(memoAsked, 0);
  EXPECT_TRUE(price_->editor()->hasFocus());
}

TEST_F(TextBoxTest, ValidateIsNotAskedForToolBarsAndShortcuts) {
  open();
  accepts_ = false;
  QSignalSpy saved(bar_, &qinghe::Toolbar::buttonClick);
  QTest::mouseClick(bar_->widgetForAction(bar_->button(u"Save"_s)), Qt::LeftButton);
  QTest::keyClick(price_->editor(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(saved.count(), 2);
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateIsNotAskedAtASwitchOfWindows) {
  open();
  accepts_ = false;
  QApplication::setActiveWindow(nullptr);
  settle();
  QApplication::setActiveWindow(&form_);
  settle();
  LoggingForm other(qinghe::Form::Kind::Window, u"other"_s, log_);
  auto* edit = new QLineEdit(&other);
  other.showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  edit->setFocus();
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateIsNotAskedOnTheWayToAnotherChildOfTheFrame) {
  frame();
  auto* a = new LoggingForm(qinghe::Form::Kind::Child, u"A"_s, log_);
  auto* box = new TextBox(u"Text1"_s, Lines::One, a);
  box->onValidate = [this] {
    ++asked_;
    return false;
  };
  a->load();
  auto* b = new LoggingForm(qinghe::Form::Kind::Child, u"B"_s, log_);
  auto* edit = new QLineEdit(b);
  b->load();
  settle();
  frame().setActiveSubWindow(windowOf(*a));
  box->setFocus();
  ASSERT_TRUE(box->editor()->hasFocus());
  QTest::mouseClick(edit, Qt::LeftButton);
  EXPECT_TRUE(edit->hasFocus());
  box->setFocus();
  edit->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateIsNotAskedForAMenu) {
  open();
  accepts_ = false;
  QMenu menu(&form_);
  menu.addAction(u"x"_s);
  menu.popup(form_.mapToGlobal(QPoint(5, 5)));
  settle();
  menu.close();
  settle();
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateIsNotAskedWhenTheFormHidesOrCloses) {
  open();
  accepts_ = false;
  form_.hideForm();
  EXPECT_EQ(asked_, 0);

  auto* closing = new LoggingForm(qinghe::Form::Kind::Window, u"B"_s, log_);
  auto* box = new TextBox(u"Text1"_s, Lines::One, closing);
  auto* other = new QLineEdit(closing);
  box->onValidate = [this] {
    ++asked_;
    return false;
  };
  closing->inQueryUnload = [other](qinghe::Cancel&) { other->setFocus(Qt::TabFocusReason); };
  closing->showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(closing));
  box->setFocus();
  EXPECT_TRUE(closing->close());
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateIsNotAskedWhenCodeMovesTheFocusOrDisablesTheBox) {
  open();
  accepts_ = false;
  check_->setFocus();
  EXPECT_TRUE(check_->hasFocus());
  price_->setFocus();
  price_->setEnabled(false);
  EXPECT_EQ(asked_, 0);
}

TEST_F(TextBoxTest, ValidateMayUnloadTheForm) {
  auto* form = new LoggingForm(qinghe::Form::Kind::Window, u"B"_s, log_);
  auto* box = new TextBox(u"Text1"_s, Lines::One, form);
  new QLineEdit(form);
  box->onValidate = [form] { return !form->unload(); };
  form->showForm();
  ASSERT_TRUE(QTest::qWaitForWindowActive(form));
  box->setFocus();
  QTest::keyClick(box->editor(), Qt::Key_Tab);
  EXPECT_TRUE(form->isUnloaded());
  settle();
  EXPECT_TRUE(log_.contains(u"B gone"_s));
}
