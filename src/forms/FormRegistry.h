#pragma once

#include <QPointer>
#include <QWidget>
#include <typeindex>
#include <utility>
#include <vector>

namespace qinghe {

class Form;

/// The default instances: at most one form of each class; and the forms that are unloaded and wait
/// for their destruction.
class FormRegistry {
 public:
  FormRegistry() = default;
  ~FormRegistry();
  FormRegistry(const FormRegistry&) = delete;
  FormRegistry& operator=(const FormRegistry&) = delete;

  Form* find(std::type_index type) const;
  void insert(std::type_index type, Form* form);
  /// Called by the form when it is unloaded.
  void remove(Form* form);
  /// All loaded default instances, in the order they were loaded.
  std::vector<Form*> loaded() const;

  /// Takes an unloaded form to destroy it as soon as no handler of it can be running any more.
  void discard(Form* form);
  /// Destroys, later, the discarded forms that nothing can be running in; called where an inner
  /// event loop has ended.
  void sweep();
  /// Destroys all forms at once, the last loaded first, without asking them.
  void clear();

 private:
  std::vector<std::pair<std::type_index, Form*>> forms_;
  std::vector<QPointer<QWidget>> discarded_;
};

}  // namespace qinghe
