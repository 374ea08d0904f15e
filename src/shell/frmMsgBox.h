#pragma once

#include <QLabel>
#include <QPushButton>

#include "forms/Form.h"
#include "forms/FormTimer.h"

namespace qinghe {

/// A notice that closes itself after two seconds or with its button.
class frmMsgBox : public Form {
  Q_OBJECT

 public:
  frmMsgBox();

  QLabel* Label1;  ///< the message line
  QLabel* Label2;  ///< the user number line
  QLabel* Label3;  ///< the user name line
  QLabel* lblDisclaimer;
  QPushButton* cmdOK;
  FormTimer* Timer1;
};

/// Loads the notice, sets its lines, puts the tray to waiting and shows it until it closes.
void showNotice(const QString& line1, const QString& line2 = {}, const QString& line3 = {});

}  // namespace qinghe
