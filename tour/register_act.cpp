// A new company accepts the terms and registers itself.

#include <QPushButton>
#include <QTimer>

#include "account/frmLogin_qy.h"
#include "account/registration/FrmRegister_OK.h"
#include "account/registration/FrmRegister_QY.h"
#include "account/registration/frmGetAREA.h"
#include "account/registration/frmGetHAYE.h"
#include "account/registration/frmGetSHEN.h"
#include "acts.h"
#include "hands.h"
#include "shell/frmMsgBox.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

FrmRegister_QY& registration() {
  return defaultInstance<FrmRegister_QY>();
}

void fillIn() {
  const QStringList texts{u"025-55501688"_s,        u"shanhai2026"_s, u"山海书店"_s,
                          u"江苏南京市长江路8号"_s, u"210005"_s,      u"025-55501688"_s};
  for (int i = 0; i < texts.size(); ++i) typeInto(*registration().TxtField0(i + 1), texts[i]);
  click(registration().Command3);
  click(registration().Command4);
}

template <class Picker>
TourStep pickStep(const QString& name, int row, QPushButton* FrmRegister_QY::*next) {
  return {name,
          [] { return isShown<Picker>() && defaultInstance<Picker>().ListView1->itemCount() > 0; },
          [row, next] {
            auto& picker = defaultInstance<Picker>();
            clickRow(*picker.ListView1, row);
            click(picker.commandC);
            // Behind the picker's own end, which this step still stands in.
            QTimer::singleShot(0, &registration(), [next] {
              if (next != nullptr) click(registration().*next);
            });
          }};
}

}  // namespace

QList<TourStep> registerSteps() {
  const auto isFilled = [] {
    return isShown<FrmRegister_QY>() && !registration().TxtField0(10)->text().isEmpty();
  };
  return {
      {u"login"_s, isShown<frmLogin_qy>, [] { click(defaultInstance<frmLogin_qy>().CmdRegister); }},
      {u"terms"_s, isShown<FrmRegister_OK>,
       [] { click(defaultInstance<FrmRegister_OK>().OptionS[1]); }},
      {u"terms-accepted"_s, isShown<FrmRegister_OK>,
       [] { pressKey(*defaultInstance<FrmRegister_OK>().Toolbar1, u"Load"_s); }},
      {u"registration-empty"_s, isShown<FrmRegister_QY>, fillIn},
      pickStep<frmGetSHEN>(u"province"_s, 9, &FrmRegister_QY::Command5),
      pickStep<frmGetAREA>(u"city"_s, 0, &FrmRegister_QY::Command2),
      pickStep<frmGetHAYE>(u"industry"_s, 2, nullptr),
      {u"registration"_s, isFilled, [] { pressKey(*registration().Toolbar1, u"Save"_s); }},
      {u"registration-notice"_s, isShown<frmMsgBox>,
       [] { click(defaultInstance<frmMsgBox>().cmdOK); }},
      {u"registered"_s, [] { return !isLoaded<frmMsgBox>(); }, leaveProgram},
  };
}

}  // namespace qinghe
