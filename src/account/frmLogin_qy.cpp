#include "account/frmLogin_qy.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "account/LoginAnswer.h"
#include "forms/HourGlass.h"
#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/frmMsgBox.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int logoSize = 48;

QString successWords(qint16 level) {
  switch (level) {
    case 1:
      return u"网络登录成功！！！正式用户"_s;
    case 2:
      return u"网络登录成功！！！VIP用户"_s;
    default:
      return u"网络登录成功！！！免费用户"_s;
  }
}

}  // namespace

frmLogin_qy::frmLogin_qy()
    : Form(Kind::Dialog, u"frmLogin_qy"_s, u"登录"_s),
      cmbUser_no(new QComboBox(this)),
      txtPassword(new TextBox(u"txtPassword"_s, TextBox::Lines::One, this)),
      cmdOK(new QPushButton(u"确定"_s, this)),
      cmdCancel(new QPushButton(u"取消"_s, this)),
      CmdRegister(new QPushButton(u"现在注册"_s, this)) {
  cmbUser_no->setObjectName(u"cmbUser_no"_s);
  cmbUser_no->setEditable(true);
  cmbUser_no->setInsertPolicy(QComboBox::NoInsert);
  cmbUser_no->setAccessibleName(u"用户编号"_s);
  txtPassword->setPasswordMode();
  txtPassword->editor()->setAccessibleName(u"密码"_s);
  cmdOK->setObjectName(u"cmdOK"_s);
  cmdOK->setDefault(true);
  cmdCancel->setObjectName(u"cmdCancel"_s);
  cmdCancel->setShortcut(QKeySequence(Qt::Key_Escape));
  CmdRegister->setObjectName(u"CmdRegister"_s);
  layOut();
  connect(cmdOK, &QPushButton::clicked, this, &frmLogin_qy::confirm);
  connect(cmdCancel, &QPushButton::clicked, this, &frmLogin_qy::cancel);
  connect(CmdRegister, &QPushButton::clicked, this, &frmLogin_qy::registerCompany);
}

void frmLogin_qy::layOut() {
  auto* logo = new QLabel(this);
  logo->setPixmap(iconFor(u"qinghe"_s).pixmap(logoSize));
  auto* title = new QLabel(productTitle(), this);
  title->setTextFormat(Qt::PlainText);
  QFont bold = title->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.2);
  title->setFont(bold);
  auto* head = new QHBoxLayout;
  head->addWidget(logo);
  head->addWidget(title, 1);

  auto* user = new QLabel(u"用户编号(&U):"_s, this);
  user->setBuddy(cmbUser_no);
  auto* password = new QLabel(u"密    码(&P):"_s, this);
  password->setBuddy(txtPassword->editor());
  auto* fields = new QFormLayout;
  fields->addRow(user, cmbUser_no);
  fields->addRow(password, txtPassword);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(CmdRegister);
  buttons->addStretch(1);
  buttons->addWidget(cmdOK);
  buttons->addWidget(cmdCancel);

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(20, 16, 20, 16);
  all->setSpacing(14);
  all->addLayout(head);
  all->addLayout(fields);
  all->addStretch(1);
  all->addLayout(buttons);
  setMinimumWidth(400);
  setTabOrder(cmbUser_no, txtPassword->editor());
  setTabOrder(txtPassword->editor(), cmdOK);
  setTabOrder(cmdOK, cmdCancel);
  setTabOrder(cmdCancel, CmdRegister);
}

void frmLogin_qy::onLoad() {
  FillUserList();
  txtPassword->editor()->setFocus();
}

bool frmLogin_qy::FillUserList() {
  try {
    GetData store(app().store);
    const RecordsetPtr users = store.GetQYXX(u"SELECT *  FROM QYXX "_s);
    if (users->RecordCount() <= 0) return false;
    for (users->MoveFirst(); !users->atEnd(); users->MoveNext()) {
      const QString number = users->text(u"user_no"_s);
      cmbUser_no->addItem(number);
      cmbUser_no->setCurrentText(number);
      cmbUser_no->setCurrentIndex(cmbUser_no->count() - 1);
    }
    return true;
  } catch (const Failure&) {
    return false;
  }
}

void frmLogin_qy::confirm() {
  {
    const HourGlass busy;
    const bool online = CheckConnection();
    app().gLoggedIn = LoginLocal();
    if (online) app().gLoggedIn = LoginPortal();
    app().gLoginMode = online ? 1 : 2;
  }
  if (app().gLoggedIn) {
    welcome();
  } else {
    refuse();
  }
}

void frmLogin_qy::welcome() {
  unload();
  showNotice(successWords(app().gUserLevel), u"用户编号："_s + app().gUserNo,
             u"用户名称："_s + app().gUserName);
  CheckConnection();
}

void frmLogin_qy::refuse() {
  prompts().ask(this, {u"无效的用户名或密码，请重试!"_s, u"登录"_s});
  txtPassword->setText({});
  txtPassword->editor()->setFocus();
  txtPassword->selectAll();
  app().gLoginMode = 0;
}

void frmLogin_qy::cancel() {
  app().gLoggedIn = false;
  txtPassword->setText({});
  unload();
}

void frmLogin_qy::registerCompany() {
  unload();
  // The registration stands on this screen's folder, which does not know it.
  if (app().openRegistration) app().openRegistration();
}

bool frmLogin_qy::LoginLocal() {
  try {
    GetData store(app().store);
    // The texts go in as they stand: a quote in one breaks the statement, which is a refusal.
    const RecordsetPtr user =
        store.GetQYXX(u"SELECT *  FROM QYXX WHERE user_no='"_s + cmbUser_no->currentText() +
                      u"' and user_pass='"_s + txtPassword->text() + u"'"_s);
    if (user->RecordCount() < 1) return false;
    app().gLocalId = toInt16(user->text(u"id"_s));
    app().gQiyeId = toInt16(user->text(u"R_ID"_s));
    app().gUserNo = user->text(u"user_no"_s);
    app().gUserName = user->text(u"user_name"_s);
    app().gUserLevel = 0;
    return true;
  } catch (const Failure&) {
    return false;
  }
}

bool frmLogin_qy::LoginPortal() {
  const Version version = programVersion();
  const QString url = RequestBuilder(app().gWebServer, paths::login)
                          .encoded(u"USER_NO"_s, cmbUser_no->currentText())
                          .encoded(u"USER_PASS"_s, txtPassword->text())
                          .encoded(u"SOFT_VER"_s, u"%1.%2"_s.arg(version.major).arg(version.minor))
                          .url();
  return readPortal(url, EmptyAnswer::IsFailure,
                    [](GetHtml& html) { return takeLoginRow(html, app()); });
}

}  // namespace qinghe
