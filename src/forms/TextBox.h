#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class QFocusEvent;
class QLineEdit;
class QPlainTextEdit;

namespace qinghe {

/// A text box of one or many lines. Its text has CR LF for a line break; many-line boxes take CR LF
/// and LF and give CR LF.
///
/// The focus and the keys belong to `editor()`, the line edit or text edit inside, whose
/// `objectName` is the box's with ".editor" behind it; the box hands the focus on to it. A label
/// takes `editor()` as its buddy, which also names it for screen readers, and `setTabOrder` takes
/// it, too. Tab moves on to the next control in boxes of many lines, too.
class TextBox : public QWidget {
  Q_OBJECT

 public:
  enum class Lines { One, Many };

  explicit TextBox(const QString& name, Lines lines = Lines::One, QWidget* parent = nullptr);

  QString text() const;
  /// Code and user changes are alike: `changed` comes whenever the text differs.
  void setText(const QString& text);
  /// A read-only box has the colour of the form behind it, as a disabled one has.
  void setReadOnly(bool readOnly);
  bool isReadOnly() const;
  void setPasswordMode();
  void selectAll();

  QWidget* editor() const;

  /// To the editor. No focus proxy: Tab would come to the box by itself as well, wherever it stood
  /// when the editor was given its place in the order, and go round in a part of the form.
  void setFocus(Qt::FocusReason reason = Qt::OtherFocusReason);

  /// A value carried along, such as the id behind a name. Setting it is no change.
  QString Tag;

  /// Asked when the user moves the focus to another control of the same form that takes it; false
  /// keeps the focus here, and the press that would have moved it does nothing else. Not asked at a
  /// switch of programs, for a message box, or at closing.
  std::function<bool()> onValidate;

 signals:
  void changed();
  /// The user or code moved the focus in or out; a switch of windows is neither.
  void gotFocus();
  void lostFocus();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  void noteChange();
  void colour();
  bool mustValidate(Qt::FocusReason reason) const;
  bool refusesToLeave(Qt::FocusReason reason);

  QLineEdit* line_ = nullptr;
  QPlainTextEdit* memo_ = nullptr;
  QString last_;
  bool validating_ = false;
};

}  // namespace qinghe
