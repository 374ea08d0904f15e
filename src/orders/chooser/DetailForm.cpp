#include "orders/chooser/DetailForm.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int unitsInPixel = 15;
constexpr int firstWidth = 480;
constexpr int leastListHeight = 330;

}  // namespace

DetailForm::DetailForm(const DetailKind& kind)
    : Form(Kind::Dialog, kind.form, kind.caption),
      ListView1(new ListView(u"ListView1"_s, this)),
      commandT(new QPushButton(u"关闭(&C)"_s, this)),
      kind_(kind),
      belowList_(new QVBoxLayout) {
  ListView1->setAccessibleName(kind_.caption);
  ListView1->setMinimumSize(firstWidth, leastListHeight);
  commandT->setObjectName(u"commandT"_s);
  commandT->setDefault(true);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(commandT);
  auto* all = new QVBoxLayout(this);
  all->addWidget(ListView1, 1);
  all->addLayout(belowList_);
  all->addLayout(buttons);

  connect(commandT, &QPushButton::clicked, this, [this] { unload(); });
}

const QString& DetailForm::rowIcon() {
  static const QString icon = u"Shxi"_s;
  return icon;
}

void DetailForm::onLoad() {
  const int nameWidth = kind_.nameWidth / unitsInPixel;
  ListView1->addColumn(u"名称"_s, nameWidth);
  ListView1->addColumn(u"内容"_s, firstWidth - nameWidth);
  ListView1->setFillingColumn(1, nameWidth);
  addFixedRows();
  readRecord();
}

void DetailForm::addFixedRows() {
  for (const QString& name : kind_.names) ListView1->addItem({}, name, rowIcon());
}

bool DetailForm::readRecord() {
  const QString url = RequestBuilder(app().gWebServer, kind_.path)
                          .encoded(u"STABLE"_s, kind_.table)
                          .encoded(u"STRDATA"_s, kind_.fields)
                          .encoded(u"STOTHER"_s, u"id="_s + textOf(recordId()))
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    for (int row = 0; row < fixedRows(); ++row) {
      ListView1->itemAt(row)->setSubItem(1, html.GetRowItem());
    }
    takeRest(html);
    return true;
  });
}

}  // namespace qinghe
