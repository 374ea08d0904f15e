#include "catalogue/pickers/frmGetSHXI.h"

#include <gtest/gtest.h>

#include <QtTest/qtestspontaneevent.h>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>

#include "support/PickerFixture.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

const QList<QStringList> names = {
    {u"9"_s, u" 作者 "_s}, {u"10"_s, u"版次"_s}, {u"11"_s, u"开本"_s}};

class Attributes : public PickerFixture {
 protected:
  Attributes() {
    beCompany(1, 0);
    portal.answerWith({page(names)});
  }

  QString edit(const QString& text, const std::function<void(frmGetSHXI&)>& steps) {
    whileShown<frmGetSHXI>(steps);
    return defaultInstance<frmGetSHXI>().edit(text);
  }

  static QStringList cells(const frmGetSHXI& screen) {
    QStringList result;
    for (int row = 0; row < screen.ListView1->itemCount(); ++row) {
      result.append(screen.ListView1->itemAt(row)->subItem(1));
    }
    return result;
  }

  static QPoint cell(const frmGetSHXI& screen, int row, int column = 1) {
    return screen.ListView1->cellRect(screen.ListView1->itemAt(row), column).center();
  }
  static void pressCell(frmGetSHXI& screen, int row) {
    QTest::mouseClick(screen.ListView1->viewport(), Qt::LeftButton, {}, cell(screen, row));
  }
  static void type(frmGetSHXI& screen, int row, const QString& text) {
    pressCell(screen, row);
    ASSERT_TRUE(screen.txtSelect->isVisible());
    qobject_cast<QLineEdit*>(screen.txtSelect->editor())->insert(text);
  }
};

struct KindRow {
  qint16 kind;
  QString digit;
};
void PrintTo(const KindRow& row, std::ostream* out) {
  *out << row.kind;
}

class AttributeKinds : public Attributes, public testing::WithParamInterface<KindRow> {};

TEST_P(AttributeKinds, AreAskedForByIndustryAndKindByteByByte) {
  state.gShxiKind = GetParam().kind;
  defaultInstance<frmGetSHXI>();
  EXPECT_EQ(targets(),
            QStringList{u"/_vti_login/_vti_detail_field_s.asp?STABLE=%53%48%58%49"
                        "&STRDATA=%69%64%2C%73%68%78%69%2C"
                        "&STOTHER=%48%41%59%45%5F%49%44%3D%33%20%61%6E%64%20%78%75%7A%65%3D"_s +
                        GetParam().digit});
}

INSTANTIATE_TEST_SUITE_P(GoodsServicesBrands, AttributeKinds,
                         testing::Values(KindRow{0, u"%30"_s}, KindRow{1, u"%31"_s},
                                         KindRow{2, u"%32"_s}));

TEST_F(Attributes, LoadListsTheNamesWithoutBlanksAroundThem) {
  auto& screen = defaultInstance<frmGetSHXI>();
  EXPECT_EQ(screen.objectName(), u"frmGetSHXI"_s);
  EXPECT_EQ(screen.windowTitle(), u"其它属性"_s);
  ASSERT_EQ(screen.ListView1->itemCount(), 3);
  EXPECT_EQ(screen.ListView1->itemAt(0)->key(), u"9 ID"_s);
  EXPECT_EQ(screen.ListView1->itemAt(0)->text(), u"作者"_s);
  EXPECT_EQ(screen.ListView1->itemAt(0)->icon(), u"Shxi"_s);
  const auto* titles = screen.ListView1->model();
  EXPECT_EQ(titles->headerData(0, Qt::Horizontal).toString(), u"名称"_s);
  EXPECT_EQ(titles->headerData(1, Qt::Horizontal).toString(), u"内容"_s);
  EXPECT_EQ(screen.txtSelect->objectName(), u"txtSelect"_s);
}

TEST_F(Attributes, StandsFiftySevenPixelsAboveTheMiddleOfTheScreen) {
  edit(QString(), [](frmGetSHXI& screen) {
    const QPoint middle = screen.screen()->geometry().center() - QPoint(0, 57);
    EXPECT_LE((screen.pos() + screen.rect().center() - middle).manhattanLength(), 2);
  });
}

TEST_F(Attributes, TheSecondColumnIsAsWideAsTheListLess1540Twips) {
  edit(QString(), [](frmGetSHXI& screen) {
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return screen.ListView1->columnWidth(1) == screen.ListView1->viewport()->width() - 1540 / 15;
    }));
  });
}

struct FillRow {
  QString text;
  QStringList cells;
};
void PrintTo(const FillRow& row, std::ostream* out) {
  *out << row.text.toStdString();
}

class AttributeFill : public Attributes, public testing::WithParamInterface<FillRow> {};

TEST_P(AttributeFill, PutsThePiecesIntoTheRowsInOrder) {
  edit(GetParam().text, [](frmGetSHXI& screen) { EXPECT_EQ(cells(screen), GetParam().cells); });
  EXPECT_TRUE(boxes->asked.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, AttributeFill,
    testing::Values(FillRow{u"沈青禾,2,32开,"_s, {u"沈青禾"_s, u"2"_s, u"32开"_s}},
                    FillRow{u"沈青禾,2,32开"_s, {u"沈青禾"_s, u"2"_s, QString()}},
                    FillRow{u"沈青禾,"_s, {u"沈青禾"_s, QString(), QString()}},
                    FillRow{QString(), {QString(), QString(), QString()}},
                    FillRow{u"a,b,c,d,e,"_s, {u"a"_s, u"b"_s, u"c"_s}},
                    FillRow{u",,,,,,,,"_s, {QString(), QString(), QString()}}));

TEST_F(Attributes, AGridWithoutRowsTakesAnyText) {
  portal.answerWith({page({})});
  const QString text = edit(u"a,b,"_s, [](frmGetSHXI& screen) {
    QTest::mouseClick(screen.ListView1->viewport(), Qt::LeftButton, {}, QPoint(150, 40));
    EXPECT_FALSE(screen.txtSelect->isVisible());
    press(screen.commandC);
  });
  EXPECT_EQ(text, QString()) << "nothing to give is as good as cancelled";
}

TEST_F(Attributes, AcceptGivesEachValueWithACommaBehindIt) {
  const QString text =
      edit(u"沈青禾,2,32开,"_s, [](frmGetSHXI& screen) { press(screen.commandC); });
  EXPECT_EQ(text, u"沈青禾,2,32开,"_s);
  EXPECT_EQ(defaultInstance<frmGetSHXI>().Tag, text);
  EXPECT_FALSE(defaultInstance<frmGetSHXI>().isVisible());
}

TEST_F(Attributes, AnEmptyGridIsAcceptedAsCommas) {
  EXPECT_EQ(edit(QString(), [](frmGetSHXI& screen) { press(screen.commandC); }), u",,,"_s);
}

TEST_F(Attributes, ACommaInAValueComesBackAsASemicolon) {
  const QString text = edit(QString(), [](frmGetSHXI& screen) {
    type(screen, 1, u"一,二"_s);
    press(screen.commandC);
  });
  EXPECT_EQ(text, u",一;二,,"_s);
}

TEST_F(Attributes, CancelGivesNothingAndKeepsTheForm) {
  const QString text = edit(u"甲,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"乙"_s);
    press(screen.commandT);
    EXPECT_FALSE(screen.txtSelect->isVisible()) << "the edit has ended";
  });
  EXPECT_EQ(text, QString());
  EXPECT_TRUE(isLoaded<frmGetSHXI>());
}

TEST_F(Attributes, EscAndTheCloseBoxCancelAndUnload) {
  for (const bool byKey : {true, false}) {
    const QString text = edit(u"甲,"_s, [byKey](frmGetSHXI& screen) {
      if (byKey) {
        QTest::keyClick(&screen, Qt::Key_Escape);
      } else {
        screen.close();
      }
    });
    EXPECT_EQ(text, QString());
    EXPECT_FALSE(isLoaded<frmGetSHXI>());
  }
}

TEST_F(Attributes, APressOnAValueOpensTheInputOverItWithItsWholeTextSelected) {
  edit(u"沈青禾,2,32开,"_s, [](frmGetSHXI& screen) {
    pressCell(screen, 2);
    ASSERT_TRUE(screen.txtSelect->isVisible());
    auto* line = qobject_cast<QLineEdit*>(screen.txtSelect->editor());
    EXPECT_TRUE(line->hasFocus());
    EXPECT_EQ(line->text(), u"32开"_s);
    EXPECT_EQ(line->selectedText(), u"32开"_s);
    const auto* list = screen.ListView1;
    const QRect cellRect = list->cellRect(list->itemAt(2), 1);
    EXPECT_EQ(screen.txtSelect->height(), qRound((cellRect.height() * 15 - 16) / 15.0));
    EXPECT_EQ(screen.txtSelect->width(), qRound((cellRect.width() * 15 - 96) / 15.0));
    const QRect place(list->viewport()->mapFrom(&screen, screen.txtSelect->pos()),
                      screen.txtSelect->size());
    EXPECT_TRUE(cellRect.contains(place.center()));
  });
}

TEST_F(Attributes, OnlyALeftPressRightOfTheColumnsEdgeOnARowOpensIt) {
  edit(u"甲,乙,丙,"_s, [](frmGetSHXI& screen) {
    auto* viewport = screen.ListView1->viewport();
    const int y = cell(screen, 1).y();
    const int edge = screen.ListView1->columnViewportPosition(1);
    struct Press {
      Qt::MouseButton button;
      QPoint at;
      bool opens;
    };
    const QList<Press> presses = {
        {Qt::RightButton, cell(screen, 1), false},
        {Qt::MiddleButton, cell(screen, 1), false},
        {Qt::LeftButton, {edge - 2, y}, false},
        {Qt::LeftButton, {edge, y}, false},
        {Qt::LeftButton, {edge + 1, y}, true},
        {Qt::LeftButton, {edge + 40, viewport->height() - 5}, false},
        {Qt::LeftButton, {viewport->width() - 2, y}, true},
    };
    for (const Press& press : presses) {
      QTest::mouseClick(viewport, press.button, {}, press.at);
      EXPECT_EQ(screen.txtSelect->isVisible(), press.opens) << press.at.x() << "," << press.at.y();
    }
  });
}

TEST_F(Attributes, APressOnAnotherRowWritesTheTextToTheRowWhereItWasTyped) {
  edit(u"甲,乙,丙,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"新"_s);
    pressCell(screen, 2);
    EXPECT_EQ(cells(screen), QStringList({u"新"_s, u"乙"_s, u"丙"_s}));
    EXPECT_TRUE(screen.txtSelect->isVisible());
    EXPECT_EQ(screen.txtSelect->text(), u"丙"_s);
    QTest::mouseClick(screen.ListView1->viewport(), Qt::LeftButton, {},
                      QPoint(150, screen.ListView1->viewport()->height() - 5));
    EXPECT_FALSE(screen.txtSelect->isVisible()) << "a press on empty space ends the edit";
    EXPECT_EQ(cells(screen), QStringList({u"新"_s, u"乙"_s, u"丙"_s}));
  });
}

TEST_F(Attributes, AcceptByItsKeyTakesWhatIsBeingTyped) {
  const QString text = edit(QString(), [](frmGetSHXI& screen) {
    type(screen, 1, u"第二版"_s);
    screen.commandC->click();  // as its mnemonic does, without the focus moving
  });
  EXPECT_EQ(text, u",第二版,,"_s);
}

TEST_F(Attributes, EscInTheInputLeavesTheValueAndTheForm) {
  edit(u"甲,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"乙"_s);
    QTest::keyClick(screen.txtSelect->editor(), Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    EXPECT_EQ(cells(screen).first(), u"甲"_s);
  });
}

TEST_F(Attributes, ReopenedItKeepsTheNamesOfItsFirstOpenerAndTheCellsBehindTheNewText) {
  edit(u"甲,乙,丙,"_s, [](frmGetSHXI& screen) { press(screen.commandC); });
  state.gShxiKind = 2;
  portal.answerWith({page({{u"16"_s, u"创立年份"_s}})});
  edit(u"新,"_s, [](frmGetSHXI& screen) {
    EXPECT_EQ(screen.ListView1->itemCount(), 3);
    EXPECT_EQ(cells(screen), QStringList({u"新"_s, u"乙"_s, u"丙"_s}));
  });
  EXPECT_EQ(portal.requests().size(), 1);
}

TEST_F(Attributes, OneShowingReadsTheTextOnlyOnce) {
  edit(u"甲,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"乙"_s);
    screen.ListView1->setFocus();
    app().forms.activeForm.leave(&screen);  // as by another window of the program in front
    app().forms.activeForm.enter(&screen);
    EXPECT_EQ(cells(screen).first(), u"乙"_s);
  });
}

TEST_F(Attributes, ComingBackFromItsIconItDoesNotReadTheTextAgain) {
  edit(u"甲,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"乙"_s);
    screen.ListView1->setFocus();
    QShowEvent back;
    QSpontaneKeyEvent::setSpontaneous(&back);
    qApp->notify(&screen, &back);
    app().forms.activeForm.leave(&screen);
    app().forms.activeForm.enter(&screen);
    EXPECT_EQ(cells(screen).first(), u"乙"_s);
  });
}

TEST_F(Attributes, CancelByItsKeyEndsTheEditToo) {
  edit(u"甲,"_s, [](frmGetSHXI& screen) {
    type(screen, 0, u"乙"_s);
    screen.commandT->click();  // as its mnemonic does, without the focus moving
    EXPECT_TRUE(screen.txtSelect->isHidden());
  });
  edit(u"丙,"_s, [](frmGetSHXI& screen) {
    EXPECT_TRUE(screen.txtSelect->isHidden());
    EXPECT_EQ(cells(screen).first(), u"丙"_s);
  });
}

TEST_F(Attributes, APortalFailureLeavesTheGridShortWithoutAWord) {
  portal.answerWith({"<html></html>"});
  EXPECT_EQ(defaultInstance<frmGetSHXI>().ListView1->itemCount(), 0);
  EXPECT_TRUE(boxes->asked.isEmpty());
}

}  // namespace
