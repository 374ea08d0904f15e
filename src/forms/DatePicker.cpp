#include "forms/DatePicker.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace qinghe {

DatePicker::DatePicker(const QString& name, QWidget* parent)
    : QWidget(parent), check_(new QCheckBox(this)), editor_(new QDateEdit(this)) {
  setObjectName(name);
  check_->setObjectName(name + u".check"_s);
  check_->setChecked(true);
  editor_->setObjectName(name + u".editor"_s);
  editor_->setCalendarPopup(true);
  editor_->setDisplayFormat(u"yyyy-M-d"_s);
  editor_->setDate(QDate::currentDate());
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(check_);
  row->addWidget(editor_, 1);
  setFocusProxy(check_);

  connect(check_, &QCheckBox::toggled, editor_, &QWidget::setEnabled);
  connect(check_, &QCheckBox::toggled, this, &DatePicker::changed);
  connect(editor_, &QDateEdit::dateChanged, this, &DatePicker::changed);
}

std::optional<QDate> DatePicker::value() const {
  if (!check_->isChecked()) return std::nullopt;
  return editor_->date();
}

void DatePicker::setValue(const std::optional<QDate>& value) {
  const QSignalBlocker quiet(this);
  check_->setChecked(value.has_value());
  if (value) editor_->setDate(*value);
}

void DatePicker::setLabel(const QString& label) {
  check_->setAccessibleName(label);
  editor_->setAccessibleName(label);
}

}  // namespace qinghe
