#include "forms/TextBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointer>
#include <QVBoxLayout>

#include "forms/Form.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

/// The document's own text with CR LF for its breaks. `toPlainText` would turn no-break blanks into
/// blanks.
QString textOf(const QPlainTextEdit& memo) {
  auto text = memo.document()->toRawText();
  text.replace(QChar::LineSeparator, u"\r\n"_s);
  text.replace(QChar::ParagraphSeparator, u"\r\n"_s);
  return text;
}

QString withLineFeeds(QString text) {
  text.replace(u"\r\n"_s, u"\n"_s);
  text.replace(u'\r', u'\n');
  return text;
}

const QWidget* screenOf(const QWidget* widget) {
  while (!widget->isWindow() && qobject_cast<const Form*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return widget;
}

bool isSwitchOfWindows(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

/// Eats the mouse press that is on its way to the control which was refused the focus.
class PressEater : public QObject {
 public:
  explicit PressEater(QObject* parent) : QObject(parent) {
    qApp->installEventFilter(this);
    // The press follows at once or not at all.
    QMetaObject::invokeMethod(
        this,
        [this] {
          qApp->removeEventFilter(this);
          deleteLater();
        },
        Qt::QueuedConnection);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!press || !watched->isWidgetType()) return false;
    qApp->removeEventFilter(this);
    event->accept();
    return true;
  }
};

}  // namespace

TextBox::TextBox(const QString& name, Lines lines, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  auto* box = new QVBoxLayout(this);
  box->setContentsMargins(0, 0, 0, 0);
  if (lines == Lines::One) {
    line_ = new QLineEdit(this);
    line_->setMaxLength(1 << 20);  // the default cuts off what a record may hold
    connect(line_, &QLineEdit::textChanged, this, &TextBox::noteChange);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  } else {
    memo_ = new QPlainTextEdit(this);
    memo_->setTabChangesFocus(true);
    connect(memo_, &QPlainTextEdit::textChanged, this, &TextBox::noteChange);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }
  box->addWidget(editor());
  editor()->setObjectName(name + u".editor"_s);
  editor()->installEventFilter(this);
  colour();
}

QWidget* TextBox::editor() const {
  return line_ != nullptr ? static_cast<QWidget*>(line_) : static_cast<QWidget*>(memo_);
}

void TextBox::setFocus(Qt::FocusReason reason) {
  editor()->setFocus(reason);
}

void TextBox::focusInEvent(QFocusEvent* event) {
  editor()->setFocus(event->reason());
}

QString TextBox::text() const {
  return line_ != nullptr ? line_->text() : textOf(*memo_);
}

void TextBox::setText(const QString& text) {
  if (line_ != nullptr) {
    line_->setText(text);
    line_->setCursorPosition(0);  // a text longer than the box shows its beginning
    return;
  }
  const auto wanted = withLineFeeds(text);
  if (wanted != withLineFeeds(last_)) memo_->setPlainText(wanted);
}

void TextBox::setReadOnly(bool readOnly) {
  if (line_ != nullptr) {
    line_->setReadOnly(readOnly);
  } else {
    memo_->setReadOnly(readOnly);
  }
  colour();
}

void TextBox::colour() {
  auto colours = palette();
  // Dark themes leave the hint in a box black.
  QColor hint = colours.color(QPalette::Text);
  hint.setAlphaF(0.6F);
  colours.setColor(QPalette::PlaceholderText, hint);
  const QColor behind = colours.color(QPalette::Window);
  colours.setColor(QPalette::Disabled, QPalette::Base, behind);
  if (isReadOnly()) colours.setColor(QPalette::Base, behind);
  editor()->setPalette(colours);
}

void TextBox::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) colour();
  QWidget::changeEvent(event);
}

bool TextBox::isReadOnly() const {
  return line_ != nullptr ? line_->isReadOnly() : memo_->isReadOnly();
}

void TextBox::setPasswordMode() {
  if (line_ != nullptr) line_->setEchoMode(QLineEdit::Password);
}

void TextBox::selectAll() {
  if (line_ != nullptr) {
    line_->selectAll();
  } else {
    memo_->selectAll();
  }
}

void TextBox::noteChange() {
  auto now = text();
  if (now == last_) return;
  last_ = std::move(now);
  emit changed();
}

bool TextBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched != editor()) return QWidget::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (refusesToLeave(reason)) return true;
    if (!isSwitchOfWindows(reason) && !validating_) emit lostFocus();
  } else if (event->type() == QEvent::FocusIn) {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (!isSwitchOfWindows(reason) && !validating_) emit gotFocus();
  }
  return QWidget::eventFilter(watched, event);
}

bool TextBox::mustValidate(Qt::FocusReason reason) const {
  const bool byUser = reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
                      reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
  if (!onValidate || validating_ || !byUser || !isVisible() || !isEnabled()) return false;
  const auto* target = QApplication::focusWidget();
  if (target == nullptr || target == editor()) return false;
  const auto* screen = screenOf(this);
  if (screenOf(target) != screen) return false;
  const auto* form = qobject_cast<const Form*>(screen);
  return form == nullptr || !form->isLeaving();
}

bool TextBox::refusesToLeave(Qt::FocusReason reason) {
  if (!mustValidate(reason)) return false;
  const QPointer<TextBox> self(this);
  validating_ = true;
  const bool accepted = onValidate();
  if (self == nullptr) return true;
  if (!accepted) {
    editor()->setFocus(Qt::OtherFocusReason);
    if (reason == Qt::MouseFocusReason) new PressEater(this);
  }
  validating_ = false;
  return !accepted;
}

}  // namespace qinghe
