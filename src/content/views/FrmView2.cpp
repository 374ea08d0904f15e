#include "content/views/FrmView2.h"

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

// Where the list of services keeps what it says of one.
constexpr int columnsCell = 2;
constexpr int tableCell = 3;

}  // namespace

FrmView2::FrmView2()
    : InformationView({.form = u"FrmView2"_s,
                       .caption = u"固定信息"_s,
                       .services = u"FUWU2"_s,
                       .serviceFields = u"id,fuwu,wezh,zidu,biao,"_s,
                       .serviceCells = 5,
                       .condition = {},
                       .columns = u"ZIDU2"_s}) {}

void FrmView2::showData(const ListItem& service) {
  const QString biao = service.subItem(tableCell);
  const qint16 zidu = toInt16(service.subItem(columnsCell));
  const QString url = RequestBuilder(app().gWebServer, paths::loginStructure)
                          .encoded(u"STABLE"_s, biao)
                          .encoded(u"STRUCTN"_s, textOf(zidu))
                          .url();
  readPortal(url, EmptyAnswer::IsNoRows, [this, zidu](GetHtml& html) {
    // The key is one of the columns; without any other a row has a key and shows nothing.
    QStringList cells{html.GetRowItem()};
    while (cells.size() < zidu) cells.append(html.GetRowItem());
    ListItem* item = ListView2->addItem(cells[0] + u" ID"_s, cells.value(1));
    for (int cell = 2; cell < cells.size(); ++cell) item->setSubItem(cell - 1, cells[cell]);
    return true;
  });
}

}  // namespace qinghe
