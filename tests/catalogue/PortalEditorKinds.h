#pragma once

#include "PortalEditorFixture.h"
#include "browser/WebBrowser.h"
#include "catalogue/FrmFUWU_WEB.h"
#include "catalogue/FrmMUMU_WEB.h"
#include "catalogue/FrmTUPI_WEB.h"
#include "catalogue/FrmXIMU_WEB.h"

namespace qinghe::portal_editors {

struct Goods {
  using Screen = FrmXIMU_WEB;
  static constexpr const char* caption = "商品登记";
  static constexpr const char* column = "商品名称";
  static constexpr const char* newRow = "新添商品";
  static constexpr const char* picture = "ximu";
  static constexpr int name = 2, intro = 8, note = 10, cells = 13, nameCell = 2;
  static constexpr qint16 kind = 0;
  static constexpr int longTextsAtClick = 0;
  static constexpr bool paged = true;
};
struct Services {
  using Screen = FrmFUWU_WEB;
  static constexpr const char* caption = "服务登记";
  static constexpr const char* column = "商品名称";
  static constexpr const char* newRow = "新添服务";
  static constexpr const char* picture = "fuwu";
  static constexpr int name = 2, intro = 8, note = 10, cells = 8, nameCell = 2;
  static constexpr qint16 kind = 1;
  static constexpr int longTextsAtClick = 2;
  static constexpr bool paged = true;
};
struct Brands {
  using Screen = FrmMUMU_WEB;
  static constexpr const char* caption = "品牌登记";
  static constexpr const char* column = "商品名称";
  static constexpr const char* newRow = "新添品牌";
  static constexpr const char* picture = "mumu";
  static constexpr int name = 2, intro = 10, note = 11, cells = 15, nameCell = 2;
  static constexpr qint16 kind = 2;
  static constexpr int longTextsAtClick = 0;
  static constexpr bool paged = true;
};
struct Pictures {
  using Screen = FrmTUPI_WEB;
  static constexpr const char* caption = "图片登记";
  static constexpr const char* column = "名称";
  static constexpr const char* newRow = "新添图片";
  static constexpr const char* picture = "tupi";
  static constexpr int name = 1, intro = 8, note = 10, cells = 5, nameCell = 1;
  static constexpr qint16 kind = 0;
  static constexpr int longTextsAtClick = 0;
  static constexpr bool paged = false;
};

inline QString text(const char* words) {
  return QString::fromUtf8(words);
}

/// The four editors with a picture page, and what tells them apart.
using Kinds = testing::Types<Goods, Services, Brands, Pictures>;

template <class Kind>
class PortalEditorsFixture : public PortalEditorFixture<typename Kind::Screen> {
 protected:
  using Screen = typename Kind::Screen;
  using Base = PortalEditorFixture<Screen>;

  /// Opens it on two records, of which the second is live.
  void openTwo() {
    const QList<QStringList> rows = {{text("71"), text("甲"), text("3"), text("False")},
                                     {text("40000"), text("乙"), text("12"), text("True")}};
    if constexpr (Kind::paged) {
      this->open(rows);
    } else {
      this->portal.answerWith({Base::page(rows)});
      this->screen();
      this->portal.clear();
    }
  }
  /// A record of that id and name; its other cells are numbers of their own.
  static QStringList record(const QString& id, const QString& name) {
    QStringList cells;
    for (int cell = 0; cell < Kind::cells; ++cell) cells.append(QString::number(100 + cell));
    cells[0] = id;
    cells[Kind::nameCell] = name;
    return cells;
  }
  QString name() { return this->field(Kind::name); }
  QString shownPage() { return this->screen().WebBrowserPICT->asked(); }
  QString picturePage(const QString& id) {
    return this->state.gWebServer +
           text("_vti_product/_vti_image.asp?stable=%1&id=%2").arg(text(Kind::picture), id);
  }
  QStringList savedIds() {
    QStringList ids;
    for (const QByteArray& target : this->portal.requestTargets()) {
      const auto at = target.indexOf("&stother=");
      if (!target.contains("_vti_add.asp?") || at < 0) continue;
      ids.append(QString::fromLatin1(
          QByteArray::fromPercentEncoding(target.mid(at + 9).split('&').first())));
    }
    return ids;
  }
};

}  // namespace qinghe::portal_editors
