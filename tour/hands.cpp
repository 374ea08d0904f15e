#include "hands.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "account/frmLogin_qy.h"
#include "forms/FormTimer.h"
#include "shell/AppState.h"
#include "shell/frmMsgBox.h"
#include "shell/frmSplash.h"
#include "shell/main/MDIFrmMAIN.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// Saves where the tour wants its files; all else is asked on the screen.
class TourPrompts : public DesktopPrompts {
 public:
  explicit TourPrompts(const QString& files) : files_(files) {}
  std::optional<QString> saveFile(QWidget* /*parent*/, const FileQuestion& question) override {
    QString file = files_ + question.fileName;
    // Reports of one name stand side by side.
    for (int copy = 2; QFileInfo::exists(file); ++copy) {
      const QFileInfo name(question.fileName);
      file = files_ + name.completeBaseName() + u"-%1."_s.arg(copy) + name.suffix();
    }
    return file;
  }

 private:
  QString files_;
};

/// Takes each notice's time away when it comes.
class NoticeKeeper : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Show) return false;
    if (auto* notice = dynamic_cast<frmMsgBox*>(watched)) notice->Timer1->setEnabled(false);
    return false;
  }
};

}  // namespace

MDIFrmMAIN& frame() {
  for (QWidget* one : QApplication::topLevelWidgets()) {
    if (auto* main = qobject_cast<MDIFrmMAIN*>(one)) return *main;
  }
  Q_UNREACHABLE();
}

QWidget* window(const QString& name) {
  for (QWidget* one : QApplication::topLevelWidgets()) {
    if (one->objectName() == name && one->isVisible()) return one;
  }
  return nullptr;
}

void click(QWidget* widget) {
  QTest::mouseClick(widget, Qt::LeftButton);
}

void choose(const QString& command) {
  frame().command(command)->trigger();
}

void pressKey(Toolbar& bar, const QString& key) {
  click(bar.widgetForAction(bar.button(key)));
}

void clickRow(ListView& list, int row, int column, Qt::MouseButton button) {
  const QRect cell = list.cellRect(list.itemAt(row), column);
  QTest::mouseClick(list.viewport(), button, Qt::NoModifier, cell.center());
}

void doubleClickRow(ListView& list, int row) {
  const QPoint place = list.cellRect(list.itemAt(row)).center();
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
  QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void clickNode(TreeView& tree, const TreeNode* node) {
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.labelRect(node).center());
}

void chooseEntry(QMenu& menu, const QString& entry) {
  menu.close();
  menu.findChild<QAction*>(entry)->trigger();
}

void typeInto(TextBox& box, const QString& text) {
  box.editor()->setFocus();
  box.selectAll();
  typeText(text);
}

void typeIntoCell(ListView& list, int row, int column, const QString& text) {
  clickRow(list, row, column);
  typeText(text);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
}

void typeText(const QString& text) {
  // As an input method does, for keys have no Chinese.
  QInputMethodEvent event;
  event.setCommitString(text);
  QApplication::sendEvent(QApplication::focusWidget(), &event);
}

void printPdf(const QString& report) {
  window(report)->findChild<QAction*>(u"PDF"_s)->trigger();
}

void leaveProgram() {
  frame().close();
}

bool isLoggedIn() {
  return !isLoaded<frmMsgBox>() && app().gLoggedIn;
}

void keepPassingWindows(MDIFrmMAIN& frame) {
  frame.Timer1->setEnabled(false);
  qApp->installEventFilter(new NoticeKeeper(qApp));
}

QList<TourStep> startSteps(const QString& files) {
  return {{u"splash"_s, isShown<frmSplash>, [files] {
             app().forms.prompts = std::make_unique<TourPrompts>(files);
             frame().Timer1->setEnabled(true);
           }}};
}

QList<TourStep> logInSteps(const QString& user, const QString& password) {
  const auto typeUser = [user, password] {
    auto& login = defaultInstance<frmLogin_qy>();
    login.cmbUser_no->setCurrentText(user);
    typeInto(*login.txtPassword, password);
  };
  // Keys before its window is active would go nowhere.
  const auto canTypeLogin = [] {
    return isShown<frmLogin_qy>() && defaultInstance<frmLogin_qy>().isActiveWindow();
  };
  return {
      {u"login"_s, canTypeLogin, typeUser},
      {u"login-typed"_s, isShown<frmLogin_qy>, [] { click(defaultInstance<frmLogin_qy>().cmdOK); }},
      {u"notice"_s, isShown<frmMsgBox>, [] { click(defaultInstance<frmMsgBox>().cmdOK); }},
  };
}

}  // namespace qinghe
