#include "catalogue/pickers/frmGetSHXI.h"

#include <QScreen>
#include <QShowEvent>
#include <QVBoxLayout>

#include "catalogue/pickers/attribute_text.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int valueColumn = 1;
constexpr int valueInset = 1540 / 15;
constexpr int nameWidth = valueInset;  // the two fill the list
constexpr int aboveMiddle = 855 / 15;
constexpr int firstWidth = 400;
constexpr int firstHeight = 320;

}  // namespace

frmGetSHXI::frmGetSHXI()
    : Picker(u"frmGetSHXI"_s, u"其它属性"_s), ListView1(new ListView(u"ListView1"_s, this)) {
  ListView1->setAccessibleName(u"其它属性"_s);
  const CellColumn values{
      .column = valueColumn,
      .input = u"txtSelect"_s,
      .afterLeave = [](ListItem& row, const QString& text) { row.setSubItem(valueColumn, text); },
      .upToTheRightEnd = true};
  cells_ = new CellEditor(ListView1, {values},
                          {.rightOfCell = 48, .belowRow = 8, .lessWidth = 96, .lessHeight = 16});
  txtSelect = cells_->input(u"txtSelect"_s);
  auto* all = new QVBoxLayout(this);
  all->addWidget(ListView1, 1);
  addButtons(*all);
  setTabOrder(ListView1, commandC);
  setTabOrder(commandC, commandT);
  resize(firstWidth, firstHeight);
}

QString frmGetSHXI::edit(const QString& text) {
  Tag = text;
  return choose().name;
}

void frmGetSHXI::onLoad() {
  place();
  ListView1->addColumn(u"名称"_s, nameWidth);
  ListView1->addColumn(u"内容"_s, firstWidth - valueInset);
  ListView1->setFillingColumn(valueColumn, valueInset);
  const QString url =
      RequestBuilder(app().gWebServer, paths::loginRows)
          .encoded(u"STABLE"_s, u"SHXI"_s)
          .encoded(u"STRDATA"_s, u"id,shxi,"_s)
          .encoded(u"STOTHER"_s,
                   u"HAYE_ID=%1 and xuze=%2"_s.arg(app().gHayeId).arg(app().gShxiKind))
          .url();
  (void)readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString key = html.GetRowItem() + u" ID"_s;
    ListView1->addItem(key, Trim(html.GetRowItem()), u"Shxi"_s);
    return true;
  });
}

void frmGetSHXI::place() {
  QRect here(QPoint(), size());
  here.moveCenter(screen()->geometry().center());
  move(here.topLeft() - QPoint(0, aboveMiddle));
}

void frmGetSHXI::showEvent(QShowEvent* event) {
  // A window that comes back from its icon is not shown anew.
  if (!event->spontaneous()) filled_ = false;
  Picker::showEvent(event);
}

void frmGetSHXI::onActivate() {
  if (std::exchange(filled_, true)) return;
  const QStringList values = attributeValues(Tag);
  // More values than attributes: those without a row have nowhere to go.
  const int rows = static_cast<int>(qMin<qsizetype>(values.size(), ListView1->itemCount()));
  for (int row = 0; row < rows; ++row) {
    ListView1->itemAt(row)->setSubItem(valueColumn, values[row]);
  }
}

void frmGetSHXI::accept() {
  cells_->leave();
  QStringList values;
  for (int row = 0; row < ListView1->itemCount(); ++row) {
    values.append(ListView1->itemAt(row)->subItem(valueColumn));
  }
  Tag = attributeText(values);
  Picker::accept();
}

void frmGetSHXI::clearChoice() {
  cells_->hide();
  Tag.clear();
}

}  // namespace qinghe
