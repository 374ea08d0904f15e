#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qinghe::portal_server {

/// The parameters of a request or of a posted form, in the order in which they came.
///
/// Names compare without case, and of two parameters of one name the first counts. A piece
/// without "=" is what a bare "&" inside a value leaves behind and is dropped. Their number is
/// bounded far beyond what any page takes.
class Parameters {
 public:
  struct Parameter {
    std::string name;
    std::string value;  ///< unescaped code page bytes
  };

  Parameters() = default;
  /// Adds the pieces of "a=1&b=2".
  void add(std::string_view query);
  /// Adds one whose value stands as it is.
  void add(std::string_view name, std::string_view value);

  bool has(std::string_view name) const;
  /// Whether there were more than are kept.
  bool tooMany() const { return tooMany_; }
  /// The value as code page bytes; empty when the parameter is missing.
  std::string_view bytes(std::string_view name) const;
  /// The value as UTF-8 text; empty when the parameter is missing.
  std::string text(std::string_view name) const;
  const std::vector<Parameter>& all() const { return parameters_; }

 private:
  const Parameter* find(std::string_view name) const;
  bool isFull();

  std::vector<Parameter> parameters_;
  bool tooMany_ = false;
};

}  // namespace qinghe::portal_server
