#include "orders/chooser/frmGetXIMU.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

#include "forms/CellEditor.h"
#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "orders/OrderLineRow.h"
#include "portal/RequestBuilder.h"
#include "portal/url_encode.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/find_row.h"
#include "shell/ras.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int unitsInPixel = 15;
constexpr int firstWidth = 960;
constexpr int firstHeight = 560;
constexpr int spacing = 6;
constexpr CellPlace overTheCell{.belowRow = 32};

QString soldByThePartner() {
  return u"noth=true and qiye_id="_s + textOf(app().gPartnerId);
}

/// A page in this screen's own way, which leaves the marks for line breaks and angle brackets in
/// the answer as they are.
QString fetchGoods(GetHtml& html, const QString& url) {
  const QString& server = app().gWebServer;
  switch (app().gUnicode) {
    case 0: {
      // Only the portal's memory of an earlier request could fill this answer: nothing is posted.
      html.PutUrl(u"url_no=login_qy&review="_s + UrlEncodeField(QString(url)));
      const QString close =
          RequestBuilder(server, paths::close).raw(u"url_no"_s, u"login_qy"_s).url();
      html.openUrl(close);
      return html.openUrl(close);
    }
    case 1:
      return html.openUrl(RequestBuilder(server, paths::review).encoded(u"review"_s, url).url());
    case 2:
      return html.openUrl(url);
    default:
      return {};
  }
}

bool readGoods(const RequestBuilder& request, const std::function<bool(GetHtml&)>& eachRow) {
  return readPortal([url = request.url()](GetHtml& html) { return fetchGoods(html, url); },
                    EmptyAnswer::IsNoRows, eachRow);
}

CellColumn cellColumn(LineInput input, ChosenColumn column, const QString& name) {
  return {.column = column,
          .input = name,
          .complaint = [input](const QString& text) { return complaintOf(input, text); },
          .afterLeave =
              [column](ListItem& row, const QString& text) {
                row.setSubItem(column, text);
                // The marks of the rows that an order takes go with their quantities.
                if (column == ChosenQuantity) row.setChecked(Val(text) != 0);
              }};
}

QList<CellColumn> cellColumns() {
  return {cellColumn(LineInput::TxtInputSL, ChosenQuantity, u"TxtInputSL"_s),
          cellColumn(LineInput::TxtInputJG, ChosenPrice, u"TxtInputJG"_s),
          cellColumn(LineInput::TxtInputZK, ChosenDiscount, u"TxtInputZK"_s)};
}

}  // namespace

frmGetXIMU::frmGetXIMU()
    : Form(Kind::Dialog, u"frmGetXIMU"_s, u"选择商品"_s),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      ListView1(new ListView(u"ListView1"_s, this)),
      Text1(new TextBox(u"Text1"_s, TextBox::Lines::One, this)),
      command1(button(u"command1"_s, u"搜索(&S)"_s)),
      Command2(button(u"Command2"_s, {})),
      commandC(button(u"commandC"_s, u"确定(&O)"_s)),
      commandT(button(u"commandT"_s, u"取消(&C)"_s)),
      CheckOK(new QCheckBox(this)),
      cells_(new CellEditor(ListView1, cellColumns(), overTheCell)) {
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"退出"_s);
  ListView1->setAccessibleName(u"商品"_s);
  ListView1->setCheckBoxes(true);
  ListView1->setSpreadsColumns(true);
  Text1->editor()->setAccessibleName(u"搜索"_s);
  Command2->setIcon(iconFor(u"Next"_s));
  Command2->setAccessibleName(u"下一页"_s);
  Command2->setToolTip(u"下一页"_s);
  CheckOK->setObjectName(u"CheckOK"_s);
  CheckOK->hide();
  layOut();
  connectControls();
}

QPushButton* frmGetXIMU::button(const QString& name, const QString& caption) {
  auto* made = new QPushButton(caption, this);
  made->setObjectName(name);
  return made;
}

void frmGetXIMU::layOut() {
  auto* searching = new QHBoxLayout;
  searching->addWidget(Text1, 1);
  searching->addWidget(command1);
  searching->addStretch(1);
  searching->addWidget(Command2);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(commandC);
  buttons->addWidget(commandT);
  auto* inner = new QVBoxLayout;
  inner->setContentsMargins(9, 6, 9, 9);
  inner->setSpacing(spacing);
  inner->addLayout(searching);
  inner->addWidget(ListView1, 1);
  inner->addLayout(buttons);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addLayout(inner, 1);
  resize(firstWidth, firstHeight);
  setTabOrder(Text1->editor(), command1);
  setTabOrder(command1, Command2);
  setTabOrder(Command2, ListView1);
  setTabOrder(ListView1, commandC);
  setTabOrder(commandC, commandT);
}

void frmGetXIMU::connectControls() {
  // A press on a title moves the focus into the list, so that an open cell is left before.
  connect(ListView1, &ListView::columnClick, ListView1, &ListView::sortByColumn);
  connect(command1, &QPushButton::clicked, this, &frmGetXIMU::search);
  connect(Command2, &QPushButton::clicked, this, &frmGetXIMU::nextPage);
  connect(commandC, &QPushButton::clicked, this, [this] { leaveWith(true); });
  connect(commandT, &QPushButton::clicked, this, [this] { leaveWith(false); });
  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (!CheckConnection()) return;
    if (key == u"Exit") unload();
  });
  new QShortcut(Qt::Key_Escape, this, [this] { leaveWith(false); });
  // Enter searches while one types what to search for; on the list it opens a cell.
  connect(Text1, &TextBox::gotFocus, this, [this] { command1->setDefault(true); });
  connect(Text1, &TextBox::lostFocus, this, [this] { command1->setDefault(false); });
}

void frmGetXIMU::onLoad() {
  pages_.setPageSize(app().gPageSize);
  BuildColumns();
  CountGoodsPages();
  Command2->setVisible(pages_.hasMorePages());
  Command2->setText(pages_.percentage());
  LoadGoodsPage(pages_.pageNo());
  ListView1->setFocus();
}

void frmGetXIMU::BuildColumns() {
  for (const auto& [title, width] : chosenGoodsColumns()) {
    ListView1->addColumn(title, width / unitsInPixel);
  }
}

bool frmGetXIMU::CountGoodsPages() {
  RequestBuilder request(app().gWebServer, paths::productPageCount);
  request.encoded(u"STABLE"_s, u"XIMU"_s)
      .encoded(u"STOTHER"_s, soldByThePartner())
      .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()));
  return readGoods(request, [this](GetHtml& html) {
    pages_.takeCount(html.GetRowItem());
    return true;
  });
}

bool frmGetXIMU::LoadGoodsPage(qint32 page) {
  RequestBuilder request(app().gWebServer, paths::productPage);
  request.encoded(u"STABLE"_s, u"XIMU"_s)
      .encoded(u"STRDATA"_s, u"id,ximu,lebi,jigex,zhko,gesh,ximu_bh,ximu_no,"_s)
      .encoded(u"STOTHER"_s, soldByThePartner())
      .encoded(u"STPAGE"_s, textOf(page))
      .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
      .encoded(u"STORDER"_s, u"NOTH,ID"_s);
  return readGoods(request, [this, page](GetHtml& html) {
    const QString id = html.GetRowItem();
    QList<QString> texts;
    // The supplier's words on discounts are a note: the factor is the buyer's to type.
    static constexpr ChosenColumn answer[] = {ChosenName,      ChosenCategory,   ChosenPrice,
                                              ChosenNote,      ChosenCartonSize, ChosenCode,
                                              ChosenBookNumber};
    for ([[maybe_unused]] const auto column : answer) texts << html.GetRowItem();
    ListItem* row = ListView1->addItem(id + u" ID"_s, texts.first(), u"Ximu"_s);
    for (int cell = 1; cell < texts.size(); ++cell) row->setSubItem(answer[cell], texts[cell]);
    row->setSubItem(ChosenQuantity, u"0"_s);
    row->setSubItem(ChosenDiscount, u"1"_s);
    row->setTag(textOf(page));
    return true;
  });
}

void frmGetXIMU::onActivate() {
  const ChosenIds onTheOrder(mOrderIdList);
  for (int row = 0; row < ListView1->itemCount(); ++row) {
    ListItem* goods = ListView1->itemAt(row);
    // Marks are only set: one that stands for a typed quantity must not go.
    if (onTheOrder.contains(textOf(Val(goods->key())))) goods->setChecked(true);
  }
}

void frmGetXIMU::nextPage() {
  if (!CheckConnection()) return;
  if (!pages_.next()) {
    Command2->hide();
    return;
  }
  Command2->setText(pages_.percentage());
  LoadGoodsPage(pages_.pageNo());
}

void frmGetXIMU::search() {
  if (Text1->text().isEmpty()) return;
  const ListItem* selected = ListView1->selectedItem();
  const auto textOfRow = [this](int row) { return ListView1->itemAt(row)->text(); };
  const int found = findRow(ListView1->itemCount(), selected == nullptr ? -1 : selected->row(),
                            textOfRow, Trim(Text1->text()), Qt::CaseInsensitive);
  if (found < 0) {
    prompts().ask(this, {u"没有匹配的条目"_s});
    return;
  }
  ListView1->setSelectedItem(ListView1->itemAt(found));
  ListView1->setFocus();
}

void frmGetXIMU::leaveWith(bool accepted) {
  // A mnemonic takes no focus, so that what is still open has not been looked at.
  if (!cells_->leave()) return;
  CheckOK->setChecked(accepted);
  hideForm();
}

void frmGetXIMU::onUnload() {
  CheckOK->setChecked(false);
}

void frmGetXIMU::closeEvent(QCloseEvent* event) {
  event->setAccepted(!formsState().gate.isHeld());
  if (!event->isAccepted()) return;
  // Unloading would throw away what was typed.
  cells_->hide();
  leaveWith(false);
}

QList<ChosenGoodsRow> frmGetXIMU::chosenRows() const {
  QList<ChosenGoodsRow> rows;
  for (int row = 0; row < ListView1->itemCount(); ++row) {
    const ListItem* item = ListView1->itemAt(row);
    ChosenGoodsRow& goods = rows.emplaceBack();
    goods.key = item->key();
    goods.texts[ChosenName] = item->text();
    for (int column = ChosenCategory; column < ChosenColumnCount; ++column) {
      goods.texts[static_cast<std::size_t>(column)] = item->subItem(column);
    }
  }
  return rows;
}

}  // namespace qinghe
