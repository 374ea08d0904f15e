#pragma once

#include <QAction>

#include "account/registration/FrmRegister_QY.h"
#include "portal/url_encode.h"
#include "support/PickerFixture.h"

namespace qinghe {

/// The company's record, driven through its controls.
class RegistrationFixture : public PickerFixture {
 protected:
  RegistrationFixture() { dismissNotices(); }

  FrmRegister_QY& screen() {
    auto& form = defaultInstance<FrmRegister_QY>();
    QApplication::setActiveWindow(form.window());
    return form;
  }

  void press(const QString& key) { pressKey(*screen().Toolbar1, key); }
  static void pressKey(Toolbar& bar, const QString& key) {
    QAction* action = bar.button(key);
    ASSERT_NE(action, nullptr);
    ASSERT_TRUE(action->isEnabled()) << key.toStdString();
    QTest::mouseClick(bar.widgetForAction(action), Qt::LeftButton);
  }
  static void press(QPushButton* button) { PickerFixture::press(button); }

  /// Fills every field that must be filled, as a new company does.
  void fillIn() {
    using namespace Qt::StringLiterals;
    const QStringList texts = {u"0571-5550"_s, u"geheim"_s, u"新竹书店"_s, u"竹径1号 & 2号"_s,
                               u"310000"_s,    u"0571-1"_s, u"中国"_s,     u"浙江"_s,
                               u"杭州"_s,      u"图书"_s};
    for (int i = 0; i < texts.size(); ++i) screen().TxtField0(i + 1)->setText(texts[i]);
    const QStringList ids = {u"1"_s, u"11 ID"_s, u"103 ID"_s, u"3 ID"_s};
    for (int i = 0; i < ids.size(); ++i) screen().TxtField0(i + 7)->Tag = ids[i];
    for (int i = 0; i < 10; ++i) screen().TxtField1(i)->setText(i == 2 ? u"竹女士"_s : QString());
    screen().TxtField3(0)->setText(u"介绍一\r\n二"_s);
    screen().TxtField3(1)->setText(u"留言 & 三"_s);
  }

  /// The save's request for what `fillIn` fills in.
  static QString savedTarget(int id) {
    using namespace Qt::StringLiterals;
    const QList<std::pair<QString, QString>> values = {{u"&stid="_s, u"id=%1"_s.arg(id)},
                                                       {u"&USER_NAME="_s, u"0571-5550"_s},
                                                       {u"&USER_PASS="_s, u"geheim"_s},
                                                       {u"&QIYE="_s, u"新竹书店"_s},
                                                       {u"&DIZH="_s, u"竹径1号 & 2号"_s},
                                                       {u"&YOBI="_s, u"310000"_s},
                                                       {u"&DIHU="_s, u"0571-1"_s},
                                                       {u"&guji_id="_s, u"1"_s},
                                                       {u"&guji="_s, u"中国"_s},
                                                       {u"&shen_id="_s, u"11"_s},
                                                       {u"&shen="_s, u"浙江"_s},
                                                       {u"&area_id="_s, u"103"_s},
                                                       {u"&area="_s, u"杭州"_s},
                                                       {u"&haye_id="_s, u"3"_s},
                                                       {u"&haye="_s, u"图书"_s},
                                                       {u"&CHZH="_s, {}},
                                                       {u"&FUZH="_s, {}},
                                                       {u"&LIXI="_s, u"竹女士"_s},
                                                       {u"&SHJI="_s, {}},
                                                       {u"&HUJI="_s, {}},
                                                       {u"&ZHYE="_s, {}},
                                                       {u"&EMAIL="_s, {}},
                                                       {u"&KHYH="_s, {}},
                                                       {u"&YHZH="_s, {}},
                                                       {u"&SHHA="_s, {}}};
    QString target = u"/_vti_login/_vti_add_login.asp?stable=qyxx"_s;
    for (const auto& [name, value] : values) target += name + UrlEncodeField(value);
    return target;
  }

  static QStringList accountRow() {
    using namespace Qt::StringLiterals;
    return {u"13"_s, u"1013"_s, u"0571-5550"_s, u"1"_s, u"3"_s, u"图书"_s, u"1"_s};
  }

  /// The portal's row of a known company: 28 cells.
  static QStringList knownRow() {
    using namespace Qt::StringLiterals;
    return {u"25"_s,     u"1001"_s, u"0637-1"_s,     u"secret"_s,   u"青禾书店"_s, u"山门外18号"_s,
            u"526800"_s, u"0637"_s, u"1"_s,          u"10"_s,       u"90"_s,       u"3"_s,
            u"中国"_s,   u"江苏"_s, u"南京"_s,       u"图书"_s,     u"传真1"_s,    u"沈青禾"_s,
            u"沈女士"_s, u"138"_s,  u"呼1"_s,        u"www.1.cn"_s, u"a@b"_s,      u"江苏银行"_s,
            u"6222"_s,   u"9100"_s, u"介绍<br>二"_s, u"留言"_s};
  }

  /// The account variables as one list, for comparing.
  QStringList account() const {
    return {QString::number(state.gQiyeId),
            state.gUserNo,
            state.gUserName,
            QString::number(state.gUnicode),
            QString::number(state.gHayeId),
            state.gHayeName,
            QString::number(state.gUserLevel),
            QString::number(state.gLoginMode),
            QString::number(state.gLocalId)};
  }
};

}  // namespace qinghe
