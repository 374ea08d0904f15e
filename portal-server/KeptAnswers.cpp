#include "KeptAnswers.h"

#include <string_view>
#include <utility>

namespace qinghe::portal_server {

namespace {

// What an entry takes beyond its texts, with room to spare.
constexpr std::size_t entryBytes = 512;

// A value may hold any byte, so only its length tells where it ends.
void appendPiece(std::string& key, std::string_view piece) {
  key.append(std::to_string(piece.size())).append(":").append(piece);
}

// Everything that an answer for all may depend on.
std::string keyOf(const PortalRequest& request) {
  std::string key;
  key.reserve(512);
  appendPiece(key, request.path);
  appendPiece(key, request.host);
  for (const Parameters::Parameter& parameter : request.parameters.all()) {
    appendPiece(key, parameter.name);
    appendPiece(key, parameter.value);
  }
  return key;
}

}  // namespace

PortalAnswer KeptAnswers::answered(const PortalRequest& request,
                                   const std::function<PortalAnswer()>& make) {
  if (request.parameters.tooMany()) return make();
  std::string key = keyOf(request);
  const auto known = answers_.find(key);
  if (known != answers_.end() && isCurrent()) return known->second;
  // Taken before the rows are read: with a commit meanwhile, that version is a past one for ever.
  const std::uint32_t version = store_.versionRead();
  PortalAnswer answer = make();
  if (answer.forAll) {
    if (version_ != version) forget();
    version_ = version;
    keep(std::move(key), answer);
  }
  return answer;
}

bool KeptAnswers::isCurrent() {
  if (store_.versionNow() == version_) return true;
  forget();
  return false;
}

void KeptAnswers::keep(std::string key, const PortalAnswer& answer) {
  const std::size_t bytes = key.size() + answer.body.size() + entryBytes;
  if (bytes > largest) return;
  if (bytes_ + bytes > mostBytes) forget();
  if (answers_.try_emplace(std::move(key), answer).second) bytes_ += bytes;
}

void KeptAnswers::forget() {
  answers_.clear();
  bytes_ = 0;
}

}  // namespace qinghe::portal_server
