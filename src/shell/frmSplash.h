#pragma once

#include <QLabel>

#include "forms/Form.h"

namespace qinghe {

/// The splash of start-up and of "关于青禾云集". A press unloads it.
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

 protected:
  void onLoad() override;
  void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace qinghe
