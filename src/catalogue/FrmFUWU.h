#pragma once

#include "catalogue/LocalRecordEditor.h"

namespace qinghe {

/// "服务登记(本地)": the company's services, kept like its goods with fewer fields.
class FrmFUWU : public LocalRecordEditor {
  Q_OBJECT

 public:
  FrmFUWU();
};

}  // namespace qinghe
