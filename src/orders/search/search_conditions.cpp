#include "orders/search/search_conditions.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

struct Term {
  QString column;
  const QString& word;
};

QString containing(const QList<Term>& terms) {
  QString condition;
  for (const auto& [column, word] : terms) {
    if (word.isEmpty()) continue;
    if (!condition.isEmpty()) condition += u" and "_s;
    condition += column + u" like '%"_s + word + u"%'"_s;
  }
  return condition;
}

}  // namespace

const QList<LineColumnTitle>& foundColumns() {
  static const QList<LineColumnTitle> columns{
      {u"编号"_s, 2000}, {u"书名称"_s, 2500}, {u"价格"_s, 1000}, {u"折扣"_s, 1500},
      {u"企业"_s, 2500}, {u"品牌"_s, 2500},   {{}, 0},           {{}, 0}};
  return columns;
}

QString goodsCondition(const QString& name, const QString& category, const QString& attribute) {
  const QString words =
      containing({{u"ximu"_s, name}, {u"lebi"_s, category}, {u"shxi"_s, attribute}});
  return words.isEmpty() ? QString() : u"noth=true and "_s + words;
}

QString enterpriseCondition(const QString& name, const QString& address) {
  return containing({{u"qiye"_s, name}, {u"dizh"_s, address}});
}

QString brandCondition(const QString& name, const QString& introduction) {
  return containing({{u"ximu"_s, name}, {u"jish"_s, introduction}});
}

QString liveGoodsWith(const QString& column, const QString& value) {
  return u"NOTH=TRUE AND "_s + column + u'=' + value;
}

}  // namespace qinghe
