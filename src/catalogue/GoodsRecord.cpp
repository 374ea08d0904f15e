#include "catalogue/GoodsRecord.h"

namespace qinghe {

using namespace Qt::StringLiterals;

const LocalRecordKind& localGoods() {
  using enum ValueFrom;
  static const LocalRecordKind kind{
      .localTable = u"XIMU"_s,
      .openSet = &GetData::GetXIMU,
      .portalTable = u"ximu"_s,
      .portalColumnCount = u"18"_s,
      .loaded = {{1, u"XIMU_NO"_s},
                 {2, u"XIMU"_s},
                 {3, u"JIGEX"_s},
                 {4, u"ZHKO"_s},
                 {5, u"GESH"_s},
                 {6, u"LEBI"_s, u"LEBI_ID"_s},
                 {7, u"CHYE"_s, u"CHYE_ID"_s},
                 {8, u"JISH"_s},
                 {9, u"SHXI"_s}},
      .localColumns = {{u"QIYE_ID"_s, OwnerId},
                       {u"qiye"_s, OwnerName},
                       {u"LEBI_ID"_s, TagNumber, 6},
                       {u"CHYE_ID"_s, TagNumber, 7},
                       {u"XIMU_NO"_s, Trimmed, 1},
                       {u"XIMU"_s, Trimmed, 2},
                       {u"GESH"_s, Typed, 5},
                       {u"LEBI"_s, Trimmed, 6},
                       {u"CHYE"_s, Trimmed, 7},
                       {u"SHXI"_s, Trimmed, 9},
                       {u"JIGEX"_s, Typed, 3},
                       {u"ZHKO"_s, Typed, 4},
                       {u"JISH"_s, Typed, 8},
                       {u"NOTH"_s, Checked}},
      .portalFields = {{u"QIYE_ID"_s, OwnerId},
                       {u"QIYE"_s, OwnerName},
                       {u"LEBI_ID"_s, TagNumber, 6},
                       {u"CHYE_ID"_s, TagNumber, 7},
                       {u"XIMU_NO"_s, Typed, 1},
                       {u"XIMU"_s, Typed, 2},
                       {u"GESH"_s, Typed, 5},
                       {u"LEBI"_s, Typed, 6},
                       {u"CHYE"_s, Typed, 7},
                       {u"SHXI"_s, Typed, 9},
                       {u"JIGEX"_s, Typed, 3},
                       {u"ZHKO"_s, Typed, 4},
                       {u"NOTH"_s, Checked}},
      .nameField = 2,
      .introField = 8,
  };
  return kind;
}

const LocalRecordKind& localServices() {
  using enum ValueFrom;
  static const LocalRecordKind kind{
      .localTable = u"FUWU"_s,
      .openSet = &GetData::GetFUWU,
      .portalTable = u"FUWU"_s,
      .portalColumnCount = u"18"_s,
      .loaded = {{1, u"XIMU_NO"_s},
                 {2, u"XIMU"_s},
                 {3, u"JIGEX"_s},
                 {4, u"ZHKO"_s},
                 {8, u"JISH"_s},
                 {9, u"SHXI"_s}},
      .localColumns = {{u"QIYE_ID"_s, OwnerId},
                       {u"qiye"_s, OwnerName},
                       {u"XIMU_NO"_s, Trimmed, 1},
                       {u"XIMU"_s, Trimmed, 2},
                       {u"JIGEX"_s, Typed, 3},
                       {u"ZHKO"_s, Typed, 4},
                       {u"JISH"_s, Typed, 8},
                       {u"NOTH"_s, Checked}},
      .portalFields = {{u"QIYE_ID"_s, OwnerId},
                       {u"QIYE"_s, OwnerName},
                       {u"XIMU_NO"_s, Typed, 1},
                       {u"XIMU"_s, Typed, 2},
                       {u"JIGEX"_s, Typed, 3},
                       {u"ZHKO"_s, Typed, 4},
                       {u"NOTH"_s, Checked}},
      .nameField = 2,
      .introField = 8,
  };
  return kind;
}

}  // namespace qinghe
