#pragma once

#include "content/views/InformationView.h"

namespace qinghe {

/// "即时信息": services whose data stand on foreign web pages. A click fetches the page of that
/// moment and cuts a table out of it.
class FrmView : public InformationView {
  Q_OBJECT

 public:
  FrmView();

 protected:
  void showData(const ListItem& service) override;
};

}  // namespace qinghe
