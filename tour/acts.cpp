#include "acts.h"

namespace qinghe {

using namespace Qt::StringLiterals;

const QList<Act>& acts() {
  static const QString password = u"123456"_s;
  static const QList<Act> all{
      {u"goods"_s, u"1001"_s, password, goodsSteps},
      {u"register"_s, u"new"_s, {}, registerSteps},
      {u"portal"_s, u"1001"_s, password, portalSteps},
      {u"brand"_s, u"1006"_s, u"demo1006"_s, brandSteps},
      // An order's life between two companies, each at its own desk.
      {u"buy"_s, u"1002"_s, password, buySteps},
      {u"sell"_s, u"1001"_s, password, sellSteps},
      {u"confirm"_s, u"1002"_s, password, confirmSteps},
      {u"ship"_s, u"1001"_s, password, shipSteps},
      {u"receive"_s, u"1002"_s, password, receiveSteps},
      {u"retail"_s, u"1001"_s, password, retailSteps},
      {u"statistics"_s, u"1001"_s, password, statisticsSteps},
      {u"messages"_s, u"1001"_s, password, messagesSteps},
      {u"content"_s, u"1001"_s, password, contentSteps},
  };
  return all;
}

}  // namespace qinghe
