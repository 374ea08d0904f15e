#include "orders/documents/FrmGOHU_JH.h"

#include "catalogue/FrmXIMU.h"
#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "orders/chooser/frmGetXIMU.h"
#include "orders/chooser/frmGetXIMUX.h"
#include "orders/documents/order_urls.h"
#include "shell/PortalMethod.h"
#include "shell/modal.h"
#include "values/failure.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

OrderLook purchaseLook() {
  return {
      .form = u"FrmGOHU_JH"_s,
      .caption = u"进货订货单"_s,
      .side = OrderSide::Purchase,
      .openId = &AppState::gCurrentOrderId,
      .buttons = {{u"Print"_s, u"打印"_s},
                  {u"Ximu"_s, u"目录"_s},
                  {u"Save"_s, u"保存"_s},
                  {u"Refresh"_s, u"刷新"_s},
                  {u"Call"_s, u"通知"_s},
                  {u"Exit"_s, u"退出"_s}},
      .columns = orderLineColumns(),
      .inputs = {LineInput::TxtInputSL, LineInput::TxtInputJG, LineInput::TxtInputZK},
      // The field is the seller's and closed here; the check stands all the same.
      .chargesMustBeNumeric = true,
      .everyFieldMakesTotals = false,
  };
}

/// The fields of a goods row that the own catalogue takes over, as it is read and as it is sent.
const std::array<QString, 13> importedFields{
    u"XIMU_NO"_s, u"XIMU"_s,    u"XIMU_BH"_s, u"JIGEX"_s, u"ZHKO"_s, u"GESH"_s, u"LEBI_ID"_s,
    u"LEBI"_s,    u"CHYE_ID"_s, u"CHYE"_s,    u"JISH"_s,  u"SHXI"_s, u"NOTH"_s};

QString importedColumns() {
  QString columns;
  for (const QString& field : importedFields) columns += field.toLower() + u',';
  return columns;
}

}  // namespace

FrmGOHU_JH::FrmGOHU_JH()
    : CompanyOrder(purchaseLook(), LineOrderSent::Encoded), mnuGohu(new QMenu(this)) {
  makeMenu();
  // New lines come with the key that adds rows on every screen.
  Toolbar1->button(u"Ximu"_s)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
  connect(cells(), &CellEditor::rightReleased, this,
          [this](const ListItem* row, const QPoint& at) { popUpMenu(*row, at); });
}

void FrmGOHU_JH::makeMenu() {
  mnuGohu->setObjectName(u"mnuGohu"_s);
  struct Entry {
    QString name, caption, image;
    void (FrmGOHU_JH::*run)();
  };
  const QList<Entry> entries{
      {u"mnuXimux"_s, u"图书详细信息"_s, u"Shxi"_s, nullptr},
      {u"mnuList"_s, u"目录"_s, u"Ximu"_s, &FrmGOHU_JH::choose},
      {u"mnuImport"_s, u"目录导入"_s, u"Import"_s, &FrmGOHU_JH::importGoods}};
  for (const Entry& entry : entries) {
    QAction* action = mnuGohu->addAction(iconFor(entry.image), entry.caption);
    action->setObjectName(entry.name);
    connect(action, &QAction::triggered, this, [this, run = entry.run] {
      if (run == nullptr) {
        defaultInstance<frmGetXIMUX>().showModal();
      } else {
        guarded([this, run] { (this->*run)(); });
      }
    });
  }
}

void FrmGOHU_JH::onUnload() {
  // The local register, of all screens: the chooser stays with its rows.
  if (mChooserUsed) qinghe::unload<FrmXIMU>();
}

void FrmGOHU_JH::press(const QString& key) {
  if (key == u"Ximu") {
    chooseBySupplier();
  } else {
    CompanyOrder::press(key);
  }
}

void FrmGOHU_JH::setUsable(const QString& control, bool usable) {
  auto* entry = mnuGohu->findChild<QAction*>(control);
  if (entry != nullptr) {
    entry->setEnabled(usable);
  } else {
    CompanyOrder::setUsable(control, usable);
  }
}

void FrmGOHU_JH::popUpMenu(const ListItem& row, const QPoint& at) {
  if (!guarded([&row] { app().gGoodsId = toInt32(Val(row.subItem(LineGoodsId))); })) return;
  mnuGohu->popup(at);
}

void FrmGOHU_JH::chooseBySupplier() {
  app().gPartnerId = toInt32(Val(txtFields(2)->Tag));
  try {
    choose();
  } catch (const Failure&) {
    // The lines that were taken before the failing one must not be lost by closing.
    mDirty = true;
    throw;
  }
  mDirty = true;
}

void FrmGOHU_JH::choose() {
  // Or else it would be written over what is taken for the same line.
  cells()->takeAcceptable();
  auto& chooser = defaultInstance<frmGetXIMU>();
  chooser.mOrderIdList = ChosenIdList(lines());
  showModalWaiting(chooser);
  mChooserUsed = true;
  TakeChosenLines();
}

void FrmGOHU_JH::TakeChosenLines() {
  // Its Exit unloads the chooser, and nothing is taken then.
  if (!isLoaded<frmGetXIMU>()) return;
  const auto& chooser = defaultInstance<frmGetXIMU>();
  QList<OrderLineRow> rows = lines();
  try {
    qinghe::TakeChosenLines(rows, chooser.chosenRows(), chooser.accepted());
  } catch (const Failure&) {
    // What was taken until then stays.
    showLines(rows);
    throw;
  }
  showLines(rows);
}

void FrmGOHU_JH::importGoods() {
  const auto import = [this] {
    if (cells()->editRow() == nullptr) return false;
    // Ids are taken no wider than 16 bits here; nothing larger can be imported.
    const qint16 goodsId = toInt16(Val(cells()->editRow()->subItem(LineGoodsId)));
    return FetchGoodsForImport(goodsId) && AddGoodsToOwnCatalogue(goodsId);
  };
  bool imported = false;
  try {
    imported = import();
  } catch (const Failure&) {
    // Said below, like any other import that does not work.
  }
  prompts().ask(this, {imported ? u"导入成功"_s : u"导入失败"_s});
}

bool FrmGOHU_JH::FetchGoodsForImport(qint16 goodsId) {
  bool found = false;
  const ReadRequest read{u"XIMU"_s, importedColumns(), u"id="_s + textOf(goodsId)};
  const bool done = readPortal(readRequest(read).url(), EmptyAnswer::IsFailure, [&](GetHtml& html) {
    for (QString& field : mGoodsFields) field = html.GetRowItem();
    found = true;
    return true;
  });
  return done && found;
}

bool FrmGOHU_JH::AddGoodsToOwnCatalogue(qint16 goodsId) {
  // The supplier's goods under the own company: the portal finds no such row and adds one.
  SaveRequest request{u"ximu"_s,
                      u"18"_s,
                      u"id=%1 and qiye_id=%2"_s.arg(textOf(goodsId), own().id),
                      {{u"QIYE_ID"_s, own().id}, {u"QIYE"_s, own().name}}};
  for (std::size_t i = 0; i < importedFields.size(); ++i) {
    request.fields.append({importedFields[i], mGoodsFields[i]});
  }
  bool added = false;
  const bool done = readPortal(saveUrl(request), EmptyAnswer::IsFailure, [&added](GetHtml& html) {
    return added = Val(html.GetRowItem()) > 0;
  });
  return done && added;
}

}  // namespace qinghe
