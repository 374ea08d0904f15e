#pragma once

#include "content/views/InformationView.h"

namespace qinghe {

/// "固定信息": services whose data are a table of the portal.
class FrmView2 : public InformationView {
  Q_OBJECT

 public:
  FrmView2();

 protected:
  void showData(const ListItem& service) override;
};

}  // namespace qinghe
