#pragma once

#include <QContextMenuEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/CellEditor.h"
#include "forms/FormsFixture.h"

namespace qinghe {

inline constexpr int quantity = 1, price = 2, sum = 3, discount = 4;

/// A screen with a list over whose cells three inputs lie, and a control beside it.
class CellScreen : public Form {
 public:
  explicit CellScreen(const CellPlace& place = {})
      : Form(Kind::Window, QStringLiteral("Screen"), QStringLiteral("订单")) {
    for (const auto& title :
         {QStringLiteral("商品"), QStringLiteral("数量"), QStringLiteral("单价"),
          QStringLiteral("金额"), QStringLiteral("折扣")}) {
      list->addColumn(title, 80);
    }
    column->addWidget(list);
    const auto number = [](const QString& text) {
      bool ok = false;
      text.toDouble(&ok);
      return ok ? QString() : QStringLiteral("必须是数值");
    };
    const auto write = [this](int at) {
      return [this, at](ListItem& row, const QString& text) {
        left << QStringLiteral("%1/%2 %3").arg(row.row()).arg(at).arg(text);
        row.setSubItem(at, text);
      };
    };
    cells = new CellEditor(list,
                           {{quantity, QStringLiteral("TxtInputSL"), number, write(quantity)},
                            {price, QStringLiteral("TxtInputJG"), number, write(price)},
                            {discount, QStringLiteral("TxtInputZK"), {}, write(discount)}},
                           place);
    connect(cells, &CellEditor::changed, this, [this] { ++changes; });
    connect(cells, &CellEditor::rightReleased, this, [this](const ListItem* row, const QPoint& at) {
      rights << row->text();
      rightAt = at;
    });
    // Behind the inputs, so that a focus which one of them loses would come here.
    other = new QPushButton(QStringLiteral("别处"), this);
    column->addWidget(other);
    resize(460, 300);
  }

  void fill(int rows) {
    for (int row = 0; row < rows; ++row) {
      auto* item = list->addItem(QStringLiteral("%1 ID").arg(row), QStringLiteral("书%1").arg(row));
      for (int at = 1; at <= 4; ++at) item->setSubItem(at, QString::number(10 * row + at));
    }
  }

  QVBoxLayout* column = new QVBoxLayout(this);
  ListView* list = new ListView(QStringLiteral("ListView1"), this);
  QPushButton* other = nullptr;
  CellEditor* cells = nullptr;
  QStringList left, rights;
  QPoint rightAt;
  int changes = 0;
};

class CellEditorTest : public FormsFixture {
 protected:
  void SetUp() override {
    screen.fill(3);
    screen.show();
    screen.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&screen));
    screen.list->setFocus();
  }

  TextBox* input(const QString& name) { return screen.findChild<TextBox*>(name); }
  QPoint cell(int row, int column) {
    return screen.list->cellRect(screen.list->itemAt(row), column).center();
  }
  void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(screen.list->viewport(), button, {}, at);
  }
  void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }
  void key(int key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
  }
  /// Whether the list kept the event for itself.
  bool askForMenu(QContextMenuEvent::Reason reason) {
    QContextMenuEvent menu(reason, {5, 5}, screen.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(screen.list, &menu);
    return menu.isAccepted();
  }
  /// The open input and the row it stands on, or "".
  QString open() {
    QStringList names;
    for (const auto* box : screen.findChildren<TextBox*>()) {
      if (box->isVisible()) {
        names << QStringLiteral("%1@%2").arg(box->objectName()).arg(screen.cells->editRow()->row());
        EXPECT_EQ(QApplication::focusWidget(), box->editor());
      }
    }
    EXPECT_EQ(screen.cells->isOpen(), !names.isEmpty());
    return names.join(u' ');
  }

  CellScreen screen;
};

}  // namespace qinghe
