#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

/// Lets the process be an ordinary user where tests run as root, whom no file mode stops.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t nobody = 65534;
    if (before_ == 0 && seteuid(nobody) != 0) ADD_FAILURE() << "cannot leave root";
  }
  ~OrdinaryUser() {
    if (before_ == 0 && seteuid(before_) != 0) ADD_FAILURE() << "cannot return to root";
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  uid_t before_ = geteuid();
};

/// No file may grow beyond `bytes` meanwhile, as on a full disk.
class SizeLimit {
 public:
  explicit SizeLimit(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &before_);
    handler_ = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SizeLimit(const SizeLimit&) = delete;
  SizeLimit& operator=(const SizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*handler_)(int) = nullptr;
};
