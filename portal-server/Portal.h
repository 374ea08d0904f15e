#pragma once

#include <optional>
#include <string>
#include <vector>

#include "HouseRules.h"
#include "KeptAnswers.h"
#include "PortalRequest.h"
#include "Store.h"
#include "Visits.h"

namespace qinghe::portal_server {

/// All pages by their paths, over one store.
///
/// Quick reads are answered on the thread that asks, long ones on one that searches, writes on the
/// one that writes. Nothing that a request holds makes an answer throw.
class Portal {
 public:
  explicit Portal(Store& store, HouseRules rules = {})
      : store_(store), rules_(rules), kept_(store) {}

  /// Replaces a request for the relay page by the request that it carries, for the same client.
  /// False when that one is not for a page of this portal.
  static bool unwrapRelay(PortalRequest& request);
  /// The address that a request for the relay page carries, in code page bytes, if it is the page
  /// of an information service that is offered.
  std::optional<std::string> foreignAddress(const PortalRequest& request);

  static bool isWrite(const PortalRequest& request);
  static bool isLogin(const PortalRequest& request);
  /// Whether a new company asks for its account.
  static bool isRegistration(const PortalRequest& request);

  /// The answer, however long it takes; not on the thread that answers the others.
  PortalAnswer answer(const PortalRequest& request);
  /// The answer of a reading page, or nothing when it would take longer than a moment. What
  /// everybody may read is told again without the store's rows as long as nobody writes.
  std::optional<PortalAnswer> answerAtOnce(const PortalRequest& request);

  /// Whether a request brings a picture that will be taken, on the thread that reads.
  bool bringsPicture(const PortalRequest& request);
  /// Reads that picture, on any thread, before the request is answered.
  static void readPicture(PortalRequest& request);

  /// What is done now and then, on the writing thread: who is present, which messages are old.
  /// Throws when the store fails.
  void keepHouse(const std::vector<Visit>& visits, Visits::Clock::time_point now);
  /// The same for one address that asks again after a long silence, without delay.
  void welcome(const Visit& visit);
  const HouseRules& rules() const { return rules_; }

 private:
  /// Throws `TooSlow` when the reader gives up.
  PortalAnswer answerFrom(const PortalRequest& request, StoreReader& reader);

  Store& store_;
  HouseRules rules_;
  KeptAnswers kept_;  // of the thread that answers at once
};

}  // namespace qinghe::portal_server
