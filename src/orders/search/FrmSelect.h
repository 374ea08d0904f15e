#pragma once

#include <QMenu>
#include <QPushButton>

#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/TabControl.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "forms/TreeView.h"
#include "portal/RequestBuilder.h"
#include "shell/PageWalk.h"

namespace qinghe {

class SplitPane;

/// "商品检索": the goods of all enterprises of the portal, found by category, by words, by
/// enterprise or by brand. From a result row the menu leads to the details, to like goods, and to a
/// new purchase order with the row's enterprise.
class FrmSelect : public Form {
  Q_OBJECT

 public:
  FrmSelect();

  TextBox* TxtField1(int index) const { return goodsWords_.value(index); }
  TextBox* TxtField2(int index) const { return enterpriseWords_.value(index); }
  TextBox* TxtField3(int index) const { return brandWords_.value(index); }

  Toolbar* Toolbar1;
  TabControl* SSTab1;
  TreeView* TreeView1;
  ListView* ListView1;    ///< the result; key: goods id + " ID", tag: the page it came with
  ListView* ListView2;    ///< enterprises
  ListView* ListView3;    ///< brands
  QPushButton* Command1;  ///< finds goods
  QPushButton* Command2;  ///< finds enterprises
  QPushButton* Command3;  ///< finds brands
  QPushButton* Command5;  ///< next page of the result; tells how much is there
  QMenu* mnuGetx;         ///< over a result row

 protected:
  void onLoad() override;
  void onUnload() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPushButton* button(const QString& name, const QString& caption);
  void makeWords();
  TextBox* word(const QString& array, int index, const QString& label);
  QWidget* buildAskingPane();
  QWidget* buildResultPane();
  void addWordsPage(const QString& caption, const QList<TextBox*>& words, QPushButton* find,
                    ListView* found);
  void layOut();
  void orderTabs();
  void makeMenu();
  void connectControls();

  void findGoods();
  void findEnterprises();
  void findBrands();
  bool fill(ListView& list, const RequestBuilder& request, const QString& icon);
  void askByRow(const QObject* list, const ListItem* row);
  void nodeClick(TreeNode& node);

  void runQuery(const QString& query);
  bool LoadSearchPage();
  bool CountSearchPages();
  void nextPage();
  void clearResult();

  void openMenu(ListItem* row, const QPoint& at);
  void runFromRow(const QString& column, int cell);
  void findSameName();
  template <class Detail>
  void showDetail(bool& opened);
  void startOrder();

  SplitPane* panes_ = nullptr;
  QList<TextBox*> goodsWords_;
  QList<TextBox*> enterpriseWords_;
  QList<TextBox*> brandWords_;

  QString query_;  ///< the one that the result answers, kept for its further pages
  PageWalk pages_;
  ListItem* mHitRow = nullptr;         ///< of the result, under the last mouse press
  ListItem* mHitEnterprise = nullptr;  ///< likewise
  ListItem* mHitBrand = nullptr;       ///< likewise
  ListItem* mChosenRow = nullptr;      ///< the result row that the menu is about
  bool goodsOpened_ = false;
  bool brandOpened_ = false;
  bool enterpriseOpened_ = false;
};

}  // namespace qinghe
