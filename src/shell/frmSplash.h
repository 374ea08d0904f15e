#pragma once

#include <QLabel>

#include "forms/Form.h"

namespace qinghe {

/// The splash of start-up and of "关于青禾云集". A press unloads it; Escape and Return do so too.
class frmSplash : public Form {
  Q_OBJECT

 public:
  frmSplash();

  QLabel* LabelZhce;
  QLabel* lblVersion;
  QLabel* lblProductName;
  QLabel* Label1;
  QLabel* lblPlatform;
  QLabel* lblCompany;
  QLabel* lblWarning;

  /// The fixed line that stands at the foot of the splash and of the notice.
  static QString warningLine();

 protected:
  void onLoad() override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qinghe
