#include "shell/help.h"

#include <QLineEdit>
#include <QVBoxLayout>

#include "ShellTest.h"
#include "forms/Form.h"
#include "forms/Toolbar.h"

using namespace qinghe;

namespace {

class PlainForm : public Form {
 public:
  PlainForm() : Form(Kind::Window, u"PlainForm"_s, u"窗口"_s) {
    auto* all = new QVBoxLayout(this);
    all->addWidget(bar);
    all->addWidget(box);
  }
  Toolbar* bar = new Toolbar(u"Toolbar1"_s, this);
  QLineEdit* box = new QLineEdit(this);
};

class HelpKey : public ShellTest {
 protected:
  PlainForm& shown() {
    auto& form = defaultInstance<PlainForm>();
    form.showForm();
    QApplication::setActiveWindow(&form);
    form.box->setFocus();
    return form;
  }
};

TEST_F(HelpKey, F1RaisesTheToolbarsHelpKeyWhichHasNoButton) {
  auto& form = shown();
  giveHelpKey(form, *form.bar);
  QStringList keys;
  QObject::connect(form.bar, &Toolbar::buttonClick, &form,
                   [&](const QString& key) { keys.append(key); });
  QTest::keyClick(form.box, Qt::Key_F1);
  EXPECT_EQ(keys, QStringList{u"Help"_s});
  EXPECT_TRUE(form.bar->actions().isEmpty());
}

TEST_F(HelpKey, F1DoesNothingOnAScreenThatDoesNotKnowTheKey) {
  auto& form = shown();
  QStringList keys;
  QObject::connect(form.bar, &Toolbar::buttonClick, &form,
                   [&](const QString& key) { keys.append(key); });
  QTest::keyClick(form.box, Qt::Key_F1);
  EXPECT_TRUE(keys.isEmpty());
}

TEST_F(HelpKey, ShowHelpCallsWhatTheProgramHasSetAndIsQuietWithoutIt) {
  showHelp();
  int opened = 0;
  state.openHelp = [&] { ++opened; };
  showHelp();
  EXPECT_EQ(opened, 1);
}

}  // namespace
