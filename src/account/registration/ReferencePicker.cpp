#include "account/registration/ReferencePicker.h"

#include <QVBoxLayout>

#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 280;
constexpr int firstHeight = 400;
constexpr int columnInset = 4;

}  // namespace

ReferencePicker::ReferencePicker(const ReferencePickerKind& kind)
    : Picker(kind.form, kind.caption),
      ListView1(new ListView(u"ListView1"_s, this)),
      kind_(kind),
      idBox_(hiddenBox(kind.idBox)),
      nameBox_(hiddenBox(kind.nameBox)) {
  ListView1->setAccessibleName(u"名称"_s);
  ListView1->setClickKeys({Qt::Key_Space});
  auto* all = new QVBoxLayout(this);
  all->addWidget(ListView1, 1);
  addButtons(*all);
  setTabOrder(ListView1, commandC);
  setTabOrder(commandC, commandT);
  resize(firstWidth, firstHeight);
  connect(ListView1, &ListView::itemClick, this, [this](ListItem* item) { take(*item); });
}

void ReferencePicker::onLoad() {
  ListView1->addColumn(u"名称"_s, firstWidth);
  ListView1->setFillingColumn(0, columnInset);
  RequestBuilder request(app().gWebServer, paths::loginRows);
  request.encoded(u"STABLE"_s, kind_.table).encoded(u"STRDATA"_s, kind_.fields);
  if (kind_.condition) request.encoded(u"STOTHER"_s, kind_.condition());
  (void)readPortal(request.url(), EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString key = html.GetRowItem() + u" ID"_s;
    ListView1->addItem(key, html.GetRowItem(), u"Shxi"_s);
    return true;
  });
  ListView1->setFocus();
}

void ReferencePicker::take(const ListItem& item) {
  idBox_->setText(item.key());
  nameBox_->setText(item.text());
  chosen(Val(item.key()));
}

void ReferencePicker::chosen(double /*id*/) {}

Choice ReferencePicker::choice() const {
  return {idBox_->text(), nameBox_->text()};
}

void ReferencePicker::clearChoice() {
  idBox_->setText({});
  nameBox_->setText({});
}

}  // namespace qinghe
