#pragma once

#include "forms/Form.h"
#include "forms/TextBox.h"

class QCheckBox;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace qinghe {

/// "网络设置": all settings of the connection.
///
/// The server that it shows is always the built-in one, never the stored one, and confirming stores
/// what it shows. Whatever way it closes, a store without a server gets what the controls hold.
class FrmINTERNET : public Form {
  Q_OBJECT

 public:
  FrmINTERNET();

  void LoadSettings();
  /// Stores the controls, and gives the transfer control the access type and proxies of the state,
  /// which are still those from before.
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

 private:
  void makeControls();
  void layOut();
  QWidget* serverFrame();
  QWidget* proxyFrame();
  QWidget* modeFrame();
  QWidget* otherSettings();
  void connectKeys();
  void addProxy();
  void removeProxy();
  void confirm();
};

/// Reads the settings into the state, in their fixed order, all but the server. `gAutoPeer` comes
/// from the key `AutoDial`, like `gAutoDial`.
void readSettingsIntoState();

}  // namespace qinghe
