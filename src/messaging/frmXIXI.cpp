#include "messaging/frmXIXI.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "forms/Splitter.h"
#include "messaging/frmPeer.h"
#include "messaging/step.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 500;
constexpr int firstHeight = 560;
constexpr int contactsWidth = 220;
constexpr int messagesHeight = 300;
constexpr int barWidth = 5;

constexpr int unitsInPixel = 15;
constexpr int columnMargin = 60;
constexpr int directionWidth = 800;
constexpr int subjectWidth = 4000;
constexpr int spareWidth = 40;  // pixels, for a scroll bar
constexpr int leastPane = 630;

const QString contactImage = u"LK"_s;
const QString messageImage = u"Xixi"_s;

/// Without it no key would open the first row, which is selected from the start, and often there is
/// no other to come from.
void clickByEnter(ListView* list) {
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    auto* shortcut = new QShortcut(QKeySequence(key), list);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, list, [list] {
      if (ListItem* item = list->selectedItem()) emit list->itemClick(item);
    });
  }
}

void prepareBar(SplitPane& pane, const QString& name, Qt::Orientation orientation) {
  pane.setBarName(name);
  pane.setOrientation(orientation);
  pane.setBarWidth(barWidth);
  pane.setLeastPane(leastPane / unitsInPixel);
  pane.setClamping(true);
}

}  // namespace

frmXIXI::frmXIXI()
    : Form(Kind::Child, u"frmXIXI"_s, u"消息查询"_s),
      ListView1(new ListView(u"ListView1"_s, this)),
      ListView2(new ListView(u"ListView2"_s, this)),
      Text1(new TextBox(u"Text1"_s, TextBox::Lines::Many, this)),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      StatusBar1(new StatusBar(u"StatusBar1"_s, this)),
      Image1(new QToolButton(this)),
      messages_(new SplitPane(ListView2, Text1, this)) {
  panes_ = new SplitPane(ListView1, messages_, this);
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"Exit"_s);
  Text1->setReadOnly(true);
  Image1->setObjectName(u"Image1"_s);
  Image1->setIcon(iconFor(u"Logo"_s));
  Image1->setIconSize(Toolbar1->iconSize() * 1.5);
  Image1->setAutoRaise(true);
  ListView1->setAccessibleName(u"用户名称"_s);
  ListView2->setAccessibleName(u"消息"_s);
  ListView2->setSpreadsColumns(true);
  Text1->editor()->setAccessibleName(u"消息内容"_s);
  Image1->setAccessibleName(u"关于"_s);
  clickByEnter(ListView1);
  clickByEnter(ListView2);
  prepareBar(*panes_, u"Splitter"_s, Qt::Horizontal);
  prepareBar(*messages_, u"Splittes"_s, Qt::Vertical);
  layOut();

  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (key == u"Exit") unload();
  });
  connect(ListView1, &ListView::itemClick, this,
          [this](ListItem* item) { step([&] { ShowContact(toInt16(item->tag())); }); });
  connect(ListView2, &ListView::itemClick, this,
          [this](ListItem* item) { step([&] { ShowMessage(toInt16(Val(item->key()))); }); });
  connect(Image1, &QToolButton::clicked, this,
          [this] { prompts().ask(this, {u"澄岚信息工坊"_s}); });
}

void frmXIXI::layOut() {
  auto* head = new QHBoxLayout;
  head->setContentsMargins(0, 0, 0, 0);
  head->addWidget(Toolbar1, 1);
  head->addWidget(Image1);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addLayout(head);
  all->addWidget(panes_, 1);
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);
  // The columns are made from the lists' widths before the window shows.
  all->activate();
  panes_->setPosition(contactsWidth);
  messages_->setPosition(messagesHeight);
  setTabOrder(ListView1, ListView2);
  setTabOrder(ListView2, Text1->editor());
}

void frmXIXI::onLoad() {
  SetColumns();
  step([this] { FillContacts(); });
  showForm();
  // Whoever reads messages wants to receive some.
  defaultInstance<frmPeer>();
}

void frmXIXI::SetColumns() {
  const int margin = columnMargin / unitsInPixel;
  ListView2->addColumn(u"发布时间"_s, ListView2->width() - margin);
  ListView2->addColumn({}, directionWidth / unitsInPixel);
  ListView2->addColumn(u"主题"_s, subjectWidth / unitsInPixel);
  ListView1->addColumn(u"用户名称"_s, ListView1->width() - margin);
  // The time takes the list as it is made; the window opens with room for the rest beside it.
  resize(width() + (directionWidth + subjectWidth) / unitsInPixel + spareWidth, height());
}

GetData& frmXIXI::localStore() {
  if (store_ == nullptr) store_ = std::make_unique<GetData>(app().store);
  return *store_;
}

void frmXIXI::FillContacts() {
  ListView1->clearItems();
  const QString own = textOf(app().gQiyeId);
  // Only the enterprise's own entries meet these conditions, one for each spelling of its name.
  const RecordsetPtr contacts = localStore().GetXIXI(
      u"SELECT DISTINCT QYXX_ID,QYXX From XIXI WHERE QYXX_ID="_s + own +
      u" UNION SELECT DISTINCT USER_ID AS QYXX_ID,USERNAME AS QYXX FROM XIXI WHERE USER_ID="_s +
      own);
  if (contacts->RecordCount() <= 0) return;
  for (contacts->MoveFirst(); !contacts->atEnd(); contacts->MoveNext()) {
    ListItem* item = ListView1->addItem({}, contacts->text(u"QYXX"_s), contactImage);
    item->setTag(contacts->text(u"QYXX_ID"_s));
  }
}

void frmXIXI::ShowContact(qint16 contactId) {
  ListView2->clearItems();
  const QString id = textOf(contactId);
  mHistory = localStore().GetXIXI(u"SELECT * FROM XIXI WHERE QYXX_ID="_s + id + u" OR USER_ID="_s +
                                  id + u" order by dtime desc"_s);
  if (mHistory->RecordCount() <= 0) return;
  for (mHistory->MoveFirst(); !mHistory->atEnd(); mHistory->MoveNext()) {
    ListItem* item = ListView2->addItem(mHistory->text(u"id"_s) + u" ID"_s,
                                        Trim(mHistory->text(u"dtime"_s)), contactImage);
    item->setIcon(messageImage);
    // Told from the contact's side, which here is always the enterprise itself: what it received
    // reads as sent.
    item->setSubItem(1, mHistory->text(u"qyxx_id"_s) == id ? u"发送"_s : u"接收"_s);
    item->setSubItem(2, Trim(mHistory->text(u"content"_s)));
  }
}

void frmXIXI::ShowMessage(qint16 messageId) {
  if (mHistory == nullptr || mHistory->RecordCount() <= 0) return;
  mHistory->MoveFirst();
  mHistory->Find(u"id="_s + textOf(messageId));
  if (!mHistory->atEnd()) Text1->setText(mHistory->text(u"content"_s));
}

}  // namespace qinghe
