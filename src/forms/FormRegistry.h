#pragma once

#include <functional>
#include <map>
#include <typeindex>
#include <vector>

namespace qinghe {

class Form;

/// The default instances: at most one form of each class.
class FormRegistry {
 public:
  Form* find(std::type_index type) const;
  void insert(std::type_index type, Form* form);
  /// Called by the form when it is unloaded.
  void remove(Form* form);
  /// All loaded default instances, in the order they were loaded.
  std::vector<Form*> loaded() const;

 private:
  std::vector<std::pair<std::type_index, Form*>> forms_;
};

}  // namespace qinghe
