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
  /// Keeps discarded forms for as long as it lives: while a handler lets the message loop run, the
  /// form that it belongs to may be unloaded, and must not be gone when the handler goes on.
  class Hold {
   public:
    explicit Hold(FormRegistry& registry) : registry_(registry) { ++registry_.holds_; }
    ~Hold() {
      if (--registry_.holds_ == 0) registry_.sweep();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    FormRegistry& registry_;
  };

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
  int holds_ = 0;
};

}  // namespace qinghe
