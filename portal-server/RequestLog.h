#pragma once

#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace qinghe::portal_server {

/// One line a request, to a file or to the standard output. Lines are gathered for a moment;
/// `flush` writes them out. No value of a request is ever written, only page, table and outcome.
class RequestLog {
 public:
  struct Entry {
    std::string_view address;
    std::string_view page;
    std::string_view table;
    unsigned status = 0;
    std::size_t bytes = 0;
    std::chrono::microseconds time{};
    std::string_view note;
  };

  /// Appends to the file; an empty path means the standard output. Throws `std::runtime_error`.
  explicit RequestLog(const std::string& path);
  ~RequestLog() { flush(); }
  RequestLog(const RequestLog&) = delete;
  RequestLog& operator=(const RequestLog&) = delete;

  void add(const Entry& entry);
  void note(std::string_view words);
  void flush();

 private:
  struct Close {
    void operator()(std::FILE* file) const {
      if (file != stdout) std::fclose(file);
    }
  };

  void beginLine();

  std::unique_ptr<std::FILE, Close> file_;
  std::string lines_;
  std::time_t second_ = 0;
  std::string moment_;
};

}  // namespace qinghe::portal_server
