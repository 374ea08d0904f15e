#include "content/views/InformationView.h"

#include <QHeaderView>
#include <QVBoxLayout>
#include <algorithm>

#include "forms/Splitter.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 860;
constexpr int firstHeight = 520;
constexpr int servicesWidth = 240;
constexpr int barWidth = 5;

constexpr int unitsInPixel = 15;
constexpr int columnMargin = 60;
constexpr int usualColumn = 1440;
constexpr int leastPane = 630;
// Beyond this a column is wider than any screen, and its width only a wrong number.
constexpr double widestColumn = 60'000;
// Nobody reads a table of more, and each one costs time at every change of width.
constexpr int mostColumns = 200;

int pixels(double units) {
  return static_cast<int>(std::clamp(units, 0.0, widestColumn) / unitsInPixel);
}

}  // namespace

InformationView::InformationView(const InformationSource& source)
    : Form(Kind::Child, source.form, source.caption),
      ListView1(new ListView(u"ListView1"_s, this)),
      ListView2(new ListView(u"ListView2"_s, this)),
      Toolbar1(new Toolbar(u"Toolbar1"_s, this)),
      StatusBar1(new StatusBar(u"StatusBar1"_s, this)),
      source_(source),
      panes_(new SplitPane(ListView1, ListView2, this)) {
  Toolbar1->addButton(u"Exit"_s, u"退出"_s, u"Exit"_s);
  ListView1->setAccessibleName(u"服务"_s);
  ListView2->setAccessibleName(u"内容"_s);
  ListView2->setSpreadsColumns(true);
  // A column without width is there to be hidden.
  ListView2->header()->setMinimumSectionSize(0);
  panes_->setBarWidth(barWidth);
  panes_->setLeastPane(leastPane / unitsInPixel);
  panes_->setClamping(true);
  layOut();

  connect(Toolbar1, &Toolbar::buttonClick, this, [this](const QString& key) {
    if (key == u"Exit") unload();
  });
  connect(ListView1, &ListView::itemClick, this, [this](ListItem* item) { showService(*item); });
  connect(panes_, &SplitPane::moved, this, &InformationView::fitFirstColumn);
}

void InformationView::layOut() {
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addWidget(Toolbar1);
  all->addWidget(panes_, 1);
  all->addWidget(StatusBar1);
  resize(firstWidth, firstHeight);
  // The columns are made from the list's width before the window shows.
  all->activate();
  panes_->setPosition(servicesWidth);
  setTabOrder(ListView1, ListView2);
}

void InformationView::onLoad() {
  SetColumns();
  FillServices();
}

void InformationView::SetColumns() {
  ListView1->clearItems();
  ListView1->clearColumns();
  for (int cell = 1; cell < source_.serviceCells; ++cell) {
    ListView1->addColumn(u"名称"_s, usualColumn / unitsInPixel);
  }
  fitFirstColumn();
}

void InformationView::fitFirstColumn() {
  if (ListView1->model()->columnCount() == 0) return;
  ListView1->setColumnWidth(0, ListView1->width() - columnMargin / unitsInPixel);
}

void InformationView::FillServices() {
  RequestBuilder request(app().gWebServer, paths::loginRows);
  request.encoded(u"STABLE"_s, source_.services).encoded(u"STRDATA"_s, source_.serviceFields);
  if (!source_.condition.isEmpty()) request.encoded(u"STOTHER"_s, source_.condition);
  readPortal(request.url(), EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    QStringList cells;
    while (cells.size() < source_.serviceCells) cells.append(html.GetRowItem());
    ListItem* item = ListView1->addItem(cells[0] + u" ID"_s, cells[1]);
    for (int cell = 2; cell < cells.size(); ++cell) item->setSubItem(cell - 1, cells[cell]);
    return true;
  });
}

void InformationView::FillColumns(const QString& serviceId) {
  const QString url = RequestBuilder(app().gWebServer, paths::loginRows)
                          .encoded(u"STABLE"_s, source_.columns)
                          .encoded(u"STRDATA"_s, u"bimi,chdu,"_s)
                          .encoded(u"STOTHER"_s, u"FUWU_ID="_s + serviceId)
                          .url();
  readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString title = html.GetRowItem();
    const int width = pixels(Val(html.GetRowItem()));
    if (ListView2->model()->columnCount() < mostColumns) ListView2->addColumn(title, width);
    return true;
  });
}

void InformationView::showService(const ListItem& service) {
  ListView2->clearItems();
  ListView2->clearColumns();
  FillColumns(textOf(Val(service.key())));
  try {
    showData(service);
  } catch (const Failure&) {
    // A page that cannot be read leaves the columns without rows.
  }
}

}  // namespace qinghe
