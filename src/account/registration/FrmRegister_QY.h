#pragma once

#include <QPushButton>
#include <map>

#include "account/registration/PictureBox.h"
#include "account/registration/registration_record.h"
#include "browser/WebBrowser.h"
#include "forms/Form.h"
#include "forms/StatusBar.h"
#include "forms/TabControl.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "shell/Picker.h"

class QGridLayout;

namespace qinghe {

/// "用户信息": the company's own record on the portal. With `gQiyeId` 0 a save registers a new
/// company, which is logged in by that.
class FrmRegister_QY : public Form {
  Q_OBJECT

 public:
  FrmRegister_QY();

  // Null for a member that an array does not have.
  TextBox* TxtField0(int index) const { return box(RecordArray::TxtField0, index); }
  TextBox* TxtField1(int index) const { return box(RecordArray::TxtField1, index); }
  TextBox* TxtField3(int index) const { return box(RecordArray::TxtField3, index); }

  Toolbar* Toolbar1;
  TabControl* SSTab1;
  StatusBar* StatusBar1;
  QPushButton* Command1;  ///< picture
  QPushButton* Command2;  ///< industry
  QPushButton* Command3;  ///< country
  QPushButton* Command4;  ///< province
  QPushButton* Command5;  ///< city
  PictureBox* ImagePICT;  ///< a picture of this machine, sent nowhere
  WebBrowser* WebBrowserPICT;

  /// Shows the row of `gQiyeId`; false on any failure.
  bool ReadRow();
  /// Saves all and says so in a notice; false when the portal did not take the record.
  bool SaveRegistration();
  /// The record without its long texts. The answer logs the company in; a refusal changes no
  /// account variable.
  bool SavePortal();
  bool SaveIntroduction();
  bool SaveUserText();
  /// The row by which the company logs in without the portal; false on any failure.
  bool SaveLocal();

 protected:
  void onLoad() override;
  void onQueryUnload(Cancel& cancel) override;
  void onUnload() override;

 private:
  TextBox* box(RecordArray array, int index) const;
  void makeBoxes();
  void layOut();
  QGridLayout* addGrid(const QString& tab, RecordArray array);
  void addText(int index);
  void addPictures();
  void connectControls();
  void watchTyping(TextBox& box);
  void pick(int field, const Choice& choice);
  void pickPicture();
  void buttonClick(const QString& key);
  void save();
  bool postText(const QString& name, const QString& text);

  std::map<std::pair<RecordArray, int>, TextBox*> boxes_;
  bool changed_ = false;
  bool typed_ = false;    ///< the focus went into one of the first three further boxes
  QString beforeTyping_;  ///< what stood in it then
};

}  // namespace qinghe
