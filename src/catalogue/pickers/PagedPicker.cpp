#include "catalogue/pickers/PagedPicker.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "forms/Icons.h"
#include "forms/Prompts.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "shell/PortalMethod.h"
#include "shell/find_row.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int columnInset = 60 / 15;
constexpr int firstWidth = 380;
constexpr int firstHeight = 420;

}  // namespace

PagedPicker::PagedPicker(const PagedPickerKind& kind)
    : Picker(kind.form, kind.caption),
      ListView1(new ListView(u"ListView1"_s, this)),
      Text1(new TextBox(u"Text1"_s, TextBox::Lines::One, this)),
      command1(new QPushButton(u"搜索(&S)"_s, this)),
      Command2(new QPushButton(this)),
      kind_(kind),
      idBox_(hiddenBox(kind.idBox)),
      nameBox_(hiddenBox(kind.nameBox)) {
  ListView1->setAccessibleName(u"名称"_s);
  ListView1->setClickKeys({Qt::Key_Space});
  Text1->editor()->setAccessibleName(u"搜索"_s);
  command1->setObjectName(u"command1"_s);
  Command2->setObjectName(u"Command2"_s);
  Command2->setIcon(iconFor(u"Next"_s));
  Command2->setAccessibleName(u"下一页"_s);
  Command2->setToolTip(u"下一页"_s);
  layOut();
  connectControls();
}

void PagedPicker::layOut() {
  auto* searching = new QHBoxLayout;
  searching->addWidget(Text1, 1);
  searching->addWidget(command1);
  searching->addWidget(Command2);
  auto* all = new QVBoxLayout(this);
  all->addLayout(searching);
  all->addWidget(ListView1, 1);
  addButtons(*all);
  setTabOrder(Text1->editor(), command1);
  setTabOrder(command1, Command2);
  setTabOrder(Command2, ListView1);
  setTabOrder(ListView1, commandC);
  setTabOrder(commandC, commandT);
  resize(firstWidth, firstHeight);
}

void PagedPicker::connectControls() {
  connect(ListView1, &ListView::mouseDown, this,
          [this](Qt::MouseButton /*button*/, const QPoint& position) {
            remembered_ = ListView1->itemUnder(position);
          });
  connect(ListView1, &ListView::itemClick, this, [this](ListItem* item) { remembered_ = item; });
  connect(command1, &QPushButton::clicked, this, &PagedPicker::search);
  connect(Command2, &QPushButton::clicked, this, &PagedPicker::nextPage);
  Text1->editor()->installEventFilter(this);
}

bool PagedPicker::eventFilter(QObject* watched, QEvent* event) {
  if (watched != Text1->editor() || event->type() != QEvent::KeyPress) {
    return Picker::eventFilter(watched, event);
  }
  // Enter searches while one types what to search for.
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
  command1->click();
  return true;
}

void PagedPicker::onLoad() {
  pages_.setPageSize(app().gPageSize);
  ListView1->addColumn(u"名称"_s, firstWidth);
  ListView1->setFillingColumn(0, columnInset);
  CountPages();
  pages_.start();
  LoadPage();
}

bool PagedPicker::CountPages() {
  const QString url = RequestBuilder(app().gWebServer, kind_.countPath)
                          .encoded(u"STABLE"_s, kind_.table)
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .encoded(u"STOTHER"_s, kind_.condition())
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    pages_.takeCount(html.GetRowItem());
    return true;
  });
}

bool PagedPicker::LoadPage() {
  const QString url = RequestBuilder(app().gWebServer, kind_.pagePath)
                          .encoded(u"STABLE"_s, kind_.table)
                          .encoded(u"STRDATA"_s, kind_.fields)
                          .encoded(u"STPAGE"_s, textOf(pages_.pageNo()))
                          .encoded(u"STPAGESIZE"_s, textOf(pages_.pageSize()))
                          .encoded(u"STOTHER"_s, kind_.condition())
                          .url();
  return readPortal(url, EmptyAnswer::IsNoRows, [this](GetHtml& html) {
    const QString id = html.GetRowItem();
    ListItem* item = ListView1->addItem(id + u" ID"_s, html.GetRowItem(), u"Shxi"_s);
    item->setTag(textOf(pages_.pageNo()));
    remembered_ = item;
    return true;
  });
}

void PagedPicker::nextPage() {
  if (!pages_.next()) {
    Command2->hide();
    return;
  }
  Command2->setIcon({});
  Command2->setText(pages_.percentage());
  LoadPage();
}

void PagedPicker::search() {
  const QString text = Text1->text();
  if (text.isEmpty()) return;
  const ListItem* selected = ListView1->selectedItem();
  const auto textOfRow = [this](int row) { return ListView1->itemAt(row)->text(); };
  const int found = findRow(ListView1->itemCount(), selected == nullptr ? -1 : selected->row(),
                            textOfRow, Trim(text), Qt::CaseSensitive);
  if (found >= 0) {
    remembered_ = ListView1->itemAt(found);
  } else {
    prompts().ask(this, {u"没有匹配的条目"_s});
  }
  if (remembered_ == nullptr) return;
  ListView1->setSelectedItem(remembered_);
  ListView1->setFocus();
}

Choice PagedPicker::choice() const {
  return {idBox_->text(), nameBox_->text()};
}

void PagedPicker::accept() {
  // With nothing remembered there is nothing to accept, and an empty choice would be a cancel.
  if (remembered_ == nullptr) return;
  idBox_->setText(remembered_->key());
  nameBox_->setText(remembered_->text());
  Picker::accept();
}

void PagedPicker::clearChoice() {
  idBox_->setText({});
  nameBox_->setText({});
}

}  // namespace qinghe
