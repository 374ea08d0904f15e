// The daily work on the own goods: change a price, save it to the portal, print the list.

#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "acts.h"
#include "catalogue/FrmFUWU.h"
#include "catalogue/FrmXIMU.h"
#include "hands.h"
#include "shell/FrmINTERNET.h"
#include "shell/main/MDIFrmMAIN.h"
#include "tools/Calculator.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

FrmXIMU& goods() {
  return defaultInstance<FrmXIMU>();
}

bool statusSays(const QString& words) {
  return isShown<FrmXIMU>() && goods().StatusBar1->text() == words;
}

}  // namespace

QList<TourStep> goodsSteps() {
  const auto preview = [] { return window(u"rptXIMU"_s) != nullptr; };
  return {
      {u"main-window"_s, isLoggedIn,
       [] { frame().mnuSystem->popup(frame().mapToGlobal(QPoint(8, 30))); }},
      {u"menu"_s, [] { return frame().mnuSystem->isVisible(); },
       [] {
         frame().mnuSystem->close();
         choose(u"mnuXimu"_s);
       }},
      {u"local-goods"_s, isShown<FrmXIMU>, [] { typeInto(*goods().txtFields(3), u"38.50"_s); }},
      {u"goods-changed"_s, isShown<FrmXIMU>, [] { pressKey(*goods().Toolbar1, u"Save"_s); }},
      {u"goods-saved"_s, [] { return statusSays(u"网络保存成功！！！"_s); },
       [] { pressKey(*goods().Toolbar1, u"Print"_s); }},
      {u"print-preview"_s, preview, [] { printPdf(u"rptXIMU"_s); }},
      {u"printed"_s, preview,
       [] {
         window(u"rptXIMU"_s)->close();
         choose(u"Internet"_s);
       }},
      {u"settings"_s, isShown<FrmINTERNET>, [] { click(defaultInstance<FrmINTERNET>().Command4); }},
      {u"goods-again"_s, [] { return !isLoaded<FrmINTERNET>(); }, [] { choose(u"mnuFuwu"_s); }},
      {u"services"_s, isShown<FrmFUWU>,
       [] {
         choose(u"mnuCalc"_s);
         QTest::keyClicks(&defaultInstance<Calculator>(), u"12.5*4="_s);
       }},
      {u"calculator"_s, isShown<Calculator>, leaveProgram},
  };
}

}  // namespace qinghe
