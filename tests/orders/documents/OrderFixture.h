#pragma once

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "orders/documents/FrmDIHU_XS.h"
#include "orders/documents/FrmGOHU_JH.h"
#include "orders/documents/FrmGOHU_XS.h"
#include "portal/url_encode.h"
#include "support/ClientFixture.h"

namespace qinghe {

/// A screen whose unsaved mark can be looked at.
template <class Screen>
class Marked : public Screen {
 public:
  bool isDirty() const { return this->mDirty; }
};

/// Does something once, when the next form of a class stands and waits for the user.
template <class F>
class WhenShown : public QObject {
 public:
  WhenShown(QObject* parent, std::function<void(F&)> work)
      : QObject(parent), work_(std::move(work)) {
    qApp->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* form = dynamic_cast<F*>(watched);
    if (form != nullptr && event->type() == QEvent::Show) {
      qApp->removeEventFilter(this);
      QTimer::singleShot(0, form, [form, work = work_] { work(*form); });
    }
    return false;
  }

 private:
  std::function<void(F&)> work_;
};

using Parameters = QList<std::pair<QString, QString>>;

/// A request's target as it goes over the wire, all values encoded.
inline QString target(const QString& page, const Parameters& parameters) {
  QString text = QStringLiteral("/_vti_product/") + page;
  QChar separator = u'?';
  for (const auto& [name, value] : parameters) {
    text += separator + name + u'=' + UrlEncodeField(value);
    separator = u'&';
  }
  return text;
}

inline QString readTarget(const QString& table, const QString& fields, const QString& condition) {
  return target(QStringLiteral("_vti_detail_field_s.asp"),
                {{QStringLiteral("STABLE"), table},
                 {QStringLiteral("STRDATA"), fields},
                 {QStringLiteral("STOTHER"), condition}});
}

inline QString saveTarget(const QString& table, const QString& columns, const QString& condition,
                          const Parameters& fields) {
  return target(QStringLiteral("_vti_add.asp"), Parameters{{QStringLiteral("stable"), table},
                                                           {QStringLiteral("structn"), columns},
                                                           {QStringLiteral("stother"), condition}} +
                                                    fields);
}

/// An order screen of company 25, driven through its controls. Order 88 stands between 7, who
/// sells, and 25, who buys, or between 25 and 9; retail order 55 between 25 and an individual.
template <class Screen>
class OrderFixture : public ClientFixture {
 protected:
  using Open = Marked<Screen>;

  OrderFixture() {
    beCompany(1, 2);
    state.peerPort = 0;
    state.peerAddress = QStringLiteral("127.0.0.1");
  }

  Open& screen() {
    auto& form = defaultInstance<Open>();
    QApplication::setActiveWindow(form.window());
    return form;
  }
  bool isOpen() const { return isLoaded<Open>(); }

  /// Opens order `id` with what the portal answers for header and lines.
  Open& open(qint32 id, const QList<QStringList>& header, const QList<QStringList>& lines) {
    state.gCurrentOrderId = id;
    state.gRetailOrderId = id;
    portal.answerWith({page(header), page(lines)});
    screen();
    portal.clear();
    portal.answerWith({"<html></html>"});
    return screen();
  }

  ListView& list() { return *screen().ListView1; }
  ListItem& row(int index) { return *list().itemAt(index); }
  QString status() { return screen().StatusBar1->text(); }
  QString field(int index) { return screen().txtFields(index)->text(); }
  QString id() { return screen().txtFields(1)->Tag; }
  QString count(int index) { return screen().TxtCounts(index)->text(); }
  QStringList counts() {
    QStringList texts;
    for (int i = 0; i < OrderCountCount; ++i) texts << count(i);
    return texts;
  }
  /// Name, the visible cells and the unseen ones.
  QStringList cells(int index) {
    QStringList texts{row(index).text()};
    for (int i = 1; i < list().model()->columnCount(); ++i) texts << row(index).subItem(i);
    return texts;
  }

  void press(const QString& key) {
    QAction* action = screen().Toolbar1->button(key);
    ASSERT_NE(action, nullptr) << key.toStdString();
    ASSERT_TRUE(action->isEnabled()) << key.toStdString();
    QTest::mouseClick(screen().Toolbar1->widgetForAction(action), Qt::LeftButton);
  }
  QStringList buttons() {
    QStringList texts;
    for (const QAction* action : screen().Toolbar1->actions()) {
      texts << action->objectName() + u' ' + action->text();
    }
    return texts;
  }

  /// Types over the whole field, as a user does, and stays in it.
  void type(int index, const QString& text) {
    screen().txtFields(index)->editor()->setFocus(Qt::OtherFocusReason);
    screen().txtFields(index)->selectAll();
    qobject_cast<QLineEdit*>(screen().txtFields(index)->editor())->insert(text);
  }

  void mouse(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(list().viewport(), button, Qt::NoModifier, at);
  }
  void clickCell(int index, int column, Qt::MouseButton button = Qt::LeftButton) {
    mouse(list().cellRect(list().itemAt(index), column).center(), button);
  }
  void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), code, modifiers);
  }
  /// Types over the open input.
  void typeCell(const QString& text) {
    auto* edit = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(edit, nullptr);
    edit->selectAll();
    edit->insert(text);
  }
  /// The name of the input that is open, empty when none is.
  QString openInput() {
    QStringList names;
    for (const auto* box : screen().template findChildren<TextBox*>()) {
      if (box->isVisible() && box->objectName().startsWith(u"TxtInput")) {
        names << box->objectName();
      }
    }
    return names.join(u' ');
  }

  /// Another form comes and goes, so that the screen is activated anew.
  void reactivate() {
    Form other(Form::Kind::Window, QStringLiteral("Other"), {});
    other.showForm();
    other.hideForm();
    screen().showForm();
  }

  /// Which of the controls can be used, by name.
  QStringList usable(const QStringList& names) {
    QStringList result;
    for (const QString& name : names) {
      const auto* action = screen().template findChild<QAction*>(name);
      const auto* widget = screen().template findChild<QWidget*>(name);
      if (action != nullptr ? action->isEnabled() : widget != nullptr && widget->isEnabled()) {
        result << name;
      }
    }
    return result;
  }

  /// Closes the screen; whether that asked about unsaved changes, which are then dropped.
  bool closingAsks() {
    const auto asked = boxes->asked.size();
    if (screen().isDirty()) boxes->expect(Answer::No);
    EXPECT_TRUE(screen().unload());
    return boxes->asked.size() > asked;
  }
};

inline const QString headerColumnsSent =
    QStringLiteral("id,gohu_no,ghrq,gosh_id,gosh,kehu_id,kehu,feyo,fhrq,jhhs,xshs,sh,fh,fhfs,");
inline const QString lineColumnsSent =
    QStringLiteral("id,ximu_id,ximu,ximu_bh,shli,jige,jine,zhko,ynsh,baxi,ling,bazh,gesh,ximu_no,");

/// Order 88, with `changes` of single cells.
inline QList<QStringList> purchaseHeader(const QMap<int, QString>& changes = {}) {
  QStringList cells{
      QStringLiteral("88"),       QStringLiteral("G2003115-7"), QStringLiteral("2003-1-15"),
      QStringLiteral("7"),        QStringLiteral("学苑书店"),   QStringLiteral("25"),
      QStringLiteral("青禾书店"), QStringLiteral("5.5"),        QStringLiteral("2003-1-20"),
      QStringLiteral("False"),    QStringLiteral("False"),      QStringLiteral("False"),
      QStringLiteral("False"),    QStringLiteral("快件")};
  for (auto change = changes.begin(); change != changes.end(); ++change) {
    cells[change.key()] = change.value();
  }
  return {cells};
}

inline QList<QStringList> twoLines() {
  const auto cells = [](const char* text) { return QString::fromUtf8(text).split(u'|'); };
  return {cells("417|501| 大学语文 |B1|25|12.5|312.5|0.8|250|2|1|八折|12|7-01|教材"),
          cells("418|502|高等数学|B2|10|30|300|1|300|0|0||0|7-02|教材")};
}

inline QList<QStringList> salesHeader(const QMap<int, QString>& changes = {}) {
  QMap<int, QString> all{{3, QStringLiteral("25")},
                         {4, QStringLiteral("青禾书店")},
                         {5, QStringLiteral("9")},
                         {6, QStringLiteral("云集书社")}};
  all.insert(changes);
  return purchaseHeader(all);
}

/// As the seller reads them, without the category.
inline QList<QStringList> salesLines() {
  QList<QStringList> lines = twoLines();
  for (QStringList& line : lines) line.removeLast();
  return lines;
}

}  // namespace qinghe
