#include "reports/screens/OrderList.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDateEdit>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/Icons.h"
#include "forms/Splitter.h"
#include "messaging/frmPeer.h"
#include "shell/PortalMethod.h"
#include "shell/ras.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 600;
constexpr int firstHeight = 560;
constexpr int searchWidth = 280;
constexpr int barWidth = 5;
constexpr int margin = 8;

constexpr int unitsInPixel = 15;
constexpr int inset = 60 / unitsInPixel;  // of a list's only or first column
constexpr int dateWidth = 1000;
constexpr int nameWidth = 4000;
constexpr int spareWidth = 48;  // pixels, for long dates and a scroll bar
constexpr int dateColumn = 1;
constexpr int leastPane = 630;

const QString nobody = u"0"_s;

QString keyOf(const QString& id) {
  return id + u" ID"_s;
}

QPushButton* button(const QString& name, const QString& text, const QString& image) {
  auto* made = new QPushButton(iconFor(image), text);
  made->setObjectName(name);
  made->setAutoDefault(true);  // Enter presses the button with the focus
  return made;
}

}  // namespace

OrderList::OrderList(OrderListLook look)
    : Form(Kind::Child, look.form, look.caption),
      SSTab1(new TabControl(u"SSTab1"_s, TabControl::WalkedBy::User, this)),
      DTPickerFrom(new DatePicker(u"DTPickerFrom"_s, this)),
      DTPickerTo(new DatePicker(u"DTPickerTo"_s, this)),
      txtFields(new TextBox(u"txtFields"_s, TextBox::Lines::One, this)),
      Command1(button(u"Command1"_s, u"搜索"_s, u"Find"_s)),
      Command2(button(u"Command2"_s, u"刷新"_s, u"Refresh"_s)),
      ListView1(new ListView(u"ListView1"_s, this)),
      ListView2(new ListView(u"ListView2"_s, this)),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      mnuGetx(new QMenu(this)),
      look_(std::move(look)) {
  setWindowIcon(iconFor(look_.orderIcon));
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"Exit"_s);
  txtFields->Tag = nobody;
  txtFields->editor()->setAccessibleName(look_.partnerTitle);
  Command2->setToolTip(u"重新读取"_s + look_.partnerTitle);
  ListView1->setCheckBoxes(true);
  ListView1->setAccessibleName(u"订单"_s);
  ListView1->setSpreadsColumns(true);
  ListView2->setAccessibleName(look_.partnerTitle);
  makeMenu();
  layOut();
  connectControls();
}

QWidget* OrderList::searchPane() {
  auto* page = SSTab1->addPage(u"查询条件"_s);
  auto* grid = new QGridLayout(page);
  grid->setContentsMargins(margin, margin, margin, margin);
  grid->setHorizontalSpacing(margin);
  grid->setVerticalSpacing(margin);
  grid->setColumnStretch(1, 1);
  struct Row {
    QString text;
    QWidget* control;
    QWidget* focus;
  };
  DTPickerFrom->setLabel(u"起始日期"_s);
  DTPickerTo->setLabel(u"截止日期"_s);
  int line = 0;
  for (const Row& row : {Row{u"起始日期"_s, DTPickerFrom, DTPickerFrom->editor()},
                         Row{u"截止日期"_s, DTPickerTo, DTPickerTo->editor()},
                         Row{look_.partnerTitle, txtFields, txtFields->editor()}}) {
    auto* label = new QLabel(row.text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(row.focus);
    grid->addWidget(label, line, 0);
    grid->addWidget(row.control, line++, 1);
  }
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(Command1, 1);
  buttons->addWidget(Command2, 1);
  grid->addLayout(buttons, line++, 0, 1, 2);
  grid->addWidget(ListView2, line, 0, 1, 2);
  grid->setRowStretch(line, 1);
  return SSTab1;
}

void OrderList::layOut() {
  panes_ = new SplitPane(searchPane(), ListView1, this);
  panes_->setBarWidth(barWidth);
  panes_->setLeastPane(leastPane / unitsInPixel);
  panes_->setClamping(true);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes_, 1);
  resize(firstWidth, firstHeight);
  // The columns are made from the lists' widths before the window shows.
  all->activate();
  panes_->setPosition(searchWidth);
  QWidget* const order[] = {DTPickerFrom->check(),
                            DTPickerFrom->editor(),
                            DTPickerTo->check(),
                            DTPickerTo->editor(),
                            txtFields->editor(),
                            Command1,
                            Command2,
                            ListView2,
                            ListView1};
  for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);
}

QAction* OrderList::addEntry(const QString& name, const QString& text, void (OrderList::*run)()) {
  QAction* entry = mnuGetx->addAction(text);
  entry->setObjectName(name);
  connect(entry, &QAction::triggered, this, run);
  return entry;
}

void OrderList::makeMenu() {
  mnuGetx->setObjectName(u"mnuGetx"_s);
  mnuGetx->setSeparatorsCollapsible(true);
  if (!look_.newEntry.isEmpty()) {
    newOrder_ = addEntry(look_.newEntry, u"添加新订单"_s, &OrderList::newOrder);
    mnuGetx->addSeparator();
  }
  listOrders_ = addEntry(look_.listEntry, u"查看订单列表"_s, &OrderList::listPartnersOrders);
  detail_ = addEntry(look_.detailEntry, u"查看订单明细"_s, &OrderList::showDetail);
  mnuGetx->addSeparator();
  addEntry(u"mnuPEER"_s, u"发送消息"_s, &OrderList::talkToPartner);
}

void OrderList::connectControls() {
  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (CheckConnection() && key == u"Exit") unload();
  });
  connect(Command1, &QPushButton::clicked, this, &OrderList::Search);
  connect(Command2, &QPushButton::clicked, this, &OrderList::RefreshPartners);
  connect(txtFields, &TextBox::changed, this, [this] { txtFields->Tag = nobody; });

  connect(ListView1, &ListView::mouseDown, this, [this](Qt::MouseButton, const QPoint& position) {
    hitOrder(ListView1->itemUnder(position));
  });
  connect(ListView1, &ListView::mouseUp, this,
          [this](Qt::MouseButton button, const QPoint& position) {
            if (button == Qt::RightButton) popUp(*ListView1, position);
          });
  connect(ListView1, &ListView::mouseDoubleClick, this, [this](Qt::MouseButton button) {
    if (button == Qt::LeftButton && mHitItem != nullptr) showDetail();
  });
  // The mark tells what the portal holds; a click on it changes nothing there.
  connect(ListView1, &ListView::itemCheck, this,
          [](ListItem* item) { item->setChecked(!item->isChecked()); });

  connect(ListView2, &ListView::mouseDown, this, [this](Qt::MouseButton, const QPoint& position) {
    hitPartner(ListView2->itemUnder(position));
  });
  connect(ListView2, &ListView::mouseUp, this,
          [this](Qt::MouseButton button, const QPoint& position) {
            if (button == Qt::LeftButton) pickPartner();
            if (button == Qt::RightButton) popUp(*ListView2, position);
          });
  // Also beside the partners: then for the one that was current before.
  connect(ListView2, &ListView::mouseDoubleClick, this, [this](Qt::MouseButton button) {
    if (button == Qt::LeftButton) listPartnersOrders();
  });
  connect(panes_, &SplitPane::moved, this,
          [this] { ListView2->setColumnWidths({ListView2->width() - inset}); });
  ListView1->installEventFilter(this);
  ListView2->installEventFilter(this);
}

void OrderList::onLoad() {
  const QDate today = QDate::currentDate();
  DTPickerFrom->setValue(today);
  DTPickerTo->setValue(today);
  const int numberWidth = ListView1->width() - inset;
  const int others = (dateWidth + nameWidth) / unitsInPixel;
  ListView1->addColumn(u"订单号"_s, numberWidth);
  ListView1->addColumn(u"日期"_s, dateWidth / unitsInPixel);
  ListView1->addColumn(look_.partnerTitle, nameWidth / unitsInPixel);
  ListView1->addColumn({}, 0);
  // The number takes the list as it is made; the window opens with room for the rest beside it.
  resize(width() + others + spareWidth, height());
  // A page under a tab has its size only once it shows.
  showForm();
  ListView2->addColumn({}, ListView2->width() - inset);
}

bool OrderList::ListOrders(const QString& criteria) {
  const bool listed = readPortal(ordersUrl(app().gWebServer, look_.side, criteria),
                                 EmptyAnswer::IsNoRows, [this](GetHtml& html) {
                                   const QString id = html.GetRowItem();
                                   const QString number = html.GetRowItem();
                                   const QString date = html.GetRowItem();
                                   const QString partner = html.GetRowItem();
                                   const QString partnerId = html.GetRowItem();
                                   const bool done = html.GetRowItem() == u"True";
                                   ListItem* item =
                                       ListView1->addItem(keyOf(id), number, look_.orderIcon);
                                   item->setSubItem(dateColumn, date);
                                   item->setSubItem(2, partner);
                                   item->setSubItem(3, partnerId);
                                   item->setChecked(done);
                                   return true;
                                 });
  makeRoomForDates();
  return listed;
}

/// Large fonts would cut off the day. A cell that is longer than any date gets no more.
void OrderList::makeRoomForDates() {
  const int shown = ListView1->columnWidth(dateColumn);
  const int most = ListView1->fontMetrics().horizontalAdvance(u"  2000-12-28 20:08:08  "_s);
  ListView1->resizeColumnToContents(dateColumn);
  const int needed = std::min(ListView1->columnWidth(dateColumn), most);
  ListView1->header()->resizeSection(dateColumn, shown);
  if (needed > shown) ListView1->setColumnWidth(dateColumn, needed);
}

bool OrderList::ListPartners() {
  return readPortal(partnersUrl(app().gWebServer, look_.side, app().gQiyeId), EmptyAnswer::IsNoRows,
                    [this](GetHtml& html) {
                      const QString id = html.GetRowItem();
                      const QString name = html.GetRowItem();
                      ListView2->addItem(keyOf(id), name, look_.partnerIcon);
                      return true;
                    });
}

void OrderList::clear(ListView& list) {
  if (mHitItem != nullptr && list.itemAt(mHitItem->row()) == mHitItem) mHitItem = nullptr;
  list.clearItems();
}

void OrderList::Search() {
  if (!CheckConnection()) return;
  const QString criteria = searchCriteria(
      look_.side, app().gQiyeId,
      {DTPickerFrom->value(), DTPickerTo->value(), txtFields->Tag, txtFields->text()});
  clear(*ListView1);
  ListOrders(criteria);
}

void OrderList::RefreshPartners() {
  if (!CheckConnection()) return;
  clear(*ListView2);
  ListPartners();
}

void OrderList::hitOrder(ListItem* item) {
  mHitItem = item;
  if (item == nullptr) return;
  try {
    const qint32 order = toInt32(Val(item->key()));
    const qint32 partner = toInt32(Val(item->subItem(3)));
    app().*look_.orderId = order;
    app().gPartnerName = item->subItem(2);
    app().gPartnerId = partner;
  } catch (const Failure&) {
    // No order has such an id; a screen opened for it would show another.
    mHitItem = nullptr;
  }
}

void OrderList::hitPartner(ListItem* item) {
  mHitItem = item;
  if (item == nullptr) return;
  try {
    const qint32 partner = toInt32(Val(item->key()));
    app().gPartnerName = item->text();
    app().gPartnerId = partner;
  } catch (const Failure&) {
    mHitItem = nullptr;
  }
}

void OrderList::pickPartner() {
  if (mHitItem == nullptr) return;
  const QString key = mHitItem->key();
  // A new text forgets the partner, so the key follows it.
  txtFields->setText(mHitItem->text());
  txtFields->Tag = key;
}

void OrderList::popUp(ListView& list, const QPoint& position) {
  if (mHitItem == nullptr || !CheckConnection()) return;
  const bool orders = &list == ListView1;
  if (newOrder_ != nullptr) newOrder_->setVisible(true);
  detail_->setVisible(orders);
  listOrders_->setVisible(!orders);
  mnuGetx->popup(list.viewport()->mapToGlobal(position));
}

void OrderList::newOrder() {
  app().*look_.orderId = 0;
  look_.showOrder();
}

void OrderList::listPartnersOrders() {
  clear(*ListView1);
  ListOrders(partnerCriteria(look_.side, app().gQiyeId, app().gPartnerId));
}

void OrderList::showDetail() {
  look_.showOrder();
}

void OrderList::talkToPartner() {
  defaultInstance<frmPeer>().showForm();
}

/// What the mouse does with a row, for the selected row by the keyboard: Enter as a double click,
/// the blank on a partner as a click.
bool OrderList::listKey(const ListView& list, int key) {
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  ListItem* item = list.selectedItem();
  if (item == nullptr || (!enter && key != Qt::Key_Space)) return false;
  if (&list == ListView1) {
    if (!enter) return false;
    hitOrder(item);
    if (mHitItem != nullptr) showDetail();
    return true;
  }
  hitPartner(item);
  pickPartner();
  if (enter && mHitItem != nullptr) listPartnersOrders();
  return true;
}

bool OrderList::eventFilter(QObject* watched, QEvent* event) {
  auto* list = watched == ListView1 ? ListView1 : watched == ListView2 ? ListView2 : nullptr;
  if (list == nullptr) return Form::eventFilter(watched, event);
  if (event->type() == QEvent::KeyPress) {
    const auto& press = static_cast<const QKeyEvent&>(*event);
    if ((press.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier &&
        listKey(*list, press.key())) {
      return true;
    }
  }
  const bool menuKey =
      event->type() == QEvent::ContextMenu &&
      static_cast<const QContextMenuEvent&>(*event).reason() == QContextMenuEvent::Keyboard;
  if (menuKey && list->selectedItem() != nullptr) {
    ListItem* item = list->selectedItem();
    if (list == ListView1) {
      hitOrder(item);
    } else {
      hitPartner(item);
    }
    popUp(*list, list->cellRect(item).bottomLeft());
    return true;
  }
  return Form::eventFilter(watched, event);
}

void OrderList::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && focusWidget() != nullptr && SSTab1->isAncestorOf(focusWidget())) {
    Command1->click();
    return;
  }
  Form::keyPressEvent(event);
}

}  // namespace qinghe
