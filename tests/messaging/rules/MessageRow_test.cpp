#include "messaging/rules/MessageRow.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

using Fields = std::vector<std::pair<QString, QVariant>>;

TEST(MessageRow, SetsItsFieldsInOrderAndLeavesTheTimeToTheTable) {
  const MessageRow row =
      messageRow({77, u"云集书社"_s}, {25, u"青禾书店"_s}, u"你好"_s, Road::Direct);
  const Fields expected{{u"qyxx_id"_s, 77},
                        {u"user_id"_s, 25},
                        {u"qyxx"_s, u"云集书社"_s},
                        {u"UserName"_s, u"青禾书店"_s},
                        {u"content"_s, u"你好"_s}};
  EXPECT_EQ(row.fields(), expected);
}

TEST(MessageRow, ARelayedOneHasTheMarkInFrontOfTheTextAndMayHaveItsTime) {
  MessageRow row = messageRow({25, u"青禾书店"_s}, {77, u"云集书社"_s}, u"你好"_s, Road::Relay);
  row.dtime = QDateTime(QDate(2026, 3, 9), QTime(8, 5), Qt::UTC);
  const Fields expected{{u"qyxx_id"_s, 25},         {u"user_id"_s, 77},
                        {u"qyxx"_s, u"青禾书店"_s}, {u"UserName"_s, u"云集书社"_s},
                        {u"dtime"_s, *row.dtime},   {u"content"_s, u"（由服务器中转）你好"_s}};
  EXPECT_EQ(row.fields(), expected);
}

}  // namespace
