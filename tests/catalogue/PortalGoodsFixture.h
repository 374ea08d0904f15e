#pragma once

#include "PortalEditorFixture.h"
#include "catalogue/FrmXIMU_WEB.h"

namespace qinghe {

/// The portal goods register of a company with two goods on one page.
class PortalGoodsFixture : public PortalEditorFixture<FrmXIMU_WEB> {
 protected:
  static QList<QStringList> twoGoods() {
    return {{QStringLiteral("71"), QStringLiteral("大学语文"), QStringLiteral("3"),
             QStringLiteral("False")},
            {QStringLiteral("40000"), QStringLiteral("高等数学"), QStringLiteral("12"),
             QStringLiteral("True")}};
  }
  /// A record's cells, as the portal gives them.
  static QStringList record(const QString& id = QStringLiteral("71")) {
    return {id,
            QStringLiteral("N1"),
            QStringLiteral("大学语文"),
            QStringLiteral("25.50"),
            QStringLiteral("八折"),
            QStringLiteral("010"),
            QStringLiteral("12"),
            QStringLiteral("教材"),
            QStringLiteral("5"),
            QStringLiteral("青禾出版社"),
            QStringLiteral("第一行<br>第二行"),
            QStringLiteral("平装,"),
            QStringLiteral("欢迎")};
  }

  void openOnFirst() {
    open(twoGoods());
    show(0, record());
  }

  /// The save of the record above, with the values of `changed` in place of its own.
  static QList<Parameter> saved(const QHash<QString, QString>& changed) {
    QList<Parameter> parameters = {
        {QStringLiteral("stable"), QStringLiteral("ximu")},
        {QStringLiteral("structn"), QStringLiteral("18")},
        {QStringLiteral("stother"), QStringLiteral("id=71 and qiye_id=25")},
        {QStringLiteral("QIYE_ID"), QStringLiteral("25")},
        {QStringLiteral("QIYE"), QStringLiteral("青禾书店")},
        {QStringLiteral("LEBI_ID"), QStringLiteral("12"), true},
        {QStringLiteral("CHYE_ID"), QStringLiteral("5"), true},
        {QStringLiteral("XIMU_NO"), QStringLiteral("N1"), true},
        {QStringLiteral("XIMU"), QStringLiteral("大学语文"), true},
        {QStringLiteral("GESH"), QStringLiteral("010"), true},
        {QStringLiteral("LEBI"), QStringLiteral("教材"), true},
        {QStringLiteral("CHYE"), QStringLiteral("青禾出版社"), true},
        {QStringLiteral("SHXI"), QStringLiteral("平装,"), true},
        {QStringLiteral("JIGEX"), QStringLiteral("25.50"), true},
        {QStringLiteral("ZHKO"), QStringLiteral("八折"), true},
        {QStringLiteral("NOTH"), QStringLiteral("False")}};
    for (Parameter& each : parameters) {
      if (changed.contains(each.name)) each.value = changed[each.name];
    }
    return parameters;
  }
};

}  // namespace qinghe
