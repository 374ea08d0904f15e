#include "content/views/FrmView.h"

#include "forms/HourGlass.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// Where the list of services keeps what it says of one.
constexpr int addressCell = 1;
constexpr int markerCell = 2;
constexpr int tablesCell = 3;
constexpr int columnsCell = 4;

}  // namespace

FrmView::FrmView()
    : InformationView({.form = u"FrmView"_s,
                       .caption = u"即时信息"_s,
                       .services = u"FUWU"_s,
                       .serviceFields = u"id,fuwu,wazh,guji,wezh,zidu,"_s,
                       .serviceCells = 6,
                       .condition = u"noth=true"_s,
                       .columns = u"ZIDU"_s}) {}

void FrmView::showData(const ListItem& service) {
  const QString wazh = service.subItem(addressCell);
  const QString guji = service.subItem(markerCell);
  const qint16 wezh = toInt16(service.subItem(tablesCell));
  const qint16 zidu = toInt16(service.subItem(columnsCell));

  AppState& state = app();
  const HourGlass busy;
  GetHtml html(state, state.inetQuotes);
  const QString page = html.GetUrl(state.gUnicode, wazh, PageText::Declared);
  state.gResponse = html.ParseResponse2(page, guji, wezh);
  // All rows or none: a row that cannot be read to its end leaves the list empty.
  const auto cells = html.GetARRAY(zidu);
  for (size_t row = 1; row < cells[0].size(); ++row) {
    ListItem* item = ListView2->addItem({}, cells[1][row]);
    for (size_t column = 2; column < cells.size(); ++column) {
      item->setSubItem(static_cast<int>(column) - 1, cells[column][row]);
    }
  }
}

}  // namespace qinghe
