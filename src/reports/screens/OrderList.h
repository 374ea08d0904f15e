#pragma once

#include "forms/DatePicker.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/TabControl.h"
#include "forms/TextBox.h"
#include "forms/Toolbar.h"
#include "reports/screens/order_list_requests.h"
#include "shell/AppState.h"

class QAction;
class QMenu;
class QPushButton;

namespace qinghe {

class SplitPane;

/// Where the order lists differ on the screen.
struct OrderListLook {
  QString form, caption;
  OrderListSide side = OrderListSide::Purchase;
  QString orderIcon, partnerIcon;
  QString partnerTitle;
  QString newEntry;  ///< the menu's entry for a new order, empty where there is none
  QString listEntry, detailEntry;
  qint32 AppState::*orderId = nullptr;  ///< where the order's screen finds the order to open
  void (*showOrder)() = nullptr;        ///< loads and shows that screen
};

/// Finds orders on the portal by date and partner, opens them, and leads to their partner. A press
/// on a row makes its order and partner the current ones for the screens opened next.
class OrderList : public Form {
  Q_OBJECT

 public:
  explicit OrderList(OrderListLook look);

  TabControl* SSTab1;
  DatePicker* DTPickerFrom;
  DatePicker* DTPickerTo;
  TextBox* txtFields;  ///< its tag is the picked partner's key, "0" when its text was typed
  QPushButton* Command1;
  QPushButton* Command2;
  ListView* ListView1;
  ListView* ListView2;
  Toolbar* Toolbar1;
  QMenu* mnuGetx;

  /// Adds the orders under the condition to those listed; false on any failure.
  bool ListOrders(const QString& criteria);
  /// Likewise the company's partners.
  bool ListPartners();

 protected:
  void onLoad() override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void layOut();
  QWidget* searchPane();
  void makeMenu();
  QAction* addEntry(const QString& name, const QString& text, void (OrderList::*run)());
  void connectControls();
  bool listKey(const ListView& list, int key);

  void Search();
  void RefreshPartners();
  void hitOrder(ListItem* item);
  void hitPartner(ListItem* item);
  void pickPartner();
  void popUp(ListView& list, const QPoint& position);
  void newOrder();
  void listPartnersOrders();
  void showDetail();
  void talkToPartner();
  void clear(ListView& list);
  void makeRoomForDates();

  OrderListLook look_;
  SplitPane* panes_ = nullptr;
  QAction* newOrder_ = nullptr;
  QAction* listOrders_ = nullptr;
  QAction* detail_ = nullptr;
  ListItem* mHitItem = nullptr;  ///< of either list: the one under the last press
};

}  // namespace qinghe
