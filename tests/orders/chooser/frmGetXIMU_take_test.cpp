#include <gtest/gtest.h>

#include <QPointer>
#include <QTimer>

#include "ChooserFixture.h"
#include "shell/modal.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// What an order screen does with the chooser.
class ChosenLines : public ChooserFixture {
 protected:
  ChosenLines() { offerOnePage(); }
  void SetUp() override {
    order.show();
    order.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&order));
  }

  /// Opens the chooser over an order, has `use` work in it, and takes its lines.
  void choose(const std::function<void()>& use) {
    auto& chooser = defaultInstance<frmGetXIMU>();
    chooser.mOrderIdList = ChosenIdList(lines);
    QTimer::singleShot(0, &chooser, [&chooser, &use] {
      EXPECT_TRUE(
          QTest::qWaitFor([&chooser] { return QApplication::activeWindow() == &chooser; }, 60'000));
      use();
    });
    showModalWaiting(chooser);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &order; }, 60'000));
    if (isLoaded<frmGetXIMU>()) TakeChosenLines(lines, chooser.chosenRows(), chooser.accepted());
  }
  void accept() { click(defaultInstance<frmGetXIMU>().commandC); }
  void cancel() { click(defaultInstance<frmGetXIMU>().commandT); }

  QStringList line(int index) const {
    QStringList texts;
    for (const QString& text : lines[index].texts) texts << text;
    return texts;
  }

  QList<OrderLineRow> lines;
  QWidget order;  ///< the window that the chooser is opened from
};

TEST_F(ChosenLines, AcceptedRowsWithAQuantityGoOntoTheOrder) {
  choose([this] {
    enter(0, ChosenQuantity, u"25"_s);
    enter(0, ChosenDiscount, u"0.8"_s);
    enter(2, ChosenQuantity, u"-7"_s);
    accept();
  });
  ASSERT_EQ(lines.size(), 2);
  EXPECT_EQ(line(0), (QStringList{u"大学语文"_s, u"B7"_s, u"25"_s, u"12.5"_s, u"312.5"_s, u"0.8"_s,
                                  u"250"_s, u"2"_s, u"1"_s, u"7"_s, u"满百册八折"_s, u"12"_s,
                                  u"978-7-7"_s, u"文学"_s}));
  EXPECT_EQ(lines[1].texts[LineQuantity], u"-7"_s);
  EXPECT_EQ(lines[1].texts[LineGoodsId], u"17"_s);
}

TEST_F(ChosenLines, TheMarkAloneTakesNothing) {
  choose([this] {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().checkRect(&row(1)).center());
    ASSERT_TRUE(row(1).isChecked());
    accept();
  });
  EXPECT_TRUE(lines.isEmpty());
}

TEST_F(ChosenLines, CancellingKeepsTheQuantitiesAndTakesNothing) {
  choose([this] {
    enter(0, ChosenQuantity, u"25"_s);
    cancel();
  });
  EXPECT_TRUE(lines.isEmpty());
  EXPECT_TRUE(isLoaded<frmGetXIMU>());
  EXPECT_EQ(row(0).subItem(ChosenQuantity), u"25"_s);
  EXPECT_FALSE(screen().CheckOK->isChecked());
}

TEST_F(ChosenLines, QuantitiesTypedEarlierAreTakenAgain) {
  choose([this] {
    enter(0, ChosenQuantity, u"25"_s);
    accept();
  });
  ASSERT_EQ(lines.size(), 1);
  lines[0].key = u"417 ID"_s;
  lines[0].texts[LineQuantity] = u"3"_s;
  lines[0].texts[LinePrice] = u"1"_s;
  choose([this] { accept(); });
  ASSERT_EQ(lines.size(), 1);
  EXPECT_EQ(lines[0].key, u"417 ID"_s);
  EXPECT_EQ(lines[0].texts[LineQuantity], u"25"_s);
  EXPECT_EQ(lines[0].texts[LinePrice], u"12.5"_s);
}

TEST_F(ChosenLines, LeftOtherwiseBehindAnAcceptItTakesNothing) {
  const std::function<void()> ways[] = {[this] { cancel(); }, [this] { key(Qt::Key_Escape); },
                                        [this] { screen().close(); }};
  for (const auto& leave : ways) {
    choose([this] {
      enter(0, ChosenQuantity, u"25"_s);
      accept();
    });
    ASSERT_EQ(lines.size(), 1);
    lines.clear();
    choose(leave);
    EXPECT_TRUE(lines.isEmpty());
    EXPECT_FALSE(defaultInstance<frmGetXIMU>().accepted());
  }
}

TEST_F(ChosenLines, ExitTakesNothingAndEndsTheChooser) {
  bool accepted = false;
  QObject::connect(defaultInstance<frmGetXIMU>().CheckOK, &QCheckBox::toggled,
                   [&](bool on) { accepted = on; });
  choose([this] {
    enter(0, ChosenQuantity, u"25"_s);
    accept();
  });
  EXPECT_TRUE(accepted);
  lines.clear();
  choose([this] { pressExit(); });
  EXPECT_FALSE(accepted);
  EXPECT_TRUE(lines.isEmpty());
  EXPECT_FALSE(isLoaded<frmGetXIMU>());
}

TEST_F(ChosenLines, EscAndTheWindowsButtonCancelAndKeepWhatWasTyped) {
  choose([this] {
    enter(0, ChosenQuantity, u"25"_s);
    key(Qt::Key_Escape);
  });
  EXPECT_TRUE(lines.isEmpty());
  EXPECT_TRUE(isLoaded<frmGetXIMU>());
  choose([this] {
    clickCell(1, ChosenQuantity);
    type(u"不少"_s);
    screen().close();
  });
  EXPECT_TRUE(lines.isEmpty());
  EXPECT_EQ(row(0).subItem(ChosenQuantity), u"25"_s);
  EXPECT_EQ(row(1).subItem(ChosenQuantity), u"0"_s) << "an open cell is not asked";
}

TEST_F(ChosenLines, TheWindowsButtonWaitsForAReadUnderWay) {
  frmGetXIMU& chooser = screen();
  state.forms.gate.hold();
  EXPECT_FALSE(chooser.close());
  EXPECT_TRUE(chooser.isVisible());
  state.forms.gate.release();
  chooser.close();
  EXPECT_FALSE(chooser.isVisible());
}

TEST_F(ChosenLines, TheNextOpeningMarksWhatWasTaken) {
  choose([this] {
    enter(1, ChosenQuantity, u"2"_s);
    accept();
  });
  choose([this] {
    EXPECT_FALSE(row(0).isChecked());
    EXPECT_TRUE(row(1).isChecked());
    cancel();
  });
}

TEST_F(ChosenLines, RowsComeInTheOrderThatTheyAreSortedIn) {
  choose([this] {
    clickTitle(ChosenName);
    for (int index = 0; index < 3; ++index) enter(index, ChosenQuantity, u"1"_s);
    accept();
  });
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0].texts[LineName], u"English Reader"_s);
}

class GoodsSearchBox : public ChooserFixture {
 protected:
  GoodsSearchBox() { offerOnePage(); }

  void find(const QString& text) {
    screen().Text1->setText(text);
    click(screen().command1);
  }
  QString selected() { return list().selectedItem()->text(); }
};

TEST_F(GoodsSearchBox, FindsTheWordWithoutTheBlanksAroundIt) {
  screen();
  find(u"  数学 "_s);
  EXPECT_EQ(selected(), u"高等数学"_s);
  EXPECT_TRUE(list().hasFocus());
}

TEST_F(GoodsSearchBox, CaseDoesNotCount) {
  screen();
  find(u"eNGLISH"_s);
  EXPECT_EQ(selected(), u"English Reader"_s);
}

TEST_F(GoodsSearchBox, StartsBehindTheSelectedRowAndWrapsRound) {
  screen();
  find(u"学"_s);
  EXPECT_EQ(selected(), u"高等数学"_s) << "the first row is selected and comes last";
  click(screen().command1);
  EXPECT_EQ(selected(), u"大学语文"_s);
  find(u"语文"_s);
  EXPECT_EQ(selected(), u"大学语文"_s) << "the selected row is found, too";
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsSearchBox, LooksAtTheNamesAlone) {
  screen();
  boxes->expect(Answer::Ok);
  find(u"978"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"没有匹配的条目"_s});
}

TEST_F(GoodsSearchBox, SaysWhenNothingMatchesAndLeavesTheSelection) {
  screen();
  boxes->expect(Answer::Ok);
  find(u"物理"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"没有匹配的条目"_s});
  EXPECT_EQ(selected(), u"大学语文"_s);
}

TEST_F(GoodsSearchBox, AnEmptyBoxDoesNothing) {
  screen();
  list().setSelectedItem(&row(1));
  find({});
  EXPECT_EQ(selected(), u"高等数学"_s);
  EXPECT_EQ(boxes->texts(), QStringList{});
}

TEST_F(GoodsSearchBox, BlanksAloneStandInEveryName) {
  screen();
  find(u"  "_s);
  EXPECT_EQ(selected(), u"高等数学"_s);
}

TEST_F(GoodsSearchBox, AnEmptyListHasNoMatch) {
  portal.answerWith({count(u"0"_s), page({})});
  screen();
  boxes->expect(Answer::Ok);
  find(u"学"_s);
  EXPECT_EQ(boxes->texts(), QStringList{u"没有匹配的条目"_s});
}

TEST_F(GoodsSearchBox, EnterInTheBoxSearches) {
  screen();
  QTest::mouseClick(screen().Text1->editor(), Qt::LeftButton);
  type(u"English"_s);
  key(Qt::Key_Return);
  EXPECT_EQ(selected(), u"English Reader"_s);
  EXPECT_TRUE(screen().isVisible());
  EXPECT_FALSE(screen().command1->isDefault()) << "on the list Enter opens a cell";
}

}  // namespace
