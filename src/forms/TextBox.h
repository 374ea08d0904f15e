#pragma once

#include <QString>
#include <QWidget>
#include <functional>

class QLineEdit;
class QPlainTextEdit;

namespace qinghe {

/// A text box of one or many lines. Its text has CR LF for a line break; many-line boxes take CR LF
/// and LF and give CR LF.
///
/// The focus and the keys belong to `editor()`, the line edit or text edit inside; `objectName` is
/// the box's, and the box is the editor's focus proxy owner.
class TextBox : public QWidget {
  Q_OBJECT

 public:
  enum class Lines { One, Many };

  explicit TextBox(const QString& name, Lines lines = Lines::One, QWidget* parent = nullptr);

  QString text() const;
  /// Code and user changes are alike: `changed` comes whenever the text differs.
  void setText(const QString& text);
  void setReadOnly(bool readOnly);
  void setPasswordMode();
  void selectAll();

  QWidget* editor() const;

  /// A value carried along, such as the id behind a name. Setting it is no change.
  QString Tag;

  /// Asked when the focus moves to another control of the same form that takes it; false keeps the
  /// focus here. Not asked at a switch of programs, for a message box, or at closing.
  std::function<bool()> onValidate;

 signals:
  void changed();
  void gotFocus();
  void lostFocus();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void noteChange();

  QLineEdit* line_ = nullptr;
  QPlainTextEdit* memo_ = nullptr;
  QString last_;
  bool validating_ = false;
};

}  // namespace qinghe
