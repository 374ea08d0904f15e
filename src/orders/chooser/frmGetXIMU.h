#pragma once

#include <QCheckBox>
#include <QPushButton>

#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "orders/chosen_lines.h"
#include "portal/GetHtml.h"
#include "shell/PageWalk.h"

namespace qinghe {

class CellEditor;

/// "选择商品": the goods of one supplier (`gPartnerId`), page by page, with quantity, price and
/// discount to be typed in row by row. What it shows is what it was first loaded for: it is hidden
/// and not unloaded, and keeps its rows and what was typed into them.
///
/// An opener sets `gPartnerId`, then
///
///   auto& chooser = defaultInstance<frmGetXIMU>();
///   chooser.mOrderIdList = ChosenIdList(rows);
///   showModalWaiting(chooser);
///   if (isLoaded<frmGetXIMU>()) TakeChosenLines(rows, chooser.chosenRows(), chooser.accepted());
///
/// Its Exit alone unloads it, and then there is nothing to take; Esc and the window's own button
/// cancel.
class frmGetXIMU : public Form {
  Q_OBJECT

 public:
  frmGetXIMU();

  Toolbar* Toolbar1;
  ListView* ListView1;    ///< key: goods id + " ID"; tag: the page it came with
  TextBox* Text1;         ///< what to search for
  QPushButton* command1;  ///< search
  QPushButton* Command2;  ///< next page; tells how much is there
  QPushButton* commandC;  ///< accept
  QPushButton* commandT;  ///< cancel
  QCheckBox* CheckOK;     ///< never seen: checked while the screen was left by `commandC`

  /// The goods that stand on the order, as `ChosenIdList` gives them; their rows get check marks
  /// whenever the screen is activated.
  QString mOrderIdList;

  bool accepted() const { return CheckOK->isChecked(); }
  /// All rows as they stand, in list order.
  QList<ChosenGoodsRow> chosenRows() const;

 protected:
  void onLoad() override;
  void onActivate() override;
  void onUnload() override;
  void closeEvent(QCloseEvent* event) override;

 private:
  QPushButton* button(const QString& name, const QString& caption);
  void layOut();
  void connectControls();
  void BuildColumns();
  bool CountGoodsPages();
  bool LoadGoodsPage(qint32 page);
  void nextPage();
  void search();
  void leaveWith(bool accepted);

  CellEditor* cells_;
  PageWalk pages_;
};

}  // namespace qinghe
