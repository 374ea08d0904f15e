#pragma once

#include <QString>
#include <QWidget>
#include <optional>

namespace qinghe {

enum class Answer { Ok, Yes, No, Cancel };
enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Mark { None, Critical, Question, Exclamation };

/// A message box; its text is plain text, always.
struct Message {
  QString text;
  QString title = {};  ///< the product's title when empty
  Buttons buttons = Buttons::Ok;
  Mark mark = Mark::None;
};

struct FileQuestion {
  QString title;
  QString directory;
  QString fileName;     ///< preset name
  QString filter = {};  ///< as Qt's dialog takes it: "Access (*.mdb)"
  QString suffix = {};  ///< appended to a saved name without one
};

/// The one seat of message boxes and file dialogs, so that tests can sit on it.
class Prompts {
 public:
  virtual ~Prompts() = default;
  virtual Answer ask(QWidget* parent, const Message& message) = 0;
  virtual std::optional<QString> openFile(QWidget* parent, const FileQuestion& question) = 0;
  virtual std::optional<QString> saveFile(QWidget* parent, const FileQuestion& question) = 0;
};

/// The real boxes and dialogs.
class DesktopPrompts : public Prompts {
 public:
  Answer ask(QWidget* parent, const Message& message) override;
  std::optional<QString> openFile(QWidget* parent, const FileQuestion& question) override;
  std::optional<QString> saveFile(QWidget* parent, const FileQuestion& question) override;
};

/// The one in use.
Prompts& prompts();

}  // namespace qinghe
