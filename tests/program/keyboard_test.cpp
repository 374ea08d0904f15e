// What all screens have in common for whoever works without a mouse or without eyes.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabBar>
#include <QToolButton>
#include <set>

#include "MainWindowFixture.h"
#include "account/frmLogin_qy.h"
#include "account/registration/FrmRegister_OK.h"
#include "account/registration/FrmRegister_QY.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"
#include "catalogue/FrmFUWU.h"
#include "catalogue/FrmFUWU_WEB.h"
#include "catalogue/FrmMUMU_WEB.h"
#include "catalogue/FrmQUST_WEB.h"
#include "catalogue/FrmTUPI_WEB.h"
#include "catalogue/FrmXIMU.h"
#include "catalogue/FrmXIMU_WEB.h"
#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "catalogue/pickers/frmGetSHXI.h"
#include "content/trees/frmDOCU_WEB.h"
#include "content/trees/frmPUBL_WEB.h"
#include "content/trees/frmXIWE_WEB.h"
#include "content/views/FrmView.h"
#include "content/views/FrmView2.h"
#include "content/views/frmHELP.h"
#include "content/views/frmHTTP_WEB.h"
#include "forms/TabControl.h"
#include "messaging/frmPeer.h"
#include "messaging/frmXIXI.h"
#include "orders/chooser/frmGetCYXXX.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMU.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/FrmDIHU_XS.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "orders/documents/FrmGOHU_XS.h"
#include "orders/search/FrmSelect.h"
#include "portal/GetHtml.h"
#include "reading_order.h"
#include "reports/screens/FrmQueryDH_XS.h"
#include "reports/screens/FrmQueryGH_JH.h"
#include "reports/screens/FrmQueryGH_XS.h"
#include "reports/screens/FrmQueryJIHU.h"
#include "reports/screens/FrmQueryXISH.h"
#include "shell/FrmINTERNET.h"
#include "support/PortalProcess.h"
#include "tools/Calculator.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// One portal for all: nothing is saved.
std::unique_ptr<PortalProcess> realPortal;

template <class F>
Form* open() {
  auto& form = defaultInstance<F>();
  form.showForm();
  return &form;
}

qint32 number(const char* query) {
  SQLite::Database database = realPortal->database();
  return database.execAndGet(query).getInt();
}

/// An order that the company has still to deliver.
Form* openSalesOrder() {
  app().gCurrentOrderId = number("select id from gohu where gosh_id=1 and xshs=0 and fh=0");
  return open<FrmGOHU_XS>();
}

Form* openRetailOrder() {
  app().gRetailOrderId = number("select id from dihu where qyxx_id=1 and hs=0 and fh=0");
  return open<FrmDIHU_XS>();
}

struct Screen {
  std::string name;
  Form* (*open)();
  std::string firstFocus;  ///< empty: the keys are the window's own
};

const std::vector<Screen> screens = {
    {"frmLogin_qy", open<frmLogin_qy>, "txtPassword.editor"},
    {"FrmINTERNET", open<FrmINTERNET>, "TextWebServer.editor"},
    {"Calculator", open<Calculator>, ""},
    {"FrmRegister_OK", open<FrmRegister_OK>, "Text1.editor"},
    {"FrmRegister_QY", open<FrmRegister_QY>, "TxtField0(2).editor"},
    {"frmGetSHEN", open<frmGetSHEN>, "ListView1"},
    {"frmGetAREA", open<frmGetAREA>, "ListView1"},
    {"frmGetHAYE", open<frmGetHAYE>, "ListView1"},
    {"FrmXIMU", open<FrmXIMU>, "ListView1"},
    {"FrmFUWU", open<FrmFUWU>, "ListView1"},
    {"FrmXIMU_WEB", open<FrmXIMU_WEB>, "ListView1"},
    {"FrmFUWU_WEB", open<FrmFUWU_WEB>, "ListView1"},
    {"FrmMUMU_WEB", open<FrmMUMU_WEB>, "ListView1"},
    {"FrmTUPI_WEB", open<FrmTUPI_WEB>, "ListView1"},
    {"FrmQUST_WEB", open<FrmQUST_WEB>, "ListView1"},
    {"frmGetLEBI", open<frmGetLEBI>, "TreeView1"},
    {"frmGetCYXX", open<frmGetCYXX>, "Text1.editor"},
    {"frmGetMUMU", open<frmGetMUMU>, "Text1.editor"},
    {"frmGetSHXI", open<frmGetSHXI>, "ListView1"},
    {"frmPUBL_WEB", open<frmPUBL_WEB>, "TreeView1"},
    {"frmXIWE_WEB", open<frmXIWE_WEB>, "TreeView1"},
    {"frmDOCU_WEB", open<frmDOCU_WEB>, "TreeView1"},
    {"FrmSelect", open<FrmSelect>, "qt_tabwidget_tabbar"},
    {"frmGetXIMU", open<frmGetXIMU>, "ListView1"},
    {"frmGetXIMUX", open<frmGetXIMUX>, "ListView1"},
    {"frmGetCYXXX", open<frmGetCYXXX>, "ListView1"},
    {"frmGetQYXXX", open<frmGetQYXXX>, "ListView1"},
    {"FrmGOHU_JH", open<FrmGOHU_JH>, "txtFields(1).editor"},
    {"FrmGOHU_XS", openSalesOrder, "DTPicker1"},
    {"FrmDIHU_XS", openRetailOrder, "DTPicker1"},
    {"FrmQueryGH_JH", open<FrmQueryGH_JH>, "DTPickerFrom.check"},
    {"FrmQueryGH_XS", open<FrmQueryGH_XS>, "DTPickerFrom.check"},
    {"FrmQueryDH_XS", open<FrmQueryDH_XS>, "DTPickerFrom.check"},
    {"FrmQueryJIHU", open<FrmQueryJIHU>, "TreeView1"},
    {"FrmQueryXISH", open<FrmQueryXISH>, "TreeView1"},
    {"frmPeer", open<frmPeer>, "txtSend.editor"},
    {"frmXIXI", open<frmXIXI>, "ListView1"},
    {"FrmView", open<FrmView>, "ListView1"},
    {"FrmView2", open<FrmView2>, "ListView1"},
    {"frmHELP", open<frmHELP>, "TreeView1"},
    {"frmHTTP_WEB", open<frmHTTP_WEB>, "txtInput.editor"},
};

QStringList namesOf(const QList<QWidget*>& widgets) {
  QStringList names;
  for (const QWidget* widget : widgets) names.append(widget->objectName());
  return names;
}

/// The same round, begun at the widget.
QList<QWidget*> begunAt(QWidget* first, const QList<QWidget*>& round) {
  const qsizetype at = round.indexOf(first);
  return at < 0 ? round : round.mid(at) + round.first(at);
}

/// What a screen reader says: the control's own name, or that of its label.
QString spokenName(QWidget* widget) {
  auto* control = QAccessible::queryAccessibleInterface(widget);
  if (control == nullptr) return {};
  const QString own = control->text(QAccessible::Name);
  const auto labels = control->relations(QAccessible::Label);
  return own.isEmpty() && !labels.isEmpty() ? labels.first().first->text(QAccessible::Name) : own;
}

class EveryScreen : public MainWindowFixture, public testing::WithParamInterface<Screen> {
 protected:
  static void SetUpTestSuite() { realPortal = std::make_unique<PortalProcess>(); }
  static void TearDownTestSuite() { realPortal.reset(); }

  EveryScreen() {
    dismissNotices();
    state.peerAddress = u"127.0.0.1"_s;
    state.peerPort = 0;
    state.settings.set(u"WebServer"_s, realPortal->host());
    start();
    frame->Timer1->setEnabled(false);  // the login does not come by itself
    beCompany(1, 2);
    state.gQiyeId = 1;
    GetHtml html(state, state.inetQuotes);
    html.ParseResponse(html.GetUrl(2, state.gWebServer + u"_vti_login/_vti_login2.asp?USER_NO=1001&"
                                                         "USER_PASS=123456&SOFT_VER=1.0"_s));
    form = GetParam().open();
    // An empty field for a number is not left.
    for (auto* box : form->findChildren<TextBox*>()) {
      if (box->onValidate && box->isVisible()) box->setText(u"1"_s);
    }
    EXPECT_TRUE(QTest::qWaitForWindowActive(form->window(), 60'000));
    QCoreApplication::processEvents();
  }

  void turnTo(int page, TabControl* tabs) {
    auto* next = form->findChild<QPushButton*>(u"cmdNav(3)"_s);
    if (next == nullptr) {
      if (tabs != nullptr) tabs->setTab(page);
    } else if (page > 0) {
      next->click();
    }
  }

  /// Once for each page of the screen's tabs, or once for a screen without.
  void onEachPage(const std::function<void()>& look) {
    auto* tabs = form->findChild<TabControl*>();
    for (int page = 0; page < (tabs == nullptr ? 1 : tabs->count()); ++page) {
      turnTo(page, tabs);
      QCoreApplication::processEvents();
      SCOPED_TRACE("page " + std::to_string(page));
      look();
    }
  }

  Form* form = nullptr;
};

TEST_P(EveryScreen, OpensWithTheFocusWhereOneBegins) {
  const QWidget* focus = QApplication::focusWidget();
  if (GetParam().firstFocus.empty()) {
    EXPECT_TRUE(focus == nullptr || focus == form);
    return;
  }
  ASSERT_NE(focus, nullptr);
  EXPECT_TRUE(form->isAncestorOf(focus));
  EXPECT_EQ(focus->objectName().toStdString(), GetParam().firstFocus);
}

TEST_P(EveryScreen, TabGoesThroughAllInReadingOrder) {
  onEachPage([this] {
    QList<QWidget*> expected = tabStops(form);
    if (expected.size() < 2) return;
    if (form->objectName() == u"frmLogin_qy") {
      // Whoever has typed the password wants in; the registration is for once.
      expected.move(2, 4);
    }
    expected.first()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(namesOf(begunAt(expected.first(), walkByTab(Qt::Key_Tab))), namesOf(expected));
    expected.first()->setFocus(Qt::TabFocusReason);
    QList<QWidget*> back = walkByTab(Qt::Key_Backtab);
    std::ranges::reverse(back);
    EXPECT_EQ(namesOf(begunAt(expected.first(), back)), namesOf(expected));
  });
}

TEST_P(EveryScreen, SaysAloudWhatTheFocusIsOn) {
  onEachPage([this] {
    for (QWidget* stop : tabStops(form)) {
      if (qobject_cast<QTabBar*>(stop) != nullptr) continue;  // its tabs have their captions
      EXPECT_FALSE(spokenName(stop).isEmpty()) << stop->objectName().toStdString();
    }
    for (auto* button : form->findChildren<QAbstractButton*>()) {
      if (!button->isVisible() || button->objectName().startsWith(u"qt_")) continue;
      EXPECT_FALSE(spokenName(button).isEmpty())
          << button->objectName().toStdString() << " in "
          << button->parentWidget()->objectName().toStdString();
    }
  });
}

TEST_P(EveryScreen, HasOneMeaningForEachMnemonicAndShortcut) {
  onEachPage([this] {
    QMap<QString, QStringList> meanings;
    const auto note = [&meanings](const QKeySequence& keys, const QString& what) {
      if (!keys.isEmpty()) meanings[keys.toString()].append(what);
    };
    std::set<const QAction*> seen;
    for (const QAction* action : form->actions() + form->window()->findChildren<QAction*>()) {
      if (!seen.insert(action).second || !action->isEnabled()) continue;
      for (const QKeySequence& keys : action->shortcuts()) note(keys, action->objectName());
    }
    for (const auto* button : form->findChildren<QAbstractButton*>()) {
      if (button->isVisible()) note(QKeySequence::mnemonic(button->text()), button->objectName());
    }
    for (const auto* label : form->findChildren<QLabel*>()) {
      if (label->isVisible() && label->buddy() != nullptr) {
        note(QKeySequence::mnemonic(label->text()), label->text());
      }
    }
    for (auto keys = meanings.begin(); keys != meanings.end(); ++keys) {
      EXPECT_EQ(keys->size(), 1) << keys.key().toStdString() << ": "
                                 << keys->join(u' ').toStdString();
    }
  });
}

TEST_P(EveryScreen, TellsItsTipsInPlainText) {
  for (const auto* widget : form->findChildren<QWidget*>()) {
    EXPECT_FALSE(Qt::mightBeRichText(widget->toolTip())) << widget->objectName().toStdString();
  }
  for (const auto* label : form->findChildren<QLabel*>()) {
    EXPECT_TRUE(label->textFormat() == Qt::PlainText || !label->pixmap().isNull() ||
                label->text().isEmpty() || !Qt::mightBeRichText(label->text()))
        << label->text().toStdString();
  }
}

TEST_P(EveryScreen, HasADefaultButtonWhereItIsADialog) {
  if (form->kind() != Form::Kind::Dialog) return;
  const auto buttons = form->findChildren<QPushButton*>();
  const auto defaults = std::ranges::count_if(buttons, &QPushButton::isDefault);
  // Enter opens a cell of the chooser's list.
  EXPECT_EQ(defaults, form->objectName() == u"frmGetXIMU" ? 0 : 1);
}

std::string nameOf(const testing::TestParamInfo<Screen>& row) {
  return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(Of, EveryScreen, testing::ValuesIn(screens), nameOf);

}  // namespace
