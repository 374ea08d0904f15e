#pragma once

#include <QList>
#include <QString>
#include <deque>
#include <functional>

#include "forms/Prompts.h"

namespace qinghe {

/// The prompt seat with nobody on it: answers as the test said beforehand and records what was
/// asked. A question that was not expected fails the test, and so does an answer left over.
class ScriptedPrompts : public Prompts {
 public:
  ~ScriptedPrompts() override;

  void expect(Answer answer);
  void expectFile(std::optional<QString> path);
  /// Called at each question before it is answered.
  std::function<void(const Message&)> onAsk;

  QList<Message> asked;
  QList<FileQuestion> filesAsked;
  QStringList texts() const;  ///< the texts of the boxes, in order

  Answer ask(QWidget* parent, const Message& message) override;
  std::optional<QString> openFile(QWidget* parent, const FileQuestion& question) override;
  std::optional<QString> saveFile(QWidget* parent, const FileQuestion& question) override;

 private:
  std::deque<Answer> answers_;
  std::deque<std::optional<QString>> files_;
};

}  // namespace qinghe
