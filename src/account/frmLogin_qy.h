#pragma once

#include "forms/Form.h"
#include "forms/TextBox.h"

class QComboBox;
class QPushButton;

namespace qinghe {

/// "登录": decides who the user is, and whether the program works with the portal or from the local
/// store alone.
class frmLogin_qy : public Form {
  Q_OBJECT

 public:
  frmLogin_qy();

  /// The user's row of the local `QYXX`; false without one and on any failure.
  bool LoginLocal();
  /// The portal's answer; false when it refuses and on any failure.
  bool LoginPortal();

  QComboBox* cmbUser_no;
  TextBox* txtPassword;
  QPushButton* cmdOK;
  QPushButton* cmdCancel;
  QPushButton* CmdRegister;

 protected:
  void onLoad() override;

 private:
  void layOut();
  /// The user numbers that have a local row; the last one stands selected.
  bool FillUserList();
  void confirm();
  void cancel();
  void registerCompany();
  void welcome();
  void refuse();
};

}  // namespace qinghe
