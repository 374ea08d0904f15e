#include "orders/search/FrmSelect.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "catalogue/pickers/category_nodes.h"
#include "forms/Icons.h"
#include "forms/Splitter.h"
#include "orders/chooser/frmGetCYXXX.h"
#include "orders/chooser/frmGetQYXXX.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "orders/search/search_conditions.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/modal.h"
#include "shell/ras.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int unitsInPixel = 15;
constexpr int firstWidth = 1150;
constexpr int firstHeight = 600;
constexpr int firstBarPosition = 280;

const QString industry = u"haye"_s;
const QString upperCategory = u"lebi1"_s;
const QString lowerCategory = u"lebi2"_s;

RequestBuilder rows(QStringView path, const QString& table, const QString& fields,
                    const QString& condition) {
  RequestBuilder request(app().gWebServer, path);
  request.encoded(u"STABLE"_s, table)
      .encoded(u"STRDATA"_s, fields)
      .encoded(u"STOTHER"_s, condition);
  return request;
}

}  // namespace

FrmSelect::FrmSelect()
    : Form(Kind::Child, u"FrmSelect"_s, u"商品检索"_s),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      SSTab1(new TabControl(u"SSTab1"_s, TabControl::WalkedBy::User, this)),
      TreeView1(new TreeView(u"TreeView1"_s, this)),
      ListView1(new ListView(u"ListView1"_s, this)),
      ListView2(new ListView(u"ListView2"_s, this)),
      ListView3(new ListView(u"ListView3"_s, this)),
      Command1(button(u"Command1"_s, u"查找(&F)"_s)),
      Command2(button(u"Command2"_s, u"查找(&F)"_s)),
      Command3(button(u"Command3"_s, u"查找(&F)"_s)),
      Command5(button(u"Command5"_s, {})),
      mnuGetx(new QMenu(this)) {
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"退出"_s);
  TreeView1->setAccessibleName(u"类别"_s);
  TreeView1->setRootIsDecorated(true);
  TreeView1->setExpandsOnDoubleClick(false);  // the first press of the two expands
  ListView1->setAccessibleName(u"商品"_s);
  ListView1->setSpreadsColumns(true);
  ListView2->setAccessibleName(u"企业"_s);
  ListView3->setAccessibleName(u"品牌"_s);
  Command5->setIcon(iconFor(u"Next"_s));
  Command5->setAccessibleName(u"下一页"_s);
  Command5->setToolTip(u"下一页"_s);
  Command5->hide();
  makeWords();
  makeMenu();
  layOut();
  connectControls();
}

QPushButton* FrmSelect::button(const QString& name, const QString& caption) {
  auto* made = new QPushButton(caption, this);
  made->setObjectName(name);
  made->setAutoDefault(false);
  return made;
}

void FrmSelect::makeWords() {
  goodsWords_ = {word(u"TxtField1"_s, 0, u"名    称"_s), word(u"TxtField1"_s, 1, u"类    别"_s),
                 word(u"TxtField1"_s, 2, u"属    性"_s)};
  enterpriseWords_ = {word(u"TxtField2"_s, 0, u"名    称"_s),
                      word(u"TxtField2"_s, 1, u"地    址"_s)};
  brandWords_ = {word(u"TxtField3"_s, 0, u"名    称"_s), word(u"TxtField3"_s, 1, u"介    绍"_s)};
}

TextBox* FrmSelect::word(const QString& array, int index, const QString& label) {
  auto* box = new TextBox(u"%1(%2)"_s.arg(array).arg(index), TextBox::Lines::One, this);
  box->editor()->setAccessibleName(QString(label).remove(u' '));
  auto* caption = new QLabel(label, box);
  caption->setTextFormat(Qt::PlainText);
  caption->setBuddy(box->editor());
  return box;
}

void FrmSelect::addWordsPage(const QString& caption, const QList<TextBox*>& words,
                             QPushButton* find, ListView* found) {
  auto* grid = new QGridLayout(SSTab1->addPage(caption));
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(8);
  grid->setColumnStretch(1, 1);
  int row = 0;
  for (TextBox* box : words) {
    grid->addWidget(box->findChild<QLabel*>(), row, 0);
    grid->addWidget(box, row++, 1);
    connect(qobject_cast<QLineEdit*>(box->editor()), &QLineEdit::returnPressed, find,
            &QPushButton::click);
  }
  grid->addWidget(find, row++, 1, Qt::AlignRight);
  if (found != nullptr) grid->addWidget(found, row, 0, 1, 2);
  grid->setRowStretch(row, 1);
}

QWidget* FrmSelect::buildAskingPane() {
  auto* categories = new QVBoxLayout(SSTab1->addPage(u"类别"_s));
  categories->addWidget(TreeView1);
  addWordsPage(u"商品"_s, goodsWords_, Command1, nullptr);
  addWordsPage(u"企业"_s, enterpriseWords_, Command2, ListView2);
  addWordsPage(u"品牌"_s, brandWords_, Command3, ListView3);
  auto* pane = new QWidget(this);
  auto* column = new QVBoxLayout(pane);
  column->setContentsMargins(6, 6, 2, 6);
  column->addWidget(SSTab1);
  return pane;
}

QWidget* FrmSelect::buildResultPane() {
  auto* pane = new QWidget(this);
  auto* column = new QVBoxLayout(pane);
  column->setContentsMargins(2, 6, 6, 6);
  column->addWidget(ListView1, 1);
  column->addWidget(Command5, 0, Qt::AlignRight);
  return pane;
}

void FrmSelect::layOut() {
  panes_ = new SplitPane(buildAskingPane(), buildResultPane(), this);
  panes_->setPosition(firstBarPosition);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes_, 1);
  resize(firstWidth, firstHeight);
  orderTabs();
}

/// Each way of asking from above, then what it found.
void FrmSelect::orderTabs() {
  QWidget* last = SSTab1;
  const auto then = [&last](QWidget* next) {
    setTabOrder(last, next);
    last = next;
  };
  then(TreeView1);
  for (TextBox* box : goodsWords_) then(box->editor());
  then(Command1);
  for (TextBox* box : enterpriseWords_) then(box->editor());
  then(Command2);
  then(ListView2);
  for (TextBox* box : brandWords_) then(box->editor());
  then(Command3);
  then(ListView3);
  then(ListView1);
  then(Command5);
}

void FrmSelect::makeMenu() {
  mnuGetx->setObjectName(u"mnuGetx"_s);
  struct Entry {
    QString name, caption;
    std::function<void()> run;
  };
  const QList<Entry> entries{
      {u"mnuXimux"_s, u"商品详细内容"_s, [this] { showDetail<frmGetXIMUX>(goodsOpened_); }},
      {u"mnuChyex"_s, u"品牌详细内容"_s, [this] { showDetail<frmGetCYXXX>(brandOpened_); }},
      {u"mnuQiyex"_s, u"企业详细内容"_s, [this] { showDetail<frmGetQYXXX>(enterpriseOpened_); }},
      {u"mnuXimuy"_s, u"同名商品目录"_s, [this] { findSameName(); }},
      {u"mnuChyey"_s, u"同品牌商品"_s, [this] { runFromRow(u"CHYE_ID"_s, FoundBrandId); }},
      {u"mnuQiyey"_s, u"同企业商品"_s, [this] { runFromRow(u"QIYE_ID"_s, FoundEnterpriseId); }},
      {u"mnuGOHU_JH"_s, u"添加新订单"_s, [this] { startOrder(); }}};
  for (const Entry& entry : entries) {
    QAction* action = mnuGetx->addAction(entry.caption);
    action->setObjectName(entry.name);
    connect(action, &QAction::triggered, this, entry.run);
    if (entry.name == u"mnuQiyex" || entry.name == u"mnuQiyey") mnuGetx->addSeparator();
  }
}

void FrmSelect::connectControls() {
  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (!CheckConnection()) return;
    if (key == u"Exit") unload();
  });
  connect(TreeView1, &TreeView::nodeClick, this, [this](TreeNode* node) { nodeClick(*node); });
  connect(Command1, &QPushButton::clicked, this, &FrmSelect::findGoods);
  connect(Command2, &QPushButton::clicked, this, &FrmSelect::findEnterprises);
  connect(Command3, &QPushButton::clicked, this, &FrmSelect::findBrands);
  connect(Command5, &QPushButton::clicked, this, &FrmSelect::nextPage);
  connect(ListView1, &ListView::columnClick, ListView1, &ListView::sortByColumn);

  const auto remember = [this](ListView* list, ListItem*& hit) {
    connect(list, &ListView::mouseDown, this,
            [list, &hit](Qt::MouseButton /*button*/, const QPoint& position) {
              hit = list->itemUnder(position);
            });
    list->installEventFilter(this);
  };
  remember(ListView1, mHitRow);
  remember(ListView2, mHitEnterprise);
  remember(ListView3, mHitBrand);
  connect(ListView1, &ListView::mouseUp, this,
          [this](Qt::MouseButton button, const QPoint& position) {
            if (button != Qt::RightButton) return;
            openMenu(mHitRow, ListView1->viewport()->mapToGlobal(position));
          });
  connect(ListView2, &ListView::mouseUp, this, [this] { askByRow(ListView2, mHitEnterprise); });
  connect(ListView3, &ListView::mouseUp, this, [this] { askByRow(ListView3, mHitBrand); });
}

void FrmSelect::onLoad() {
  pages_.start();
  pages_.setPageSize(app().gPageSize);
  for (const auto& [title, width] : foundColumns()) {
    ListView1->addColumn(title, width / unitsInPixel);
  }
  for (ListView* list : {ListView2, ListView3}) {
    list->addColumn(u"名称"_s, list->header()->minimumSectionSize());
    list->header()->setStretchLastSection(true);
  }
  TreeNode* root = TreeView1->addRoot(app().gHayeName, u"Bume"_s, industry);
  addCategories(*TreeView1, *root, 0, upperCategory);
  root->setExpanded(true);
  Command5->hide();
  showForm();
}

void FrmSelect::onUnload() {
  if (goodsOpened_) qinghe::unload<frmGetXIMUX>();
  if (brandOpened_) qinghe::unload<frmGetCYXXX>();
  if (enterpriseOpened_) qinghe::unload<frmGetQYXXX>();
}

void FrmSelect::findGoods() {
  if (!CheckConnection()) return;
  clearResult();
  const QString condition =
      goodsCondition(TxtField1(0)->text(), TxtField1(1)->text(), TxtField1(2)->text());
  if (!condition.isEmpty()) runQuery(condition);
}

void FrmSelect::findEnterprises() {
  if (!CheckConnection()) return;
  mHitEnterprise = nullptr;
  ListView2->clearItems();
  const QString condition = enterpriseCondition(TxtField2(0)->text(), TxtField2(1)->text());
  if (condition.isEmpty()) return;
  fill(*ListView2, rows(paths::loginRows, u"QYXX"_s, u"id,qiye,"_s, condition), u"Qyxx"_s);
}

void FrmSelect::findBrands() {
  if (!CheckConnection()) return;
  mHitBrand = nullptr;
  ListView3->clearItems();
  const QString condition = brandCondition(TxtField3(0)->text(), TxtField3(1)->text());
  if (condition.isEmpty()) return;
  fill(*ListView3, rows(paths::productRows, u"mumu"_s, u"id,ximu,"_s, condition), u"Ximu"_s);
}

bool FrmSelect::fill(ListView& list, const RequestBuilder& request, const QString& icon) {
  return readPortal(request.url(), EmptyAnswer::IsNoRows, [&list, &icon](GetHtml& html) {
    const QString id = html.GetRowItem();
    list.addItem(id + u" ID"_s, html.GetRowItem(), icon);
    return true;
  });
}

void FrmSelect::askByRow(const QObject* list, const ListItem* row) {
  if (row == nullptr) return;
  const QString column = list == ListView2 ? u"QIYE_ID"_s : u"CHYE_ID"_s;
  runQuery(liveGoodsWith(column, textOf(Val(row->key()))));
}

void FrmSelect::nodeClick(TreeNode& node) {
  if (!CheckConnection() || node.Tag == industry) return;
  const double category = Val(node.Key);
  clearResult();
  if (node.Tag == upperCategory && node.childCount() == 0) {
    addCategories(*TreeView1, node, category, lowerCategory);
    node.setExpanded(true);
  }
  runQuery(liveGoodsWith(u"LEBI_ID"_s, textOf(category)));
}

void FrmSelect::clearResult() {
  mHitRow = nullptr;
  mChosenRow = nullptr;
  ListView1->clearItems();
}

void FrmSelect::runQuery(const QString& query) {
  clearResult();
  pages_.start();
  query_ = query;
  LoadSearchPage();
  CountSearchPages();
  Command5->setVisible(pages_.hasMorePages());
  Command5->setText(pages_.percentage());
}

bool FrmSelect::LoadSearchPage() {
  const QString url = rows(paths::productPage, u"XIMU"_s,
                           u"id,ximu_no,ximu,jigex,zhko,qiye,chye,qiye_id,chye_id,"_s, query_)
                          .encoded(u"STPAGE"_s, textOf(pages_.pageNo()))
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .encoded(u"STORDER"_s, u"NOTH,ID"_s)
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString id = html.GetRowItem();
    QList<QString> texts;
    for (int column = 0; column < FoundColumnCount; ++column) texts << html.GetRowItem();
    ListItem* row = ListView1->addItem(id + u" ID"_s, texts.first(), u"Ximu"_s);
    for (int column = 1; column < FoundColumnCount; ++column) {
      row->setSubItem(column, texts[column]);
    }
    row->setTag(textOf(pages_.pageNo()));
    return true;
  });
}

bool FrmSelect::CountSearchPages() {
  const QString url = RequestBuilder(app().gWebServer, paths::productPageCount)
                          .encoded(u"STABLE"_s, u"XIMU"_s)
                          .encoded(u"STOTHER"_s, query_)
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    pages_.takeCount(html.GetRowItem());
    return true;
  });
}

void FrmSelect::nextPage() {
  if (!CheckConnection()) return;
  if (!pages_.next()) {
    // The keys stay with the result.
    if (Command5->hasFocus()) ListView1->setFocus();
    Command5->hide();
    return;
  }
  Command5->setText(pages_.percentage());
  LoadSearchPage();
}

void FrmSelect::openMenu(ListItem* row, const QPoint& at) {
  if (row == nullptr || row->key() == u"Count ID" || !CheckConnection()) return;
  auto& state = app();
  try {
    const qint32 partner = toInt32(Val(row->subItem(FoundEnterpriseId)));
    const qint32 brand = toInt32(Val(row->subItem(FoundBrandId)));
    const qint32 goods = toInt32(Val(row->key()));
    state.gPartnerName = row->subItem(FoundEnterprise);
    state.gPartnerId = partner;
    state.gBrandId = brand;
    state.gGoodsId = goods;
  } catch (const Failure&) {
    return;  // an id that no record can have: the menu would lead to another one's
  }
  mChosenRow = row;
  mnuGetx->popup(at);
}

void FrmSelect::findSameName() {
  if (mChosenRow == nullptr) return;
  runQuery(liveGoodsWith(u"XIMU"_s, u'\'' + Trim(mChosenRow->subItem(FoundName)) + u'\''));
}

void FrmSelect::runFromRow(const QString& column, int cell) {
  if (mChosenRow == nullptr) return;
  runQuery(liveGoodsWith(column, textOf(Val(mChosenRow->subItem(cell)))));
}

template <class Detail>
void FrmSelect::showDetail(bool& opened) {
  opened = true;
  showModalWaiting(defaultInstance<Detail>());
}

void FrmSelect::startOrder() {
  app().gCurrentOrderId = 0;
  // A screen that is open comes forward with the order that it holds.
  defaultInstance<FrmGOHU_JH>().showForm();
}

bool FrmSelect::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ListView1) {
    const bool menuKey =
        event->type() == QEvent::ContextMenu &&
        static_cast<const QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard;
    ListItem* row = ListView1->selectedItem();
    if (!menuKey || row == nullptr) return false;
    openMenu(row, ListView1->viewport()->mapToGlobal(ListView1->cellRect(row).bottomLeft()));
    return true;
  }
  if (event->type() == QEvent::KeyPress && (watched == ListView2 || watched == ListView3)) {
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    askByRow(watched, static_cast<const ListView*>(watched)->selectedItem());
    return true;
  }
  return Form::eventFilter(watched, event);
}

}  // namespace qinghe
