#include "RequestLog.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <stdexcept>

namespace qinghe::portal_server {

namespace {

constexpr std::size_t mostGathered = 64 * 1024;
constexpr std::size_t longestPiece = 120;

// What a client sends must not be able to forge a line or to confuse a terminal.
void appendPlain(std::string& line, std::string_view text) {
  if (text.empty()) line += '-';
  for (const char c : text.substr(0, longestPiece)) line += c > ' ' && c < 0x7f ? c : '?';
}

}  // namespace

RequestLog::RequestLog(const std::string& path)
    : file_(path.empty() ? stdout : std::fopen(path.c_str(), "a")) {
  if (!file_) throw std::runtime_error("cannot write the log " + path);
}

void RequestLog::add(const Entry& entry) {
  beginLine();
  appendPlain(lines_, entry.address);
  lines_ += ' ';
  appendPlain(lines_, entry.page);
  lines_ += ' ';
  appendPlain(lines_, entry.table);
  lines_ += ' ' + std::to_string(entry.status) + ' ' + std::to_string(entry.bytes) + " bytes " +
            std::to_string(entry.time.count()) + " us";
  if (!entry.note.empty()) lines_.append(" ").append(entry.note);
  lines_ += '\n';
  if (lines_.size() > mostGathered) flush();
}

void RequestLog::note(std::string_view words) {
  beginLine();
  lines_.append(words).append("\n");
}

void RequestLog::flush() {
  if (lines_.empty()) return;
  // A log that cannot be written must not stop the portal.
  (void)std::fwrite(lines_.data(), 1, lines_.size(), file_.get());
  (void)std::fflush(file_.get());
  lines_.clear();
}

void RequestLog::beginLine() {
  const std::time_t now = std::time(nullptr);
  if (now != second_) {
    second_ = now;
    std::tm local{};
    localtime_r(&now, &local);
    std::array<char, 32> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%F %T ", &local);
    moment_.assign(text.data(), size);
  }
  lines_ += moment_;
}

}  // namespace qinghe::portal_server
