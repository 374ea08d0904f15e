#pragma once

#include <memory>

#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/StatusBar.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "store/GetData.h"

class QToolButton;

namespace qinghe {

class SplitPane;

/// "消息查询": the history of the messenger, to be read only. On the left who there are messages
/// of, on the right theirs, newest first, and below the whole text of one.
class frmXIXI : public Form {
  Q_OBJECT

 public:
  frmXIXI();

  ListView* ListView1;
  ListView* ListView2;
  TextBox* Text1;
  Toolbar* Toolbar1;
  StatusBar* StatusBar1;
  QToolButton* Image1;

 protected:
  void onLoad() override;

 private:
  void layOut();
  void SetColumns();
  void FillContacts();
  void ShowContact(qint16 contactId);
  void ShowMessage(qint16 messageId);
  GetData& localStore();

  SplitPane* panes_;
  SplitPane* messages_;
  std::unique_ptr<GetData> store_;
  RecordsetPtr mHistory;
};

}  // namespace qinghe
