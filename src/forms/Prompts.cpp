#include "forms/Prompts.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include "forms/FormsState.h"

using namespace Qt::StringLiterals;

namespace qinghe {

namespace {

/// A text from outside may be of any length; a box that is higher than the screen has no buttons.
constexpr qsizetype longestText = 2000;

QMessageBox::Icon iconOf(Mark mark) {
  switch (mark) {
    case Mark::Critical:
      return QMessageBox::Critical;
    case Mark::Question:
      return QMessageBox::Question;
    case Mark::Exclamation:
      return QMessageBox::Warning;
    case Mark::None:
      break;
  }
  return QMessageBox::NoIcon;
}

struct Choice {
  QString caption;
  Answer answer;
  QMessageBox::ButtonRole role;
};

/// The first is the default one, the last is what Esc means.
QList<Choice> choicesOf(Buttons buttons) {
  const Choice ok{u"确定"_s, Answer::Ok, QMessageBox::AcceptRole};
  const Choice yes{u"是(&Y)"_s, Answer::Yes, QMessageBox::YesRole};
  const Choice no{u"否(&N)"_s, Answer::No, QMessageBox::NoRole};
  const Choice cancel{u"取消"_s, Answer::Cancel, QMessageBox::RejectRole};
  switch (buttons) {
    case Buttons::YesNo:
      return {yes, no};
    case Buttons::YesNoCancel:
      return {yes, no, cancel};
    case Buttons::Ok:
      break;
  }
  return {ok};
}

/// Runs a dialog that may be destroyed together with its parent while it is open.
template <class Dialog>
class Opened {
 public:
  explicit Opened(QWidget* parent) : dialog_(new Dialog(parent)) {}
  ~Opened() {
    delete dialog_;
    formsState().registry.sweep();
  }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;
  Dialog* operator->() const { return dialog_; }
  bool isGone() const { return dialog_ == nullptr; }

 private:
  QPointer<Dialog> dialog_;
};

void prepare(QFileDialog& dialog, const FileQuestion& question, const QString& accept) {
  dialog.setWindowTitle(question.title.isEmpty() ? formsState().productTitle : question.title);
  if (!question.directory.isEmpty()) dialog.setDirectory(question.directory);
  if (!question.filter.isEmpty()) dialog.setNameFilter(question.filter);
  if (!question.suffix.isEmpty()) dialog.setDefaultSuffix(question.suffix);
  if (!question.fileName.isEmpty()) dialog.selectFile(question.fileName);
  dialog.setLabelText(QFileDialog::LookIn, u"查找范围："_s);
  dialog.setLabelText(QFileDialog::FileName, u"文件名："_s);
  dialog.setLabelText(QFileDialog::FileType, u"文件类型："_s);
  dialog.setLabelText(QFileDialog::Accept, accept);
  dialog.setLabelText(QFileDialog::Reject, u"取消"_s);
}

/// The one file that was chosen, if one was.
std::optional<QString> chosenIn(const Opened<QFileDialog>& dialog, int result) {
  if (dialog.isGone() || result != QDialog::Accepted) return std::nullopt;
  const auto files = dialog->selectedFiles();
  if (files.isEmpty()) return std::nullopt;
  return files.first();
}

}  // namespace

Answer DesktopPrompts::ask(QWidget* parent, const Message& message) {
  const auto choices = choicesOf(message.buttons);
  const Opened<QMessageBox> box(parent);
  box->setTextFormat(Qt::PlainText);
  box->setWindowTitle(message.title.isEmpty() ? formsState().productTitle : message.title);
  box->setText(message.text.size() <= longestText ? message.text
                                                  : message.text.left(longestText) + u"…"_s);
  box->setIcon(iconOf(message.mark));
  QList<QAbstractButton*> buttons;
  for (const auto& choice : choices) buttons << box->addButton(choice.caption, choice.role);
  box->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
  box->setEscapeButton(buttons.last());
  box->exec();
  const auto pressed = box.isGone() ? -1 : buttons.indexOf(box->clickedButton());
  return pressed < 0 ? choices.last().answer : choices[pressed].answer;
}

std::optional<QString> DesktopPrompts::openFile(QWidget* parent, const FileQuestion& question) {
  const Opened<QFileDialog> dialog(parent);
  dialog->setAcceptMode(QFileDialog::AcceptOpen);
  dialog->setFileMode(QFileDialog::ExistingFile);
  prepare(*dialog.operator->(), question, u"打开"_s);
  return chosenIn(dialog, dialog->exec());
}

std::optional<QString> DesktopPrompts::saveFile(QWidget* parent, const FileQuestion& question) {
  const Opened<QFileDialog> dialog(parent);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  prepare(*dialog.operator->(), question, u"保存"_s);
  return chosenIn(dialog, dialog->exec());
}

Prompts& prompts() {
  return *formsState().prompts;
}

}  // namespace qinghe
