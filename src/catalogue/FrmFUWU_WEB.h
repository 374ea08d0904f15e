#pragma once

#include "catalogue/PagedRecordEditor.h"

namespace qinghe {

/// "服务登记": the company's services on the portal, mirrored in the local table `FUWU`. The long
/// texts go out with every save.
class FrmFUWU_WEB : public PagedRecordEditor {
  Q_OBJECT

 public:
  FrmFUWU_WEB();

 protected:
  bool SaveRecord(ListItem& row) override;
  void savedByToolbar(const ListItem& row) override;
  void pick(const QString& name) override;
};

}  // namespace qinghe
