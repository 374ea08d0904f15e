#include "account/registration/registration_record.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Field0 = RecordArray::TxtField0;
constexpr auto Field1 = RecordArray::TxtField1;
constexpr auto Field3 = RecordArray::TxtField3;

}  // namespace

const QList<RecordBox>& recordBoxes() {
  static const QList<RecordBox> boxes = {
      {Field0, 0, u"编    号"_s},  {Field0, 1, u"注册电话*"_s},  {Field0, 2, u"口    令*"_s},
      {Field0, 3, u"全    称*"_s}, {Field0, 4, u"地    址*"_s},  {Field0, 5, u"邮    编*"_s},
      {Field0, 6, u"电    话*"_s}, {Field0, 7, u"国    家*"_s},  {Field0, 8, u"省    份*"_s},
      {Field0, 9, u"城    市*"_s}, {Field0, 10, u"行    业*"_s}, {Field1, 0, u"传    真"_s},
      {Field1, 1, u"负 责 人"_s},  {Field1, 2, u"联 系 人"_s},   {Field1, 3, u"手    机"_s},
      {Field1, 4, u"呼    机"_s},  {Field1, 5, u"主    页"_s},   {Field1, 6, u"邮    箱"_s},
      {Field1, 7, u"开户银行"_s},  {Field1, 8, u"帐 户 号"_s},   {Field1, 9, u"税    号"_s},
      {Field3, 0, u"企业介绍"_s},  {Field3, 1, u"用户留言"_s},
  };
  return boxes;
}

const QList<RecordValue>& recordCells() {
  static const QList<RecordValue> cells = {
      {u"user_no"_s, Field0, 0},        {u"user_name"_s, Field0, 1},
      {u"user_pass"_s, Field0, 2},      {u"qiye"_s, Field0, 3},
      {u"dizh"_s, Field0, 4},           {u"yobi"_s, Field0, 5},
      {u"dihu"_s, Field0, 6},           {u"guji_id"_s, Field0, 7, true},
      {u"shen_id"_s, Field0, 8, true},  {u"area_id"_s, Field0, 9, true},
      {u"haye_id"_s, Field0, 10, true}, {u"guji"_s, Field0, 7},
      {u"shen"_s, Field0, 8},           {u"area"_s, Field0, 9},
      {u"haye"_s, Field0, 10},          {u"chzh"_s, Field1, 0},
      {u"fuzh"_s, Field1, 1},           {u"lixi"_s, Field1, 2},
      {u"shji"_s, Field1, 3},           {u"huji"_s, Field1, 4},
      {u"zhye"_s, Field1, 5},           {u"email"_s, Field1, 6},
      {u"khyh"_s, Field1, 7},           {u"yhzh"_s, Field1, 8},
      {u"shha"_s, Field1, 9},           {u"jish"_s, Field3, 0},
      {u"yhly"_s, Field3, 1},
  };
  return cells;
}

const QList<RecordValue>& recordParameters() {
  static const QList<RecordValue> parameters = {
      {u"USER_NAME"_s, Field0, 1},      {u"USER_PASS"_s, Field0, 2},
      {u"QIYE"_s, Field0, 3},           {u"DIZH"_s, Field0, 4},
      {u"YOBI"_s, Field0, 5},           {u"DIHU"_s, Field0, 6},
      {u"guji_id"_s, Field0, 7, true},  {u"guji"_s, Field0, 7},
      {u"shen_id"_s, Field0, 8, true},  {u"shen"_s, Field0, 8},
      {u"area_id"_s, Field0, 9, true},  {u"area"_s, Field0, 9},
      {u"haye_id"_s, Field0, 10, true}, {u"haye"_s, Field0, 10},
      {u"CHZH"_s, Field1, 0},           {u"FUZH"_s, Field1, 1},
      {u"LIXI"_s, Field1, 2},           {u"SHJI"_s, Field1, 3},
      {u"HUJI"_s, Field1, 4},           {u"ZHYE"_s, Field1, 5},
      {u"EMAIL"_s, Field1, 6},          {u"KHYH"_s, Field1, 7},
      {u"YHZH"_s, Field1, 8},           {u"SHHA"_s, Field1, 9},
  };
  return parameters;
}

QString recordFieldList() {
  QString list = u"id,"_s;
  for (const RecordValue& cell : recordCells()) list += cell.name + u',';
  return list;
}

}  // namespace qinghe
