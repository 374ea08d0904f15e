#include "forms/Toolbar.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include "forms/FormsFixture.h"
#include "forms/StatusBar.h"

using namespace Qt::StringLiterals;
using qinghe::Form;
using qinghe::StatusBar;
using qinghe::Toolbar;

namespace {

/// A child form with a tool bar and something that takes the focus.
class BarForm : public Form {
 public:
  explicit BarForm(const QString& name) : Form(Kind::Child, name, name) {
    auto* column = new QVBoxLayout(this);
    column->addWidget(bar);
    column->addWidget(edit);
    for (const auto& key : {u"Print"_s, u"Add"_s, u"Save"_s, u"Exit"_s}) {
      bar->addButton(key, key, key);
    }
    QObject::connect(bar, &Toolbar::buttonClick, this, [this](const QString& key) { keys << key; });
  }

  Toolbar* bar = new Toolbar(u"Toolbar1"_s, this);
  QLineEdit* edit = new QLineEdit(this);
  QStringList keys;
};

class ToolbarTest : public FormsFixture {};

}  // namespace

TEST_F(ToolbarTest, AButtonShowsItsCaptionAndToolTipAndTellsItsKey) {
  Toolbar bar(u"Toolbar1"_s);
  auto* action = bar.addButton(u"Save"_s, u"保存"_s, u"Save"_s);
  EXPECT_EQ(bar.objectName(), u"Toolbar1"_s);
  EXPECT_EQ(action->objectName(), u"Save"_s);
  EXPECT_EQ(action->text(), u"保存"_s);
  EXPECT_EQ(action->toolTip(), u"Save"_s);
  EXPECT_EQ(bar.button(u"Save"_s), action);
  EXPECT_EQ(bar.button(u"save"_s), nullptr);
  bar.show();
  auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action));
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(button->toolTip(), u"Save"_s);
  EXPECT_EQ(button->focusPolicy(), Qt::NoFocus);
  EXPECT_NE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
  QSignalSpy clicked(&bar, &Toolbar::buttonClick);
  QTest::mouseClick(button, Qt::LeftButton);
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked.first().first().toString(), u"Save"_s);
}

TEST_F(ToolbarTest, ADisabledButtonDoesNothing) {
  Toolbar bar(u"Toolbar1"_s);
  bar.addButton(u"Save"_s, u"保存"_s, u"Save"_s);
  bar.show();
  bar.setButtonEnabled(u"Save"_s, false);
  bar.setButtonEnabled(u"None"_s, false);
  QSignalSpy clicked(&bar, &Toolbar::buttonClick);
  QTest::mouseClick(bar.widgetForAction(bar.button(u"Save"_s)), Qt::LeftButton);
  EXPECT_EQ(clicked.count(), 0);
  bar.setButtonEnabled(u"Save"_s, true);
  EXPECT_TRUE(bar.button(u"Save"_s)->isEnabled());
}

TEST_F(ToolbarTest, TheIconIsTheKeysOwnOrTheGivenOne) {
  Toolbar bar(u"Toolbar1"_s);
  EXPECT_FALSE(bar.addButton(u"Save"_s, u"保存"_s, u"Save"_s)->icon().isNull());
  EXPECT_TRUE(bar.addButton(u"NoSuch"_s, u"x"_s, u"x"_s)->icon().isNull());
  EXPECT_FALSE(bar.addButton(u"NoSuch2"_s, u"x"_s, u"x"_s, u"Save"_s)->icon().isNull());
}

TEST_F(ToolbarTest, TheUsualKeysHaveTheUsualShortcuts) {
  const std::pair<QString, QKeySequence> cases[] = {
      {u"Save"_s, Qt::CTRL | Qt::Key_S}, {u"Update"_s, Qt::CTRL | Qt::Key_S},
      {u"Add"_s, Qt::CTRL | Qt::Key_N},  {u"Print"_s, Qt::CTRL | Qt::Key_P},
      {u"Exit"_s, Qt::CTRL | Qt::Key_W}, {u"Find"_s, Qt::CTRL | Qt::Key_F},
      {u"Other"_s, QKeySequence()},
  };
  for (const auto& [key, shortcut] : cases) {
    Toolbar bar(u"Toolbar1"_s);
    EXPECT_EQ(bar.addButton(key, key, key)->shortcut(), shortcut) << key.toStdString();
  }
  Toolbar bar(u"Toolbar1"_s);
  bar.addButton(u"Save"_s, u"a"_s, u"a"_s);
  EXPECT_TRUE(bar.addButton(u"Update"_s, u"b"_s, u"b"_s)->shortcut().isEmpty())
      << "one shortcut for one button";
}

TEST_F(ToolbarTest, ShortcutsOfSeveralOpenChildrenDoNotClash) {
  frame();
  auto* a = new BarForm(u"A"_s);
  auto* b = new BarForm(u"B"_s);
  a->load();
  b->load();
  settle();
  b->edit->setFocus();
  QTest::keyClick(b->edit, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(b->keys, QStringList{u"Save"_s});
  frame().setActiveSubWindow(windowOf(*a));
  a->edit->setFocus();
  for (const auto key : {Qt::Key_P, Qt::Key_N, Qt::Key_W}) {
    QTest::keyClick(a->edit, key, Qt::ControlModifier);
  }
  EXPECT_EQ(a->keys, (QStringList{u"Print"_s, u"Add"_s, u"Exit"_s}));
  EXPECT_EQ(b->keys, QStringList{u"Save"_s});
}

TEST_F(ToolbarTest, AShortcutListensOnlyWhileTheFocusIsInItsForm) {
  auto* outside = new QLineEdit;
  frameWindow().setMenuWidget(outside);
  auto* a = new BarForm(u"A"_s);
  a->load();
  settle();
  outside->setFocus();
  ASSERT_TRUE(outside->hasFocus());
  QTest::keyClick(outside, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(a->keys, QStringList{});
}

TEST_F(ToolbarTest, CtrlWWorksInAMaximizedChildToo) {
  frame();
  auto* a = new BarForm(u"A"_s);
  a->load();
  windowOf(*a)->showMaximized();
  settle();
  a->edit->setFocus();
  QTest::keyClick(a->edit, Qt::Key_W, Qt::ControlModifier);
  EXPECT_EQ(a->keys, QStringList{u"Exit"_s});
}

TEST_F(ToolbarTest, ADisabledButtonsShortcutDoesNothing) {
  BarForm form(u"A"_s);
  form.load();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  form.edit->setFocus();
  form.bar->setButtonEnabled(u"Save"_s, false);
  QTest::keyClick(form.edit, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(form.keys, QStringList{});
}

TEST(StatusBar, ShowsOnePlainTextUntilTheNext) {
  StatusBar bar(u"StatusBar1"_s);
  EXPECT_EQ(bar.objectName(), u"StatusBar1"_s);
  EXPECT_EQ(bar.text(), QString());
  bar.setText(u"本地保存成功！！！"_s);
  EXPECT_EQ(bar.text(), u"本地保存成功！！！"_s);
  bar.setText(u"<b>x</b>"_s);
  EXPECT_EQ(bar.findChild<QLabel*>()->textFormat(), Qt::PlainText);
  EXPECT_EQ(bar.text(), u"<b>x</b>"_s);
}

TEST(StatusBar, ALongTextDoesNotWidenTheWindow) {
  StatusBar bar(u"StatusBar1"_s);
  bar.setText(QString(1000, u'长'));
  EXPECT_LT(bar.minimumSizeHint().width(), 200);
}
