#include "shell/FrmINTERNET.h"

#include <QCheckBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>

#include "ShellTest.h"

namespace qinghe {
namespace {

class FrmINTERNETTest : public ShellTest {
 protected:
  /// Loads the dialog and puts it on the screen.
  FrmINTERNET& open() {
    auto& form = defaultInstance<FrmINTERNET>();
    form.showForm();
    form.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
    return form;
  }

  static void click(QWidget* control) {
    QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(10, control->height() / 2));
  }

  static void type(TextBox* box, const QString& text) {
    box->selectAll();
    QTest::keyClick(box->editor(), Qt::Key_Delete);
    QTest::keyClicks(box->editor(), text);
  }

  static QStringList entries(const FrmINTERNET& form) {
    QStringList texts;
    for (int row = 0; row < form.List1->count(); ++row) texts << form.List1->item(row)->text();
    return texts;
  }

  QStringList stored() const {
    QStringList texts;
    for (const auto& key : {u"WebServer"_s, u"AccessType"_s, u"Proxy"_s, u"Unicode"_s,
                            u"AutoDial"_s, u"AutoPeer"_s, u"PageSize"_s, u"ViewPict"_s})
      texts << key + u'=' + state.settings.text(key);
    return texts;
  }

  static QStringList defaults() {
    return {u"WebServer=127.0.0.1:8180"_s,
            u"AccessType=0"_s,
            u"Proxy="_s,
            u"Unicode=1"_s,
            u"AutoDial=0"_s,
            u"AutoPeer=0"_s,
            u"PageSize=10"_s,
            u"ViewPict=0"_s};
  }
};

TEST_F(FrmINTERNETTest, HasItsControlsWithTheirNamesAndCaptions) {
  auto& form = open();
  EXPECT_EQ(form.objectName(), u"FrmINTERNET"_s);
  EXPECT_EQ(form.windowTitle(), u"网络设置"_s);
  const QList<std::pair<QString, QString>> captions{{u"CheckAutoDial"_s, u"自动调用拨号网络"_s},
                                                    {u"CheckAutoPeer"_s, u"启动时启动消息窗口"_s},
                                                    {u"CheckViewPict"_s, u"在所有窗口中显示图片"_s},
                                                    {u"Option1"_s, u"默认"_s},
                                                    {u"Option2"_s, u"拨号上网"_s},
                                                    {u"Option3"_s, u"局域网代理(X.X.X.X:PORT)"_s},
                                                    {u"Command1"_s, u"添加"_s},
                                                    {u"Command2"_s, u"删除"_s},
                                                    {u"Option4"_s, u"POST方式(慢)"_s},
                                                    {u"Option5"_s, u"混合方式(较快)"_s},
                                                    {u"Option6"_s, u"GET方式(快)"_s},
                                                    {u"Command3"_s, u"确认"_s},
                                                    {u"Command4"_s, u"取消"_s}};
  for (const auto& [name, caption] : captions) {
    const auto* button = form.findChild<QAbstractButton*>(name);
    ASSERT_NE(button, nullptr) << utf8(name);
    EXPECT_EQ(button->text(), caption);
  }
  for (const auto& name : {u"TextWebServer"_s, u"TextPage"_s, u"TextProxy"_s, u"List1"_s})
    EXPECT_NE(form.findChild<QWidget*>(name), nullptr) << utf8(name);
  QStringList frames;
  for (const auto* box : form.findChildren<QGroupBox*>()) frames << box->title();
  EXPECT_EQ(frames, (QStringList{u"服务器设置"_s, u"网络代理"_s, u"数据/安全提交方式"_s}));
  QStringList labels;
  for (const auto* label : form.findChildren<QLabel*>()) labels << label->text();
  EXPECT_TRUE(labels.contains(u"分页显示行数："_s));
}

TEST_F(FrmINTERNETTest, ShowsItsDefaultsOnTheFirstRun) {
  auto& form = open();
  EXPECT_EQ(form.TextWebServer->text(), u"127.0.0.1:8180"_s);
  EXPECT_TRUE(form.Option1->isChecked());
  EXPECT_TRUE(form.Option5->isChecked());
  EXPECT_FALSE(form.CheckAutoDial->isChecked());
  EXPECT_FALSE(form.CheckAutoPeer->isChecked());
  EXPECT_FALSE(form.CheckViewPict->isChecked());
  EXPECT_EQ(form.TextPage->text(), u"10"_s);
  EXPECT_EQ(form.List1->count(), 0);
}

TEST_F(FrmINTERNETTest, CancellingTheFirstRunStoresTheDefaults) {
  auto& form = open();
  click(form.Command4);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(stored(), defaults());
}

TEST_F(FrmINTERNETTest, ClosingTheFirstRunByItsWindowStoresTheDefaults) {
  open().close();
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(stored(), defaults());
}

TEST_F(FrmINTERNETTest, CancellingTheFirstRunStoresWhatTheControlsHold) {
  auto& form = open();
  type(form.TextWebServer, u"portal.example"_s);
  click(form.Option6);
  click(form.CheckAutoPeer);
  click(form.Command4);
  EXPECT_EQ(stored(), (QStringList{u"WebServer=portal.example"_s, u"AccessType=0"_s, u"Proxy="_s,
                                   u"Unicode=2"_s, u"AutoDial=0"_s, u"AutoPeer=1"_s,
                                   u"PageSize=10"_s, u"ViewPict=0"_s}));
}

TEST_F(FrmINTERNETTest, CancellingLaterChangesNothing) {
  state.settings.set(u"WebServer"_s, u"portal.example"_s);
  state.settings.set(u"Unicode"_s, u"2"_s);
  const QStringList before = stored();
  state.gUnicode = 7;
  auto& form = open();
  click(form.Option4);
  click(form.CheckAutoDial);
  click(form.Command4);
  EXPECT_EQ(stored(), before);
  EXPECT_EQ(state.gUnicode, 7);
}

TEST_F(FrmINTERNETTest, ShowsWhatIsStored) {
  state.settings.set(u"WebServer"_s, u"portal.example"_s);
  state.settings.set(u"AccessType"_s, u"2"_s);
  state.settings.set(u"Proxy"_s, u"HTTP=10.0.0.1:80 HTTP=10.0.0.2:81"_s);
  state.settings.set(u"Unicode"_s, u"0"_s);
  state.settings.set(u"AutoDial"_s, u"1"_s);
  state.settings.set(u"AutoPeer"_s, u"1"_s);
  state.settings.set(u"PageSize"_s, u"25"_s);
  state.settings.set(u"ViewPict"_s, u"1"_s);
  auto& form = open();
  EXPECT_TRUE(form.Option3->isChecked());
  EXPECT_EQ(entries(form), (QStringList{u"10.0.0.1:80"_s, u"10.0.0.2:81"_s}));
  EXPECT_TRUE(form.Option4->isChecked());
  EXPECT_TRUE(form.CheckAutoDial->isChecked());
  EXPECT_TRUE(form.CheckAutoPeer->isChecked());
  EXPECT_TRUE(form.CheckViewPict->isChecked());
  EXPECT_EQ(form.TextPage->text(), u"25"_s);
}

TEST_F(FrmINTERNETTest, TheStoredServerIsNotShownAndConfirmingWritesTheBuiltInOne) {
  state.settings.set(u"WebServer"_s, u"portal.example"_s);
  state.gWebServer = u"HTTP://portal.example/"_s;
  auto& form = open();
  EXPECT_EQ(form.TextWebServer->text(), u"127.0.0.1:8180"_s);
  click(form.Command3);
  EXPECT_EQ(state.settings.text(u"WebServer"_s), u"127.0.0.1:8180"_s);
  // It takes effect at the next start.
  EXPECT_EQ(state.gWebServer, u"HTTP://portal.example/"_s);
}

TEST_F(FrmINTERNETTest, OtherTextsOfTheOptionsKeepTheFormsOwn) {
  state.settings.set(u"WebServer"_s, u"x"_s);
  for (const auto& odd : {u"3"_s, u" 1"_s, u"01"_s, u"x"_s, u"-1"_s}) {
    state.settings.set(u"AccessType"_s, odd);
    state.settings.set(u"Unicode"_s, odd);
    auto& form = open();
    EXPECT_TRUE(form.Option1->isChecked()) << utf8(odd);
    EXPECT_TRUE(form.Option5->isChecked()) << utf8(odd);
    form.unload();
  }
}

TEST_F(FrmINTERNETTest, ConfirmingStoresEverythingAndReadsItIntoTheState) {
  auto& form = open();
  type(form.TextWebServer, u"portal.example:81"_s);
  click(form.Option3);
  type(form.TextProxy, u"  10.0.0.1:8080 "_s);
  click(form.Command1);
  EXPECT_EQ(form.TextProxy->text(), QString());
  type(form.TextProxy, u"10.0.0.2:81"_s);
  click(form.Command1);
  click(form.Option6);
  click(form.CheckAutoDial);
  click(form.CheckViewPict);
  type(form.TextPage, u"30"_s);
  click(form.Command3);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(stored(),
            (QStringList{u"WebServer=portal.example:81"_s, u"AccessType=2"_s,
                         u"Proxy=HTTP=10.0.0.1:8080 HTTP=10.0.0.2:81"_s, u"Unicode=2"_s,
                         u"AutoDial=1"_s, u"AutoPeer=0"_s, u"PageSize=30"_s, u"ViewPict=1"_s}));
  EXPECT_EQ(state.gAccessType, 2);
  EXPECT_EQ(state.gProxy, u"HTTP=10.0.0.1:8080 HTTP=10.0.0.2:81"_s);
  EXPECT_EQ(state.gUnicode, 2);
  EXPECT_EQ(state.gAutoDial, 1);
  EXPECT_EQ(state.gAutoPeer, 1);
  EXPECT_EQ(state.gPageSize, 30);
  EXPECT_EQ(state.gViewPict, 1);
}

TEST_F(FrmINTERNETTest, EveryOptionStoresItsNumber) {
  for (int i = 0; i < 3; ++i) {
    auto& form = open();
    const std::array access{form.Option1, form.Option2, form.Option3};
    const std::array modes{form.Option4, form.Option5, form.Option6};
    click(access.at(static_cast<size_t>(i)));
    click(modes.at(static_cast<size_t>(i)));
    click(form.Command3);
    EXPECT_EQ(state.settings.text(u"AccessType"_s), QString::number(i));
    EXPECT_EQ(state.settings.text(u"Unicode"_s), QString::number(i));
    EXPECT_EQ(state.gAccessType, i);
    EXPECT_EQ(state.gUnicode, i);
  }
}

TEST_F(FrmINTERNETTest, ANewProxyReachesTheTransferControlOneConfirmLate) {
  state.gAccessType = 1;
  state.gProxy = u"HTTP=old:80"_s;
  auto* form = &open();
  click(form->Option3);
  type(form->TextProxy, u"new:80"_s);
  click(form->Command1);
  click(form->Command3);
  EXPECT_EQ(state.gProxy, u"HTTP=new:80"_s);
  EXPECT_EQ(state.inetQuotes.Proxy, u"HTTP=old:80"_s);
  EXPECT_EQ(state.inetQuotes.AccessType, 1);

  form = &open();
  click(form->Command3);
  EXPECT_EQ(state.inetQuotes.Proxy, u"HTTP=new:80"_s);
  EXPECT_EQ(state.inetQuotes.AccessType, 2);
}

TEST_F(FrmINTERNETTest, TheMessageWindowsBoxDecidesNothingButItsOwnMark) {
  auto* form = &open();
  click(form->CheckAutoPeer);
  click(form->Command3);
  EXPECT_EQ(state.settings.text(u"AutoPeer"_s), u"1"_s);
  EXPECT_EQ(state.gAutoPeer, 0);
  EXPECT_TRUE(open().CheckAutoPeer->isChecked());
}

TEST_F(FrmINTERNETTest, EmptyAndRepeatedProxiesAreTaken) {
  auto& form = open();
  click(form.Command1);
  for (int i = 0; i < 2; ++i) {
    type(form.TextProxy, u"a:80"_s);
    click(form.Command1);
  }
  EXPECT_EQ(entries(form), (QStringList{QString(), u"a:80"_s, u"a:80"_s}));
  click(form.Command3);
  EXPECT_EQ(state.settings.text(u"Proxy"_s), u"HTTP= HTTP=a:80 HTTP=a:80"_s);
}

TEST_F(FrmINTERNETTest, OneProxyIsStoredWithoutABlank) {
  auto& form = open();
  type(form.TextProxy, u"a:80"_s);
  click(form.Command1);
  click(form.Command3);
  EXPECT_EQ(state.settings.text(u"Proxy"_s), u"HTTP=a:80"_s);
}

TEST_F(FrmINTERNETTest, RemovesTheSelectedProxy) {
  state.settings.set(u"WebServer"_s, u"x"_s);
  state.settings.set(u"Proxy"_s, u"HTTP=a HTTP=b HTTP=c"_s);
  auto& form = open();
  QTest::mouseClick(form.List1->viewport(), Qt::LeftButton, {},
                    form.List1->visualItemRect(form.List1->item(1)).center());
  click(form.Command2);
  EXPECT_EQ(entries(form), (QStringList{u"a"_s, u"c"_s}));
}

TEST_F(FrmINTERNETTest, RemovingWithNoneSelectedSaysSoAndLeavesTheList) {
  state.settings.set(u"WebServer"_s, u"x"_s);
  state.settings.set(u"Proxy"_s, u"HTTP=a HTTP=b"_s);
  auto& form = open();
  prompts->expect(Answer::Ok);
  click(form.Command2);
  EXPECT_EQ(prompts->texts(), QStringList{u"请先选择要删除的代理！"_s});
  EXPECT_EQ(entries(form), (QStringList{u"a"_s, u"b"_s}));
}

TEST_F(FrmINTERNETTest, AnEmptyServerIsStoredAndMakesTheNextStartAFirstRun) {
  auto& form = open();
  type(form.TextWebServer, QString());
  type(form.TextPage, QString());
  click(form.Command3);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(state.settings.text(u"WebServer"_s), QString());
  EXPECT_EQ(state.gPageSize, 0);
}

TEST_F(FrmINTERNETTest, ReturnAddsAProxyFromItsBoxAndConfirmsElsewhere) {
  auto& form = open();
  form.TextProxy->editor()->setFocus();
  QTest::keyClicks(form.TextProxy->editor(), u"a:80"_s);
  QTest::keyClick(form.TextProxy->editor(), Qt::Key_Return);
  EXPECT_EQ(entries(form), QStringList{u"a:80"_s});
  EXPECT_TRUE(isLoaded<FrmINTERNET>());
  form.TextPage->editor()->setFocus();
  QTest::keyClick(form.TextPage->editor(), Qt::Key_Return);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(state.gProxy, u"HTTP=a:80"_s);
}

TEST_F(FrmINTERNETTest, EscapeCancels) {
  state.settings.set(u"WebServer"_s, u"x"_s);
  auto& form = open();
  click(form.CheckAutoDial);
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(state.settings.text(u"AutoDial"_s), QString());
}

TEST_F(FrmINTERNETTest, ModallyItReturnsWhenItIsClosed) {
  QTimer::singleShot(0, &state.tray, [] { defaultInstance<FrmINTERNET>().Command4->click(); });
  defaultInstance<FrmINTERNET>().showModal();
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(stored(), defaults());
}

TEST_F(FrmINTERNETTest, AStoreThatCannotBeWrittenKeepsNobodyInTheDialog) {
  QFile blocker(folder.filePath(u"settings"_s));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  auto& form = open();
  click(form.Command3);
  EXPECT_FALSE(isLoaded<FrmINTERNET>());
  EXPECT_EQ(state.gPageSize, 0);
}

}  // namespace
}  // namespace qinghe
