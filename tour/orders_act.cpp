// An order's life: found, ordered, discounted, confirmed, shipped and received.

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>

#include "acts.h"
#include "hands.h"
#include "orders/OrderLineRow.h"
#include "orders/chooser/frmGetCYXXX.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMU.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/FrmDIHU_XS.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "orders/documents/FrmGOHU_XS.h"
#include "orders/search/FrmSelect.h"
#include "reports/screens/FrmQueryDH_XS.h"
#include "reports/screens/FrmQueryGH_JH.h"
#include "reports/screens/FrmQueryGH_XS.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int enterprisePage = 2;  // of the search's tabs
constexpr int chosenQuantityColumn = 2;

template <class Screen>
Screen& screen() {
  return defaultInstance<Screen>();
}

template <class Screen>
bool isSaved() {
  return isShown<Screen>() && screen<Screen>().StatusBar1->text() == u"订单保存成功！！！";
}

template <class Screen>
bool hasLines() {
  return isShown<Screen>() && screen<Screen>().ListView1->itemCount() > 0;
}

void askForSupplier() {
  auto& search = screen<FrmSelect>();
  search.SSTab1->setTab(enterprisePage);
  typeInto(*search.TxtField2(0), u"青禾"_s);
  click(search.Command2);
}

/// A day's order entry is typed: quantities down the list, without the mouse behind the first.
void typeQuantities() {
  auto& goods = *screen<frmGetXIMU>().ListView1;
  const QStringList quantities{u"20"_s, u"12"_s, u"36"_s, u"8"_s, u"-2"_s};
  for (int row = 0; row < quantities.size(); ++row) {
    typeIntoCell(goods, row, chosenQuantityColumn, quantities[row]);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  }
}

/// A detail screen from the search's menu: what is looked at, and back to the result.
template <class Detail>
QList<TourStep> detailSteps(const QString& name, const QString& entry) {
  const auto popUp = [] { clickRow(*screen<FrmSelect>().ListView1, 2, 1, Qt::RightButton); };
  return {
      {name + u"-result"_s, hasLines<FrmSelect>, popUp},
      {name + u"-menu"_s, [] { return screen<FrmSelect>().mnuGetx->isVisible(); },
       [entry] { chooseEntry(*screen<FrmSelect>().mnuGetx, entry); }},
      {name, isShown<Detail>, [] { click(screen<Detail>().commandT); }},
      {name + u"-closed"_s, [] { return !isLoaded<Detail>(); }},
  };
}

/// From a list to the order at its top, and through what `work` does there, to its save.
template <class List, class Order>
QList<TourStep> openSteps(const QString& command, const QString& list, void (*work)()) {
  return {
      {u"main-window"_s, isLoggedIn, [command] { choose(command); }},
      {u"list-empty"_s, isShown<List>, [] { click(screen<List>().Command1); }},
      {list, hasLines<List>, [] { doubleClickRow(*screen<List>().ListView1, 0); }},
      {u"order-opened"_s, hasLines<Order>, work},
      {u"order-changed"_s, hasLines<Order>, [] { pressKey(*screen<Order>().Toolbar1, u"Save"_s); }},
  };
}

template <class Order>
QList<TourStep> printSteps() {
  const auto preview = [] { return window(u"rptGOHU"_s) != nullptr; };
  return {
      {u"order-saved"_s, isSaved<Order>, [] { pressKey(*screen<Order>().Toolbar1, u"Print"_s); }},
      {u"order-preview"_s, preview, [] { printPdf(u"rptGOHU"_s); }},
      {u"order-printed"_s, preview, leaveProgram},
  };
}

}  // namespace

QList<TourStep> buySteps() {
  const auto found = [] { return screen<FrmSelect>().ListView2->itemCount() > 0; };
  const QList<TourStep> finding{
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuSelect"_s); }},
      {u"search-opened"_s, isShown<FrmSelect>, askForSupplier},
      {u"search-supplier"_s, found, [] { clickRow(*screen<FrmSelect>().ListView2, 0); }}};
  const QList<TourStep> ordering{
      {u"search"_s, hasLines<FrmSelect>,
       [] { clickRow(*screen<FrmSelect>().ListView1, 2, 1, Qt::RightButton); }},
      {u"search-menu"_s, [] { return screen<FrmSelect>().mnuGetx->isVisible(); },
       [] { chooseEntry(*screen<FrmSelect>().mnuGetx, u"mnuGOHU_JH"_s); }},
      {u"purchase-new"_s, isShown<FrmGOHU_JH>,
       [] {
         auto& number = *screen<FrmGOHU_JH>().txtFields(1);
         typeInto(number, number.text() + u"88"_s);
         pressKey(*screen<FrmGOHU_JH>().Toolbar1, u"Ximu"_s);
       }},
      {u"chooser-opened"_s, hasLines<frmGetXIMU>, typeQuantities},
      {u"chooser"_s, hasLines<frmGetXIMU>, [] { click(screen<frmGetXIMU>().commandC); }},
      {u"purchase-lines"_s, hasLines<FrmGOHU_JH>,
       [] { typeIntoCell(*screen<FrmGOHU_JH>().ListView1, 0, LineDiscount, u"0.8"_s); }},
      {u"purchase-typing"_s, hasLines<FrmGOHU_JH>,
       [] { pressKey(*screen<FrmGOHU_JH>().Toolbar1, u"Save"_s); }},
      {u"purchase-order"_s, isSaved<FrmGOHU_JH>, leaveProgram},
  };
  return finding + detailSteps<frmGetXIMUX>(u"goods-details"_s, u"mnuXimux"_s) +
         detailSteps<frmGetCYXXX>(u"brand-details"_s, u"mnuChyex"_s) +
         detailSteps<frmGetQYXXX>(u"company-details"_s, u"mnuQiyex"_s) + ordering;
}

QList<TourStep> sellSteps() {
  const auto work = [] {
    auto& order = screen<FrmGOHU_XS>();
    typeIntoCell(*order.ListView1, 1, LineDiscount, u"0.75"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    typeInto(*order.txtFields(4), u"15"_s);
    click(order.CheckXSHS);
  };
  return openSteps<FrmQueryGH_XS, FrmGOHU_XS>(u"mnuGOHU_XS"_s, u"sales-list"_s, work) +
         QList<TourStep>{{u"sales-order"_s, isSaved<FrmGOHU_XS>, leaveProgram}};
}

QList<TourStep> confirmSteps() {
  return openSteps<FrmQueryGH_JH, FrmGOHU_JH>(u"mnuGOHU_JH"_s, u"purchase-list"_s,
                                              [] { click(screen<FrmGOHU_JH>().CheckJHHS); }) +
         QList<TourStep>{{u"confirmed"_s, isSaved<FrmGOHU_JH>, leaveProgram}};
}

QList<TourStep> shipSteps() {
  const auto work = [] {
    auto& order = screen<FrmGOHU_XS>();
    order.ComboFHFS->setCurrentIndex(1);
    click(order.CheckFH);
  };
  return openSteps<FrmQueryGH_XS, FrmGOHU_XS>(u"mnuGOHU_XS"_s, u"sales-list"_s, work) +
         printSteps<FrmGOHU_XS>();
}

QList<TourStep> receiveSteps() {
  return openSteps<FrmQueryGH_JH, FrmGOHU_JH>(u"mnuGOHU_JH"_s, u"purchase-list"_s,
                                              [] { click(screen<FrmGOHU_JH>().CheckSH); }) +
         printSteps<FrmGOHU_JH>();
}

QList<TourStep> retailSteps() {
  const auto search = [] {
    auto& list = screen<FrmQueryDH_XS>();
    click(list.DTPickerFrom->check());
    click(list.DTPickerTo->check());
    click(list.Command1);
  };
  return {
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuDIHU_XS"_s); }},
      {u"list-empty"_s, isShown<FrmQueryDH_XS>, search},
      {u"retail-list"_s, hasLines<FrmQueryDH_XS>,
       [] { doubleClickRow(*screen<FrmQueryDH_XS>().ListView1, 0); }},
      {u"retail-order"_s, hasLines<FrmDIHU_XS>, leaveProgram},
  };
}

}  // namespace qinghe
