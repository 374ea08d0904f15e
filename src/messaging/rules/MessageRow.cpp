#include "messaging/rules/MessageRow.h"

namespace qinghe {

using namespace Qt::StringLiterals;

std::vector<std::pair<QString, QVariant>> MessageRow::fields() const {
  std::vector<std::pair<QString, QVariant>> result{{u"qyxx_id"_s, addressee.id},
                                                   {u"user_id"_s, author.id},
                                                   {u"qyxx"_s, addressee.name},
                                                   {u"UserName"_s, author.name}};
  if (dtime) result.emplace_back(u"dtime"_s, *dtime);
  result.emplace_back(u"content"_s, content);
  return result;
}

MessageRow messageRow(const Party& addressee, const Party& author, const QString& text, Road road) {
  return {addressee, author, std::nullopt,
          road == Road::Relay ? relayMark.toString() + text : text};
}

}  // namespace qinghe
