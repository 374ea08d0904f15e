#include "content/views/frmHTTP_WEB.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "browser/WebBrowser.h"
#include "forms/TextBox.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstWidth = 900;
constexpr int firstHeight = 600;
constexpr int margin = 6;

/// What the address box holds once it is left.
QString completed(const QString& typed) {
  if (typed.isEmpty()) return typed;
  for (const auto scheme : {"http://"_L1, "https://"_L1, "ftp://"_L1})
    if (typed.startsWith(scheme, Qt::CaseInsensitive)) return typed;
  return u"http://"_s + typed;
}

}  // namespace

frmHTTP_WEB::frmHTTP_WEB()
    : Form(Kind::Child, u"frmHTTP_WEB"_s, u"查看企业网页"_s),
      txtInput(new TextBox(u"txtInput"_s, TextBox::Lines::One, this)),
      WebBrowser1(new WebBrowser(u"WebBrowser1"_s, this)) {
  layOut();
  connect(txtInput, &TextBox::gotFocus, txtInput, &TextBox::selectAll);
  connect(txtInput, &TextBox::lostFocus, this, &frmHTTP_WEB::completeInput);
  connect(qobject_cast<QLineEdit*>(txtInput->editor()), &QLineEdit::returnPressed, this,
          &frmHTTP_WEB::openInput);
  connect(WebBrowser1, &WebBrowser::reached, this, &frmHTTP_WEB::showReached);
}

void frmHTTP_WEB::layOut() {
  auto* caption = new QLabel(u"地址(&D)"_s, this);
  caption->setBuddy(txtInput->editor());
  txtInput->editor()->setAccessibleName(u"地址"_s);
  WebBrowser1->setAccessibleName(u"网页"_s);
  auto* line = new QHBoxLayout;
  line->setContentsMargins(margin, margin, margin, 0);
  line->addWidget(caption);
  line->addWidget(txtInput, 1);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(margin);
  rows->addLayout(line);
  rows->addWidget(WebBrowser1, 1);
  setTabOrder(txtInput->editor(), WebBrowser1);
  resize(firstWidth, firstHeight);
}

void frmHTTP_WEB::completeInput() {
  txtInput->setText(completed(txtInput->text()));
}

void frmHTTP_WEB::openInput() {
  if (txtInput->text().isEmpty()) return;
  completeInput();
  WebBrowser1->Navigate(txtInput->text());
}

void frmHTTP_WEB::showReached(const QString& address) {
  txtInput->setText(address);
  txtInput->selectAll();
}

}  // namespace qinghe
