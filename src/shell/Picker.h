#pragma once

#include <QPushButton>

#include "forms/Form.h"
#include "forms/TextBox.h"

class QVBoxLayout;

namespace qinghe {

/// What a picker gives to its opener. An empty `id` says that it was cancelled.
struct Choice {
  QString id;    ///< the row's or node's key, suffix and all: "12 ID"; `Val` gives the number
  QString name;  ///< its text
};

/// A modal form that hides when it is done, so that its opener can read its choice. It stays as it
/// was left until it is unloaded. Closing it by its box or with Esc is a cancel, and unloads it.
///
/// Openers write
///
///   const Choice choice = defaultInstance<frmGetLEBI>().choose();
class Picker : public Form {
  Q_OBJECT

 public:
  /// Shows it as every screen does, with `showModalWaiting`, and reads the choice: an empty one
  /// when it was cancelled or has unloaded itself.
  Choice choose();
  /// The choice as it stands.
  virtual Choice choice() const = 0;

  QPushButton* commandC;  ///< accept
  QPushButton* commandT;  ///< cancel

 protected:
  Picker(const QString& name, const QString& caption);

  /// A text box that carries a part of the choice and is never seen.
  TextBox* hiddenBox(const QString& name);
  /// The row of the two buttons, for the end of the form's layout.
  void addButtons(QVBoxLayout& layout);

  /// `commandC` was pressed; hides the form.
  virtual void accept();
  /// Empties the choice; the form was cancelled.
  virtual void clearChoice() = 0;
  void onUnload() override;

 private:
  void cancel();
};

}  // namespace qinghe
