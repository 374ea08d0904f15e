#include "orders/chooser/frmGetXIMUX.h"

#include <QLabel>
#include <QVBoxLayout>

#include "catalogue/pickers/attribute_text.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int introductionHeight = 110;

DetailKind goods() {
  return {
      .form = u"frmGetXIMUX"_s,
      .caption = u"商品详细信息"_s,
      .nameWidth = 1600,
      .path = paths::productRows,
      .table = u"XIMU"_s,
      .fields = u"ximu,ximu_bh,ximu_no,lebi,gesh,jigex,zhko,jish,shxi,"_s,
      .names = {u"名称"_s, u"编号"_s, u"编码"_s, u"类别"_s, u"包箱"_s, u"价格"_s, u"折扣"_s},
  };
}

}  // namespace

frmGetXIMUX::frmGetXIMUX()
    : DetailForm(goods()),
      Text1(new TextBox(u"Text1"_s, TextBox::Lines::One, this)),
      Text2(new TextBox(u"Text2"_s, TextBox::Lines::Many, this)) {
  // Its pieces stand in the list, each at its attribute.
  Text1->hide();
  auto* label = new QLabel(u"介绍"_s, this);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(Text2->editor());
  Text2->editor()->setAccessibleName(label->text());
  Text2->setReadOnly(true);
  Text2->setMinimumHeight(introductionHeight);
  belowList().addWidget(label);
  belowList().addWidget(Text2);
  setTabOrder(ListView1, Text2->editor());
  setTabOrder(Text2->editor(), commandT);
}

qint32 frmGetXIMUX::recordId() const {
  return app().gGoodsId;
}

void frmGetXIMUX::onLoad() {
  DetailForm::onLoad();
  addAttributes();
  showAttributeValues();
}

void frmGetXIMUX::takeRest(GetHtml& html) {
  Text2->setText(html.GetRowItem());
  Text1->setText(html.GetRowItem());
}

bool frmGetXIMUX::addAttributes() {
  const QString url = RequestBuilder(app().gWebServer, paths::productRows)
                          .encoded(u"STABLE"_s, u"SHXI"_s)
                          .encoded(u"STRDATA"_s, u"id,shxi,"_s)
                          .encoded(u"STOTHER"_s, u"HAYE_ID="_s + textOf(app().gHayeId))
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString id = html.GetRowItem();
    ListView1->addItem(id + u" ID"_s, Trim(html.GetRowItem()), rowIcon());
    return true;
  });
}

void frmGetXIMUX::showAttributeValues() {
  int row = fixedRows();
  for (const QString& value : attributeValues(Text1->text())) {
    ListItem* attribute = ListView1->itemAt(row++);
    if (attribute == nullptr) return;  // values of attributes that the industry no longer has
    attribute->setSubItem(1, value);
  }
}

}  // namespace qinghe
