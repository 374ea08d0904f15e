#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "HouseRules.h"
#include "Store.h"
#include "Visits.h"

namespace qinghe::portal_server {

/// Presence expires soon. The login stays much longer: the client logs in once and never again by
/// itself, so a user who comes back from a long lunch still saves and sends.

/// Brings every enterprise's `online` and `ipurl` up to who has asked for something lately.
void updatePresence(StoreWriter& store, const std::vector<Visit>& visits,
                    Visits::Clock::time_point now, std::chrono::minutes offlineAfter);

/// Shows the enterprises that are logged in at an address as online again.
void welcomeBack(StoreWriter& store, const Visit& visit);

/// Forgets logins from where nothing has been asked for so long: an address passes on to others.
void dropOldLogins(StoreWriter& store, Visits::Clock::time_point now, std::chrono::days keep);

/// Removes the messages that are older than the operator keeps them.
void dropOldMessages(StoreWriter& store, Visits::Clock::time_point now, std::chrono::days keep);

}  // namespace qinghe::portal_server
