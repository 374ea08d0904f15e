#include "support/ScriptedPrompts.h"

#include <gtest/gtest.h>

namespace qinghe {

namespace {

bool fits(Answer answer, Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return answer == Answer::Ok;
    case Buttons::YesNo:
      return answer == Answer::Yes || answer == Answer::No;
    case Buttons::YesNoCancel:
      return answer != Answer::Ok;
  }
  return false;
}

/// What the Esc key would answer.
Answer escape(Buttons buttons) {
  if (buttons == Buttons::Ok) return Answer::Ok;
  return buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
}

}  // namespace

ScriptedPrompts::~ScriptedPrompts() {
  if (!answers_.empty()) ADD_FAILURE() << answers_.size() << " expected message box(es) never came";
  if (!files_.empty()) ADD_FAILURE() << files_.size() << " expected file dialog(s) never came";
}

void ScriptedPrompts::expect(Answer answer) {
  answers_.push_back(answer);
}

void ScriptedPrompts::expectFile(std::optional<QString> path) {
  files_.push_back(std::move(path));
}

QStringList ScriptedPrompts::texts() const {
  QStringList result;
  for (const auto& message : asked) result << message.text;
  return result;
}

Answer ScriptedPrompts::ask(QWidget* /*parent*/, const Message& message) {
  asked << message;
  if (onAsk) onAsk(message);
  if (answers_.empty()) {
    ADD_FAILURE() << "unexpected message box: " << message.text.toStdString();
    return escape(message.buttons);
  }
  const auto answer = answers_.front();
  answers_.pop_front();
  if (!fits(answer, message.buttons)) {
    ADD_FAILURE() << "no button for the expected answer in: " << message.text.toStdString();
    return escape(message.buttons);
  }
  return answer;
}

std::optional<QString> ScriptedPrompts::openFile(QWidget* /*parent*/,
                                                 const FileQuestion& question) {
  filesAsked << question;
  if (files_.empty()) {
    ADD_FAILURE() << "unexpected file dialog: " << question.title.toStdString();
    return std::nullopt;
  }
  auto path = files_.front();
  files_.pop_front();
  return path;
}

std::optional<QString> ScriptedPrompts::saveFile(QWidget* parent, const FileQuestion& question) {
  return openFile(parent, question);
}

}  // namespace qinghe
