#pragma once

#include <QDate>
#include <QWidget>
#include <optional>

class QCheckBox;
class QDateEdit;

namespace qinghe {

/// A date that can be none: without the check mark there is no value, and the date is kept for when
/// the mark comes back. The check box's `objectName` is the picker's with ".check" behind it, the
/// date's with ".editor".
class DatePicker : public QWidget {
  Q_OBJECT

 public:
  explicit DatePicker(const QString& name, QWidget* parent = nullptr);

  std::optional<QDate> value() const;
  void setValue(const std::optional<QDate>& value);  ///< code; raises no `changed`

  QCheckBox* check() const { return check_; }
  QDateEdit* editor() const { return editor_; }

  /// The picker's name for screen readers.
  void setLabel(const QString& label);

 signals:
  void changed();  ///< by the user

 private:
  QCheckBox* check_;
  QDateEdit* editor_;
};

}  // namespace qinghe
