#pragma once

#include "EditorFixture.h"
#include "catalogue/FrmXIMU.h"
#include "portal/url_encode.h"

namespace qinghe {

/// The local goods register of a company with two goods, one live and known to the portal, one not.
class GoodsFixture : public EditorFixture<FrmXIMU> {
 protected:
  GoodsFixture() {
    beCompany(1, 0);
    addGoods(1, 71, QStringLiteral("大学语文"), true);
    addGoods(2, 0, QStringLiteral("高等数学"), false);
    store.exec(
        QStringLiteral("UPDATE XIMU SET LEBI='教材',LEBI_ID=12,CHYE='青禾出版社',CHYE_ID=5,"
                       "JISH='第一行'||char(13)||char(10)||'第二行',SHXI='平装' WHERE id=1"));
  }

  void addGoods(int id, int portalId, const QString& name, bool live, int owner = 1) {
    store.exec(
        QStringLiteral("INSERT INTO XIMU (id,R_ID,QIYE_ID,qiye,XIMU_NO,XIMU,JIGEX,ZHKO,GESH,"
                       "NOTH) VALUES (%1,%2,%3,'青禾书店','N%1','%4','25.50','说明','010',%5)")
            .arg(id)
            .arg(portalId)
            .arg(owner)
            .arg(name)
            .arg(live ? 1 : 0));
  }

  /// Rows beyond the two, so that the list has `count`.
  void fillUpTo(int count) {
    for (int id = 3; id <= count; ++id) addGoods(id, 0, QStringLiteral("书%1").arg(id), true);
  }
};

}  // namespace qinghe
