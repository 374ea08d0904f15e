#pragma once

#include <QHash>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>
#include <functional>

#include "EditorFixture.h"
#include "forms/TabControl.h"
#include "portal/url_encode.h"
#include "values/code_page.h"

namespace qinghe {

/// A parameter as it must stand in a request.
struct Parameter {
  QString name;
  QString value;
  bool raw = false;  ///< as code page bytes, and not encoded
};

inline QByteArray parameterText(const QList<Parameter>& parameters) {
  QByteArray text;
  for (const Parameter& each : parameters) {
    if (!text.isEmpty()) text += '&';
    text += each.name.toLatin1() + '=' +
            (each.raw ? toCodePage(each.value) : UrlEncodeField(each.value).toLatin1());
  }
  return text;
}

inline QByteArray targetOf(const char* page, const QList<Parameter>& parameters) {
  return QByteArray("/_vti_product/") + page + '?' + parameterText(parameters);
}

/// Acts in a form as soon as it stands: in a modal one, while its opener waits.
class WhenShown : public QObject {
 public:
  WhenShown(QObject* parent, std::function<bool(QWidget&)> isIt, std::function<void(QWidget&)> act)
      : QObject(parent), isIt_(std::move(isIt)), act_(std::move(act)) {
    qApp->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || event->type() != QEvent::Show || !isIt_(*widget)) return false;
    qApp->removeEventFilter(this);
    QTimer::singleShot(0, widget, [act = act_, widget] { act(*widget); });
    return false;
  }

 private:
  std::function<bool(QWidget&)> isIt_;
  std::function<void(QWidget&)> act_;
};

/// An editor of portal records, whose lists and records a scripted portal gives.
template <class Screen>
class PortalEditorFixture : public EditorFixture<Screen> {
 protected:
  using Fixture = EditorFixture<Screen>;

  PortalEditorFixture() { this->beCompany(1, 1); }

  /// Opens the screen on one page of rows, and forgets the requests of that.
  void open(const QList<QStringList>& rows) {
    this->portal.answerWith({Fixture::page({{QStringLiteral("1")}}), Fixture::page(rows)});
    this->screen();
    this->portal.clear();
  }
  /// Clicks a row that the portal gives this record for, and forgets the request.
  void show(int row, const QStringList& record) {
    this->portal.answerWith({Fixture::page({record})});
    this->clickRow(row);
    this->portal.clear();
  }

  QByteArray target(int index) { return this->portal.requestTargets().value(index); }

  /// Whether so many requests have come, and nothing is on its way any more.
  bool settled(int requests) {
    return this->portal.waitForRequests(requests) &&
           QTest::qWaitFor([this] { return !this->state.inetQuotes.StillExecuting(); }, 60'000);
  }

  QPushButton* command(const QString& name) {
    return this->screen().template findChild<QPushButton*>(name);
  }
  void press(const QString& key) { Fixture::press(key); }
  void pressCommand(const QString& name) {
    ASSERT_NE(command(name), nullptr);
    QTest::mouseClick(command(name), Qt::LeftButton);
  }

  /// Types a text with blanks around it into each of these fields; what stands there by parameter.
  QHash<QString, QString> typeWithBlanks(const QList<std::pair<QString, int>>& fields) {
    QHash<QString, QString> typed;
    for (const auto& [name, index] : fields) {
      typed[name] = QStringLiteral("  %1 ").arg(index);
      this->screen().txtFields(index)->setText(typed[name]);
    }
    return typed;
  }

  void turnTo(int tab) {
    QTabBar* bar = this->screen().SSTab1->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
  }

  /// What is done in a picker when it opens.
  template <class Picker>
  void inPicker(std::function<void(Picker&)> act) {
    new WhenShown(
        &this->state.tray,
        [](QWidget& widget) { return dynamic_cast<Picker*>(&widget) != nullptr; },
        [act](QWidget& widget) { act(static_cast<Picker&>(widget)); });
  }
};

/// Clicks the row of a picker's list and accepts.
template <class Picker>
void acceptRow(Picker& picker, int row) {
  QTest::mouseClick(picker.ListView1->viewport(), Qt::LeftButton, Qt::NoModifier,
                    picker.ListView1->cellRect(picker.ListView1->itemAt(row), 0).center());
  QTest::mouseClick(picker.commandC, Qt::LeftButton);
}

}  // namespace qinghe
