#include "forms/Prompts.h"

#include <gtest/gtest-spi.h>

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "forms/FormsFixture.h"

using namespace Qt::StringLiterals;
using qinghe::Answer;
using qinghe::Buttons;
using qinghe::DesktopPrompts;
using qinghe::Mark;
using qinghe::Message;

namespace {

class PromptsTest : public FormsFixture {
 protected:
  /// Does something with the dialog that the next question opens.
  template <class Dialog>
  void whenOpen(std::function<void(Dialog&)> act) {
    QTimer::singleShot(0, &timerHome_, [act = std::move(act)] {
      auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      act(*dialog);
      if (dialog->isVisible()) dialog->reject();
    });
  }

  static QStringList captions(const QMessageBox& box) {
    QStringList result;
    for (const auto* button : box.buttons()) result << button->text();
    return result;
  }

  QObject timerHome_;
  DesktopPrompts prompts_;
};

}  // namespace

TEST_F(PromptsTest, TheSeatIsTheStates) {
  EXPECT_EQ(&qinghe::prompts(), scripted_);
  scripted_->expect(Answer::No);
  EXPECT_EQ(qinghe::prompts().ask(nullptr, {u"x"_s, {}, Buttons::YesNo}), Answer::No);
  EXPECT_EQ(scripted_->texts(), QStringList{u"x"_s});
}

TEST_F(PromptsTest, ABoxShowsPlainTextTitleAndMark) {
  whenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.text(), u"<b>数据</b>"_s);
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowTitle(), u"测试"_s);
    EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
    EXPECT_EQ(captions(box), QStringList{u"确定"_s});
  });
  EXPECT_EQ(prompts_.ask(nullptr, {u"<b>数据</b>"_s}), Answer::Ok);

  whenOpen<QMessageBox>([](QMessageBox& box) {
    EXPECT_EQ(box.windowTitle(), u"计算器"_s);
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
  });
  prompts_.ask(nullptr, {u"x"_s, u"计算器"_s, Buttons::Ok, Mark::Critical});
}

TEST_F(PromptsTest, TheButtonsAnswerAndTheFirstIsTheDefault) {
  struct Case {
    Buttons buttons;
    QStringList captions;
    QList<Answer> answers;
  };
  const Case cases[] = {
      {Buttons::Ok, {u"确定"_s}, {Answer::Ok}},
      {Buttons::YesNo, {u"是(&Y)"_s, u"否(&N)"_s}, {Answer::Yes, Answer::No}},
      {Buttons::YesNoCancel,
       {u"是(&Y)"_s, u"否(&N)"_s, u"取消"_s},
       {Answer::Yes, Answer::No, Answer::Cancel}},
  };
  for (const auto& one : cases) {
    for (qsizetype i = 0; i < one.captions.size(); ++i) {
      whenOpen<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.defaultButton()->text(), one.captions.first());
        for (auto* button : box.buttons()) {
          if (button->text() == one.captions[i]) button->click();
        }
      });
      EXPECT_EQ(prompts_.ask(nullptr, {u"x"_s, {}, one.buttons}), one.answers[i]);
    }
    whenOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(prompts_.ask(nullptr, {u"x"_s, {}, one.buttons}), one.answers.last());
    whenOpen<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(prompts_.ask(nullptr, {u"x"_s, {}, one.buttons}), one.answers.first());
  }
}

TEST_F(PromptsTest, AnEndlessTextIsCut) {
  whenOpen<QMessageBox>([](QMessageBox& box) { EXPECT_LT(box.text().size(), 3000); });
  prompts_.ask(nullptr, {QString(1'000'000, u'x')});
}

TEST_F(PromptsTest, AParentThatGoesAwayAnswersLikeEsc) {
  auto* parent = new QWidget;
  parent->show();
  QTimer::singleShot(0, &timerHome_, [&] { delete parent; });
  EXPECT_EQ(prompts_.ask(parent, {u"x"_s, {}, Buttons::YesNoCancel}), Answer::Cancel);
}

TEST_F(PromptsTest, AFileIsOpenedAndSavedThroughADialogWithChineseLabels) {
  QTemporaryDir folder;
  const auto present = QDir(folder.path()).filePath(u"DATA.MDB"_s);
  QFile file(present);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();

  whenOpen<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), u"查找"_s);
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(dialog.nameFilters(), QStringList{u"Access (*.MDB)"_s});
    EXPECT_EQ(dialog.labelText(QFileDialog::Accept), u"打开"_s);
    EXPECT_EQ(dialog.labelText(QFileDialog::Reject), u"取消"_s);
    dialog.selectFile(present);
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  EXPECT_EQ(prompts_.openFile(nullptr, {u"查找"_s, folder.path(), {}, u"Access (*.MDB)"_s, {}}),
            present);

  whenOpen<QFileDialog>([&](QFileDialog& dialog) {
    EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
    EXPECT_EQ(dialog.labelText(QFileDialog::Accept), u"保存"_s);
    EXPECT_EQ(dialog.defaultSuffix(), u"pdf"_s);
    QMetaObject::invokeMethod(&dialog, "accept");
  });
  const auto saved = prompts_.saveFile(
      nullptr, {u"导出"_s, folder.path(), u"list.pdf"_s, u"PDF (*.pdf)"_s, u"pdf"_s});
  EXPECT_EQ(saved, QDir(folder.path()).filePath(u"list.pdf"_s));
}

TEST_F(PromptsTest, ACancelledFileDialogGivesNothing) {
  whenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(prompts_.openFile(nullptr, {}), std::nullopt);
  whenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(prompts_.saveFile(nullptr, {}), std::nullopt);
}

// The scripted seat

TEST(ScriptedPrompts, AnswersInOrderAndRecords) {
  qinghe::ScriptedPrompts seat;
  seat.expect(Answer::Yes);
  seat.expect(Answer::Ok);
  seat.expectFile(u"/tmp/a"_s);
  seat.expectFile(std::nullopt);
  QStringList seen;
  seat.onAsk = [&](const Message& message) { seen << message.text; };
  EXPECT_EQ(seat.ask(nullptr, {u"a"_s, {}, Buttons::YesNoCancel}), Answer::Yes);
  EXPECT_EQ(seat.ask(nullptr, {u"b"_s}), Answer::Ok);
  EXPECT_EQ(seat.openFile(nullptr, {u"open"_s, {}, {}, {}, {}}), u"/tmp/a"_s);
  EXPECT_EQ(seat.saveFile(nullptr, {u"save"_s, {}, {}, {}, {}}), std::nullopt);
  EXPECT_EQ(seat.texts(), (QStringList{u"a"_s, u"b"_s}));
  EXPECT_EQ(seen, seat.texts());
  EXPECT_EQ(seat.filesAsked.size(), 2);
}

TEST(ScriptedPrompts, AnUnexpectedQuestionFailsTheTest) {
  qinghe::ScriptedPrompts seat;
  EXPECT_NONFATAL_FAILURE(seat.ask(nullptr, {u"why"_s}), "unexpected message box: why");
  EXPECT_NONFATAL_FAILURE(seat.openFile(nullptr, {}), "unexpected file dialog");
}

TEST(ScriptedPrompts, AnAnswerWithoutAButtonFailsTheTest) {
  qinghe::ScriptedPrompts seat;
  seat.expect(Answer::Cancel);
  EXPECT_NONFATAL_FAILURE(seat.ask(nullptr, {u"x"_s, {}, Buttons::YesNo}), "no button");
}

TEST(ScriptedPrompts, ALeftOverAnswerFailsTheTest) {
  auto* seat = new qinghe::ScriptedPrompts;
  seat->expect(Answer::Ok);
  EXPECT_NONFATAL_FAILURE(delete seat, "never came");
  auto* files = new qinghe::ScriptedPrompts;
  files->expectFile(u"x"_s);
  EXPECT_NONFATAL_FAILURE(delete files, "never came");
}
