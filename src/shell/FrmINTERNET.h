#pragma once

#include "forms/Form.h"
#include "forms/TextBox.h"

class QCheckBox;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace qinghe {

/// "网络设置": all settings of the connection.
class FrmINTERNET : public Form {
  Q_OBJECT

 public:
  FrmINTERNET();

  void LoadSettings();
  void SaveSettings();

  TextBox* TextWebServer;
  QCheckBox* CheckAutoDial;
  QCheckBox* CheckAutoPeer;
  QCheckBox* CheckViewPict;
  TextBox* TextPage;
  QRadioButton *Option1, *Option2, *Option3;
  TextBox* TextProxy;
  QListWidget* List1;
  QPushButton *Command1, *Command2;
  QRadioButton *Option4, *Option5, *Option6;
  QPushButton *Command3, *Command4;

 protected:
  void onLoad() override;
  void onUnload() override;
};

/// Reads the settings into the state, in their fixed order, all but the server.
void readSettingsIntoState();

}  // namespace qinghe
