#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "Tour.h"
#include "account/frmLogin_qy.h"
#include "catalogue/FrmFUWU.h"
#include "catalogue/FrmQUST_WEB.h"
#include "catalogue/FrmXIMU.h"
#include "shell/AppState.h"
#include "shell/FrmINTERNET.h"
#include "shell/frmMsgBox.h"
#include "shell/frmSplash.h"
#include "shell/main/MDIFrmMAIN.h"
#include "tools/Calculator.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

/// Saves where the tour wants its files; all else is asked on the screen.
class TourPrompts : public DesktopPrompts {
 public:
  explicit TourPrompts(const QString& folder) : folder_(folder) {}
  std::optional<QString> saveFile(QWidget* /*parent*/, const FileQuestion& question) override {
    return folder_.filePath(question.fileName);
  }

 private:
  QDir folder_;
};

MDIFrmMAIN& frame() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* main = qobject_cast<MDIFrmMAIN*>(window)) return *main;
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

void clickCommand(const QString& name) {
  frame().command(name)->trigger();
}

void pressKey(const QString& key) {
  auto* bar = defaultInstance<FrmXIMU>().Toolbar1;
  click(bar->widgetForAction(bar->button(key)));
}

template <class F>
bool isShown() {
  return isLoaded<F>() && defaultInstance<F>().isVisible();
}

void logIn() {
  auto& login = defaultInstance<frmLogin_qy>();
  login.cmbUser_no->setCurrentText(u"1001"_s);
  QTest::keyClicks(login.txtPassword->editor(), u"123456"_s);
}

void changePrice() {
  auto* box = defaultInstance<FrmXIMU>().txtFields(3);
  box->editor()->setFocus();
  box->selectAll();
  QTest::keyClicks(box->editor(), u"38.50"_s);
}

bool statusSays(const QString& words) {
  return isShown<FrmXIMU>() && defaultInstance<FrmXIMU>().StatusBar1->text() == words;
}

}  // namespace

QList<TourStep> tourSteps(const QString& folder) {
  const auto preview = [] { return window(u"rptXIMU"_s) != nullptr; };
  return {
      {u"splash"_s, isShown<frmSplash>,
       [folder] { app().forms.prompts = std::make_unique<TourPrompts>(folder); }},
      {u"login"_s, isShown<frmLogin_qy>, logIn},
      {u"login-typed"_s, isShown<frmLogin_qy>, [] { click(defaultInstance<frmLogin_qy>().cmdOK); }},
      {u"notice"_s, isShown<frmMsgBox>, [] { click(defaultInstance<frmMsgBox>().cmdOK); }},
      {u"main-window"_s, [] { return !isLoaded<frmMsgBox>() && app().gLoggedIn; },
       [] { frame().mnuSystem->popup(frame().mapToGlobal(QPoint(8, 30))); }},
      {u"menu"_s, [] { return frame().mnuSystem->isVisible(); },
       [] {
         frame().mnuSystem->close();
         clickCommand(u"mnuXimu"_s);
       }},
      {u"goods"_s, isShown<FrmXIMU>, changePrice},
      {u"goods-changed"_s, isShown<FrmXIMU>, [] { pressKey(u"Save"_s); }},
      {u"goods-saved"_s, [] { return statusSays(u"网络保存成功！！！"_s); },
       [] { pressKey(u"Print"_s); }},
      {u"print-preview"_s, preview,
       [] { window(u"rptXIMU"_s)->findChild<QAction*>(u"PDF"_s)->trigger(); }},
      {u"printed"_s,
       [folder] { return !QDir(folder).entryList({u"*.pdf"_s}, QDir::Files).isEmpty(); },
       [] {
         window(u"rptXIMU"_s)->close();
         clickCommand(u"Internet"_s);
       }},
      {u"settings"_s, isShown<FrmINTERNET>, [] { click(defaultInstance<FrmINTERNET>().Command4); }},
      {u"goods-again"_s, [] { return !isLoaded<FrmINTERNET>(); },
       [] { clickCommand(u"mnuFuwu"_s); }},
      {u"services"_s, isShown<FrmFUWU>, [] { clickCommand(u"mnuQust_WEB"_s); }},
      {u"surveys"_s, isShown<FrmQUST_WEB>,
       [] {
         clickCommand(u"mnuCalc"_s);
         QTest::keyClicks(&defaultInstance<Calculator>(), u"12.5*4="_s);
       }},
      {u"calculator"_s, isShown<Calculator>, [] { frame().close(); }},
  };
}

}  // namespace qinghe
