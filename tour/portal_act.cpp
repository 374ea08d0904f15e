// The catalogue on the portal: goods with their pickers and picture page, services, brands,
// pictures, and the page that the public sees.

#include <QPushButton>

#include "acts.h"
#include "browser/WebBrowser.h"
#include "catalogue/FrmFUWU_WEB.h"
#include "catalogue/FrmMUMU_WEB.h"
#include "catalogue/FrmTUPI_WEB.h"
#include "catalogue/FrmXIMU_WEB.h"
#include "catalogue/pickers/frmGetCYXX.h"
#include "catalogue/pickers/frmGetLEBI.h"
#include "catalogue/pickers/frmGetMUMU.h"
#include "catalogue/pickers/frmGetSHXI.h"
#include "content/views/frmHTTP_WEB.h"
#include "forms/TabControl.h"
#include "hands.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int picturePage = 2;  // of an editor's tabs

FrmXIMU_WEB& goods() {
  return defaultInstance<FrmXIMU_WEB>();
}

template <class Editor>
TourStep editorStep(const QString& name) {
  return {name,
          [] { return isShown<Editor>() && defaultInstance<Editor>().ListView1->itemCount() > 0; },
          [] { clickRow(*defaultInstance<Editor>().ListView1, 0); }};
}

template <class Picker>
TourStep pickerStep(const QString& name) {
  return {name, isShown<Picker>, [] { click(defaultInstance<Picker>().commandT); }};
}

TourStep onceClosed(const QString& name, bool (*isOpen)(), void (*act)()) {
  return {name, [isOpen] { return !isOpen(); }, act};
}

}  // namespace

QList<TourStep> portalSteps() {
  const auto hasPage = [] { return !goods().WebBrowserPICT->title().isEmpty(); };
  const auto companyPage = [] {
    return isShown<frmHTTP_WEB>() && !defaultInstance<frmHTTP_WEB>().WebBrowser1->title().isEmpty();
  };
  return {
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuXimu_WEB"_s); }},
      editorStep<FrmXIMU_WEB>(u"portal-goods-list"_s),
      {u"portal-goods"_s, [] { return !goods().txtFields(2)->text().isEmpty(); },
       [] { click(goods().findChild<QWidget*>(u"Command1"_s)); }},
      pickerStep<frmGetLEBI>(u"picker-category"_s),
      onceClosed(u"picker-category-closed"_s, isShown<frmGetLEBI>,
                 [] { click(goods().findChild<QWidget*>(u"Command2"_s)); }),
      pickerStep<frmGetCYXX>(u"picker-producer"_s),
      onceClosed(u"picker-producer-closed"_s, isShown<frmGetCYXX>,
                 [] { click(goods().findChild<QWidget*>(u"Command3"_s)); }),
      pickerStep<frmGetSHXI>(u"picker-attributes"_s),
      onceClosed(u"picker-attributes-closed"_s, isShown<frmGetSHXI>,
                 [] { goods().SSTab1->setTab(picturePage); }),
      {u"portal-goods-picture"_s, hasPage, [] { choose(u"mnuFuwu_WEB"_s); }},
      editorStep<FrmFUWU_WEB>(u"portal-services-list"_s),
      {u"portal-services"_s, isShown<FrmFUWU_WEB>, [] { choose(u"mnuMumu_WEB"_s); }},
      editorStep<FrmMUMU_WEB>(u"portal-brands-list"_s),
      {u"portal-brands"_s, isShown<FrmMUMU_WEB>, [] { choose(u"mnuTupi_WEB"_s); }},
      editorStep<FrmTUPI_WEB>(u"portal-pictures-list"_s),
      {u"portal-pictures"_s, isShown<FrmTUPI_WEB>, [] { choose(u"mnuHTTP_WEB"_s); }},
      {u"company-page"_s, companyPage, leaveProgram},
  };
}

// In the stationery trade goods have brands where books have publishers.
QList<TourStep> brandSteps() {
  return {
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuXimu_WEB"_s); }},
      editorStep<FrmXIMU_WEB>(u"stationery-list"_s),
      {u"stationery"_s, [] { return !goods().txtFields(2)->text().isEmpty(); },
       [] { click(goods().findChild<QWidget*>(u"Command2"_s)); }},
      pickerStep<frmGetMUMU>(u"picker-brand"_s),
      onceClosed(u"picker-brand-closed"_s, isShown<frmGetMUMU>, leaveProgram),
  };
}

}  // namespace qinghe
