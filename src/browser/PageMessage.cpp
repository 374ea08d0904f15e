#include "browser/PageMessage.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr int shownOfAddress = 200;

QLabel* label(const QString& name, QWidget* parent) {
  auto* made = new QLabel(parent);
  made->setObjectName(name);
  made->setTextFormat(Qt::PlainText);
  made->setAlignment(Qt::AlignCenter);
  made->setWordWrap(true);
  return made;
}

QPushButton* button(const QString& name, const QString& caption, QWidget* parent) {
  auto* made = new QPushButton(caption, parent);
  made->setObjectName(name);
  return made;
}

}  // namespace

PageMessage::PageMessage(QWidget* parent)
    : QWidget(parent),
      words_(label(u"pageWords"_s, this)),
      detail_(label(u"pageDetail"_s, this)),
      where_(label(u"pageAddress"_s, this)),
      again_(button(u"pageRetry"_s, u"重新打开(&R)"_s, this)),
      elsewhere_(button(u"pageElsewhere"_s, u"用系统浏览器打开(&O)"_s, this)) {
  QFont large = words_->font();
  large.setPointSizeF(large.pointSizeF() * 1.3);
  words_->setFont(large);
  where_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(again_);
  buttons->addWidget(elsewhere_);
  buttons->addStretch();
  auto* rows = new QVBoxLayout(this);
  rows->setSpacing(12);
  rows->addStretch();
  rows->addWidget(words_);
  rows->addWidget(detail_);
  rows->addWidget(where_);
  rows->addLayout(buttons);
  rows->addStretch();
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  connect(again_, &QPushButton::clicked, this, &PageMessage::retry);
  connect(elsewhere_, &QPushButton::clicked, this, [this] { QDesktopServices::openUrl(address_); });
}

void PageMessage::say(const QString& words, const QString& detail, const QUrl& address,
                      Offer offer) {
  address_ = address;
  words_->setText(words);
  detail_->setText(detail);
  detail_->setVisible(!detail.isEmpty());
  QString shown = address.toString();
  if (shown.size() > shownOfAddress) shown = shown.first(shownOfAddress) + u'…';
  where_->setText(shown);
  again_->setVisible(offer == Offer::Both);
  elsewhere_->setVisible(offer != Offer::Nothing);
}

}  // namespace qinghe
