#pragma once

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "PortalEditorFixture.h"
#include "account/frmLogin_qy.h"
#include "portal/RequestBuilder.h"
#include "shell/PortalMethod.h"
#include "shell/frmMsgBox.h"
#include "support/FakeNetwork.h"
#include "support/PortalProcess.h"
#include "support/ScriptedPrompts.h"
#include "support/TempStore.h"

namespace qinghe {

/// A company of the demo trade, with its own local store, which outlives its sittings.
struct Company {
  Company(int portalId, const QString& userNumber) : number(userNumber) {
    store.exec(QStringLiteral("INSERT INTO QYXX (id,R_ID,user_no,user_name,user_pass) "
                              "VALUES (1,%1,'%2','x','%3')")
                   .arg(portalId)
                   .arg(number, password()));
  }
  QString password() const {
    return number == u"1001" || number == u"1002" ? QStringLiteral("123456")
                                                  : QStringLiteral("demo") + number;
  }
  TempStore store;
  QString number;
};

/// One run of the program: a company logs in through the login screen, works, and ends it.
class Sitting {
 public:
  Sitting(const PortalProcess& portal, Company& company, qint16 mode) {
    auto links = std::make_unique<FakeLinks>();
    links->connected = {QStringLiteral("eth0")};
    auto prompts = std::make_unique<ScriptedPrompts>();
    boxes = prompts.get();
    state.programDirectory = company.store.directory();
    state.settings.setFilePath(settings_.filePath(QStringLiteral("qinghe.ini")));
    state.forms.prompts = std::move(prompts);
    state.links = std::move(links);
    state.dialer = std::make_unique<FakeDialer>();
    state.gWebServer = QStringLiteral("HTTP://") + portal.host() + u'/';
    state.inetQuotes.AccessType = 1;
    state.gPageSize = 50;
    state.gUnicode = mode;
    logIn(company);
    state.gUnicode = mode;  // the portal has told the company's own
  }

  /// The cells of a portal row, read past the screens.
  QStringList onPortal(const QString& table, const QStringList& fields, double id) {
    const QString url = RequestBuilder(state.gWebServer, paths::productRows)
                            .encoded(QStringLiteral("STABLE"), table)
                            .encoded(QStringLiteral("STRDATA"), fields.join(u',') + u',')
                            .encoded(QStringLiteral("STOTHER"), QStringLiteral("id=%1").arg(id))
                            .url();
    QStringList cells;
    readPortal(url, EmptyAnswer::IsFailure, [&](GetHtml& html) {
      while (cells.size() < fields.size()) cells.append(html.GetRowItem());
      return true;
    });
    return cells;
  }

  /// Whether no long text is on its way any more.
  bool isQuiet() {
    return QTest::qWaitFor([this] { return !state.inetQuotes.StillExecuting(); }, 60'000);
  }

  AppState state;
  ScriptedPrompts* boxes;

 private:
  void logIn(const Company& company) {
    auto& login = defaultInstance<frmLogin_qy>();
    login.showForm();
    login.cmbUser_no->setCurrentText(company.number);
    login.txtPassword->setText(company.password());
    new WhenShown(
        &state.tray, [](QWidget& widget) { return dynamic_cast<frmMsgBox*>(&widget) != nullptr; },
        [](QWidget& widget) { static_cast<frmMsgBox&>(widget).cmdOK->click(); });
    QTest::mouseClick(login.cmdOK, Qt::LeftButton);
  }

  QTemporaryDir settings_;
};

inline void pressKey(RecordEditor& editor, const QString& key) {
  QAction* action = editor.Toolbar1->button(key);
  ASSERT_TRUE(action != nullptr && action->isEnabled()) << key.toStdString();
  QTest::mouseClick(editor.Toolbar1->widgetForAction(action), Qt::LeftButton);
}

inline void clickRow(ListView& list, ListItem& row) {
  list.scrollTo(list.model()->index(row.row(), 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                    list.cellRect(&row, 0).center());
}

inline void clickCheckBox(ListView& list, ListItem& row) {
  list.scrollTo(list.model()->index(row.row(), 0));
  QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.checkRect(&row).center());
}

/// The row of that text, its pages being turned with `next` until it is there; null without one.
inline ListItem* findRow(ListView& list, QPushButton* next, const QString& text) {
  for (;;) {
    for (int row = 0; row < list.itemCount(); ++row) {
      if (list.itemAt(row)->text() == text) return list.itemAt(row);
    }
    if (next == nullptr || !next->isVisible()) return nullptr;
    QTest::mouseClick(next, Qt::LeftButton);
  }
}

}  // namespace qinghe
