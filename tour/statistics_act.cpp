// The four statistics of a year's sales, each printed to PDF.

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include "acts.h"
#include "hands.h"
#include "reports/screens/FrmQueryJIHU.h"
#include "reports/screens/FrmQueryXISH.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

enum Button { Next = 3, Finish = 4 };

FrmQueryXISH& wizard() {
  return defaultInstance<FrmQueryXISH>();
}

void clearDates() {
  click(wizard().DTPickerFrom->check());
  click(wizard().DTPickerTo->check());
}

void goNext() {
  click(wizard().cmdNav[Next]);
}

/// One report: its option is chosen on the page where it stands.
QList<TourStep> reportSteps(const QString& picture, std::size_t option, const QString& report) {
  const auto run = [option] {
    // Back and forth over the pages, as the option may stand on either of the last two.
    constexpr qint16 groupings = 4, last = 5;
    wizard().SetStep(option < 8 ? groupings : last);
    wizard().Option1[option]->click();
    wizard().SetStep(last);
    click(wizard().cmdNav[Finish]);
  };
  const auto preview = [report] { return window(report) != nullptr; };
  return {
      {picture + u"-chosen"_s, isShown<FrmQueryXISH>, run},
      {picture, preview, [report] { printPdf(report); }},
      {picture + u"-printed"_s, preview, [report] { window(report)->close(); }},
  };
}

}  // namespace

QList<TourStep> statisticsSteps() {
  QList<TourStep> steps{
      {u"main-window"_s, isLoggedIn, [] { choose(u"mnuQueryJIHU"_s); }},
      {u"purchase-wizard"_s, isShown<FrmQueryJIHU>,
       [] {
         defaultInstance<FrmQueryJIHU>().unload();
         choose(u"mnuQueryXish"_s);
       }},
      {u"wizard-categories"_s, isShown<FrmQueryXISH>, goNext},
      {u"wizard-goods"_s, [] { return wizard().mStep == 1; }, goNext},
      {u"wizard-dates"_s, [] { return wizard().mStep == 2; },
       [] {
         clearDates();
         goNext();
       }},
      {u"wizard-orders"_s, [] { return wizard().mStep == 3; }, goNext},
      {u"statistics-wizard"_s, [] { return wizard().mStep == 4; }, goNext},
  };
  steps += reportSteps(u"statistics-by-category"_s, 1, u"rptGOKU_LEBI"_s);
  steps += reportSteps(u"statistics-by-customer"_s, 2, u"rptGOKU_DAWE"_s);
  steps += reportSteps(u"statistics-report"_s, 7, u"rptGOKU_MONTH"_s);
  steps += reportSteps(u"statistics-details"_s, 9, u"rptXIMU_GOKU"_s);
  steps.append({u"end"_s, isShown<FrmQueryXISH>, leaveProgram});
  return steps;
}

}  // namespace qinghe
