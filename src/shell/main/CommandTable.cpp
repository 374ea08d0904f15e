#include "shell/main/CommandTable.h"

#include "account/frmLogin_qy.h"
#include "account/registration/FrmRegister_OK.h"
#include "account/registration/FrmRegister_QY.h"
#include "browser/WebBrowser.h"
#include "catalogue/FrmFUWU.h"
#include "catalogue/FrmFUWU_WEB.h"
#include "catalogue/FrmMUMU_WEB.h"
#include "catalogue/FrmQUST_WEB.h"
#include "catalogue/FrmTUPI_WEB.h"
#include "catalogue/FrmXIMU.h"
#include "catalogue/FrmXIMU_WEB.h"
#include "content/trees/frmDOCU_WEB.h"
#include "content/trees/frmPUBL_WEB.h"
#include "content/trees/frmXIWE_WEB.h"
#include "content/views/FrmView.h"
#include "content/views/FrmView2.h"
#include "content/views/frmHELP.h"
#include "content/views/frmHTTP_WEB.h"
#include "forms/TextBox.h"
#include "messaging/frmPeer.h"
#include "messaging/frmXIXI.h"
#include "orders/search/FrmSelect.h"
#include "portal/RequestBuilder.h"
#include "reports/screens/FrmQueryDH_XS.h"
#include "reports/screens/FrmQueryGH_JH.h"
#include "reports/screens/FrmQueryGH_XS.h"
#include "reports/screens/FrmQueryJIHU.h"
#include "reports/screens/FrmQueryXISH.h"
#include "shell/AppState.h"
#include "shell/FrmINTERNET.h"
#include "shell/frmSplash.h"
#include "shell/main/MDIFrmMAIN.h"
#include "shell/ras.h"
#include "tools/Calculator.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

using Offers = std::array<Offer, 3>;
constexpr Offers online{Offer::Off, Offer::On, Offer::Off};
constexpr Offers loggedIn{Offer::Off, Offer::On, Offer::On};
constexpr Offers helpOnly{Offer::On, Offer::Untouched, Offer::Untouched};
constexpr Offers always{Offer::Untouched, Offer::Untouched, Offer::Untouched};

Command never(const QString& name, const QString& caption) {
  return {.name = name, .caption = caption, .neverOffered = true};
}

Command separator(const QString& name) {
  return {.name = name, .caption = {}};
}

template <class F>
void loadScreen() {
  // A screen that is open already comes to the front.
  defaultInstance<F>().showForm();
}

/// A page of the portal in the page view's window.
void browse(const QString& page) {
  const QString url = app().gWebServer + page;
  auto& browser = defaultInstance<frmHTTP_WEB>();
  browser.txtInput->setText(url);
  browser.WebBrowser1->Navigate(url);
  browser.showForm();
}

void showCompanyPage() {
  browse(paths::preview.toString() + u"?stuserno="_s + app().gUserNo);
}

void showOnlineHelp() {
  browse(paths::help.toString());
}

}  // namespace

void offerScreensFromBelow() {
  app().openHelp = loadScreen<frmHELP>;
  app().openRegistration = loadScreen<FrmRegister_OK>;
}

void showLogin() {
  auto& login = defaultInstance<frmLogin_qy>();
  login.showForm();
  login.txtPassword->editor()->setFocus();
}

QList<Command> commandTable(MDIFrmMAIN& frame) {
  return {
      never(u"mnuLogin_YH"_s, u"个人登录"_s),
      {u"mnuLogin_QY"_s, u"企业登录"_s, always, false, true, showLogin},
      never(u"mnuLogin_Local"_s, u"本地登录"_s),
      never(u"mnuLogin_CY"_s, u"产业登录"_s),
      {u"mnuRegister_QY"_s, u"修改注册信息"_s, online, false, false, loadScreen<FrmRegister_QY>},
      never(u"mnuRegistr_CY"_s, u"修改产业注册信息"_s),
      never(u"mnuRegistr_YH"_s, u"修改用户注册信息"_s),
      separator(u"mnuTemp1"_s),
      {u"mnuPeer"_s, u"接收消息"_s, online, false, true, loadScreen<frmPeer>},
      {u"mnuXIXI"_s, u"历史消息"_s, loggedIn, false, true, loadScreen<frmXIXI>},
      never(u"mnuIcq"_s, u"信息"_s),
      never(u"mnuGroup"_s, u"分组"_s),
      never(u"mnuOnline"_s, u"在线"_s),
      separator(u"mnuTemp2"_s),
      {u"mnuFuwu"_s, u"服务登记(本地)"_s, loggedIn, false, false, loadScreen<FrmFUWU>},
      {u"mnuXimu"_s, u"商品登记(本地)"_s, loggedIn, false, true, loadScreen<FrmXIMU>},
      separator(u"mnuTemp3"_s),
      {u"mnuFuwu_WEB"_s, u"服务登记"_s, online, false, false, loadScreen<FrmFUWU_WEB>},
      {u"mnuXimu_WEB"_s, u"商品登记"_s, online, false, true, loadScreen<FrmXIMU_WEB>},
      {u"mnuDocu_WEB"_s, u"文件登记"_s, online, false, false, loadScreen<frmDOCU_WEB>},
      {u"mnuXiwe_WEB"_s, u"新闻登记"_s, online, false, false, loadScreen<frmXIWE_WEB>},
      {u"mnuQust_WEB"_s, u"调查登记"_s, online, false, false, loadScreen<FrmQUST_WEB>},
      {u"mnuMumu_WEB"_s, u"品牌登记"_s, online, false, false, loadScreen<FrmMUMU_WEB>},
      {u"mnuForum_WEB"_s, u"论坛管理"_s, online, false, false, loadScreen<frmPUBL_WEB>},
      {u"mnuTupi_WEB"_s, u"图片登记"_s, online, false, false, loadScreen<FrmTUPI_WEB>},
      {u"mnuHTTP_WEB"_s, u"查看效果"_s, online, false, false, showCompanyPage},
      separator(u"mnuTemp4"_s),
      {u"mnuDIHU_XS"_s, u"销售订单(BTOC)"_s, online, false, false, loadScreen<FrmQueryDH_XS>},
      {u"mnuGOHU_XS"_s, u"销售订单(BTOB)"_s, online, false, true, loadScreen<FrmQueryGH_XS>},
      {u"mnuQueryXish"_s, u"销售订单统计"_s, loggedIn, false, false, loadScreen<FrmQueryXISH>},
      separator(u"mnuTemp5"_s),
      {u"mnuSelect"_s, u"征订商品检索"_s, online, false, true, loadScreen<FrmSelect>},
      {u"mnuGOHU_JH"_s, u"进货订单"_s, online, false, true, loadScreen<FrmQueryGH_JH>},
      {u"mnuQueryJIHU"_s, u"进货订单统计"_s, loggedIn, false, false, loadScreen<FrmQueryJIHU>},
      separator(u"mnuTemp7"_s),
      {u"mnuView2"_s, u"公共信息"_s, online, false, false, loadScreen<FrmView2>},
      {u"mnuView"_s, u"变动信息"_s, online, false, false, loadScreen<FrmView>},
      separator(u"mnuTemp8"_s),
      {u"mnuHelp_online"_s, u"在线帮助"_s, online, false, false, showOnlineHelp},
      {u"mnuHelp"_s, u"帮助"_s, helpOnly, false, true, [&frame] { frame.openHelp(); }},
      separator(u"mnuTemp9"_s),
      {u"mnuDial"_s, u"拨号网络"_s, always, false, false, StartDialer},
      {u"Internet"_s, u"网络设置"_s, always, false, true, loadScreen<FrmINTERNET>},
      {u"mnuCalc"_s, u"计算器"_s, always, false, true, loadScreen<Calculator>},
      never(u"mnuShow"_s, u"显示窗口"_s),
      {u"mnuAbout"_s, u"关于青禾云集"_s, always, false, false, loadScreen<frmSplash>},
      separator(u"mnuTemp10"_s),
      {u"mnuTempExit"_s, u"退出"_s, always, false, false, [&frame] { frame.close(); }},
  };
}

}  // namespace qinghe
