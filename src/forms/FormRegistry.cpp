#include "forms/FormRegistry.h"

#include <QThread>
#include <algorithm>

#include "forms/Form.h"

namespace qinghe {

FormRegistry::~FormRegistry() {
  clear();
}

Form* FormRegistry::find(std::type_index type) const {
  const auto found = std::find_if(forms_.begin(), forms_.end(),
                                  [type](const auto& entry) { return entry.first == type; });
  return found == forms_.end() ? nullptr : found->second;
}

void FormRegistry::insert(std::type_index type, Form* form) {
  forms_.emplace_back(type, form);
}

void FormRegistry::remove(Form* form) {
  std::erase_if(forms_, [form](const auto& entry) { return entry.second == form; });
}

std::vector<Form*> FormRegistry::loaded() const {
  std::vector<Form*> result;
  result.reserve(forms_.size());
  for (const auto& entry : forms_) result.push_back(entry.second);
  return result;
}

void FormRegistry::discard(Form* form) {
  discarded_.emplace_back(form);
  sweep();
}

void FormRegistry::sweep() {
  // In an inner event loop a handler of the form may stand further out on the stack, and a deferred
  // deletion would not wait for that one.
  if (holds_ > 0 || QThread::currentThread()->loopLevel() > 1) return;
  // A form is kept here until it is gone: what it holds must not outlive the state it belongs to.
  std::erase_if(discarded_, [](const QPointer<QWidget>& widget) { return widget.isNull(); });
  for (const auto& widget : discarded_) {
    auto* form = qobject_cast<Form*>(widget);
    if (form != nullptr && !form->isBusy()) form->deleteLater();
  }
}

void FormRegistry::clear() {
  while (!forms_.empty()) {
    auto* form = forms_.back().second;
    forms_.pop_back();
    delete form;
  }
  for (const auto& form : std::exchange(discarded_, {})) delete form;
}

}  // namespace qinghe
