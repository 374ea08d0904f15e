#include "Options.h"

#include <gtest/gtest.h>

using namespace qinghe::portal_server;
using namespace std::chrono_literals;

TEST(Options, HaveDefaultsThatSuitADesk) {
  std::string error;
  const auto options = parseOptions({}, error);
  ASSERT_TRUE(options);
  EXPECT_EQ(options->address, "127.0.0.1");
  EXPECT_EQ(options->port, 8180);
  EXPECT_EQ(options->database, "portal.db");
  EXPECT_EQ(options->rules.keepMessages, std::chrono::days(30));
  EXPECT_EQ(options->rules.offlineAfter, 15min);
  EXPECT_FALSE(options->demo);
  EXPECT_FALSE(options->rules.relayOwnNetwork);
}

TEST(Options, AreTakenTogether) {
  std::string error;
  const auto options =
      parseOptions({"--listen", "[::1]:90", "--db", "d", "--log", "l", "--demo", "--keep-messages",
                    "3650", "--offline-after", "1440", "--relay-own-network"},
                   error);
  ASSERT_TRUE(options) << error;
  EXPECT_EQ(options->address, "::1");
  EXPECT_EQ(options->port, 90);
  EXPECT_EQ(options->database, "d");
  EXPECT_EQ(options->log, "l");
  EXPECT_TRUE(options->demo);
  EXPECT_EQ(options->rules.keepMessages, std::chrono::days(3650));
  EXPECT_EQ(options->rules.offlineAfter, 1440min);
  EXPECT_TRUE(options->rules.relayOwnNetwork);
}

TEST(Options, TimesAreBounded) {
  const struct {
    const char* name;
    const char* value;
    bool taken;
  } table[] = {
      {"--keep-messages", "1", true},
      {"--keep-messages", "0", false},
      {"--keep-messages", "3651", false},
      {"--keep-messages", "-5", false},
      {"--keep-messages", "", false},
      {"--keep-messages", "9d", false},
      {"--keep-messages", "99999999999999999999", false},
      {"--offline-after", "1", true},
      {"--offline-after", "0", false},
      {"--offline-after", "1441", false},
      {"--offline-after", "x", false},
  };
  for (const auto& row : table) {
    std::string error;
    EXPECT_EQ(parseOptions({row.name, row.value}, error).has_value(), row.taken)
        << row.name << " " << row.value;
    EXPECT_EQ(error.empty(), row.taken);
  }
}

TEST(Options, AMissingValueIsNamed) {
  for (const char* name : {"--listen", "--db", "--log", "--keep-messages", "--offline-after"}) {
    std::string error;
    EXPECT_FALSE(parseOptions({name}, error));
    EXPECT_EQ(error, std::string(name) + " needs a value");
  }
}
