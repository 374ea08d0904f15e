#include "shell/Settings.h"

#include <QDir>
#include <QFile>

#include "ShellTest.h"
#include "shell/FrmINTERNET.h"

namespace qinghe {
namespace {

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { settings.setFilePath(path()); }

  QString path() const { return folder.filePath(u"deep/qinghe.ini"_s); }

  void write(const QByteArray& content) const {
    ASSERT_TRUE(QDir().mkpath(folder.filePath(u"deep"_s)));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  QByteArray fileContent() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;
  Settings settings;
};

TEST_F(SettingsTest, AnUnsetKeyReadsAsTheEmptyTextAndAsZero) {
  EXPECT_EQ(settings.text(u"WebServer"_s), QString());
  EXPECT_EQ(settings.number(u"PageSize"_s), 0);
  EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(SettingsTest, EveryTextComesBackAsOneTextAlsoInTheNextRun) {
  const QStringList texts{u"HTTP=a:80 HTTP=b:80"_s,
                          u"a,b, c"_s,
                          u"青禾云集，电子商务"_s,
                          u" 前后有空格 "_s,
                          u"\"引号\" 'x' \\ / ; # % = [x]"_s,
                          u"@Invalid()"_s,
                          u"line one\r\nline two\ttab"_s,
                          u"0"_s,
                          u"𠮷野"_s,
                          QString()};
  for (const QString& text : texts) {
    settings.set(u"Proxy"_s, text);
    EXPECT_EQ(settings.text(u"Proxy"_s), text);
    Settings next;
    next.setFilePath(path());
    EXPECT_EQ(next.text(u"Proxy"_s), text);
  }
}

TEST_F(SettingsTest, StandsInTheGroupConfigOfAnIniFile) {
  settings.set(u"Unicode"_s, u"1"_s);
  const QByteArray content = fileContent();
  EXPECT_TRUE(content.contains("[config]")) << content.constData();
  EXPECT_TRUE(content.contains("Unicode=1")) << content.constData();
}

TEST_F(SettingsTest, ReadsTextsThatWereWrittenByHand) {
  write(
      "[config]\nWebServer=门户.example:8180\nProxy=HTTP=a,b:80\nPageSize=20\n"
      "[RemoteAccess]\nDefault=我的宽带\n");
  EXPECT_EQ(settings.text(u"WebServer"_s), u"门户.example:8180"_s);
  EXPECT_EQ(settings.text(u"Proxy"_s), u"HTTP=a,b:80"_s);
  EXPECT_EQ(settings.number(u"PageSize"_s), 20);
  EXPECT_EQ(settings.groupText(u"RemoteAccess"_s, u"Default"_s), u"我的宽带"_s);
  EXPECT_EQ(settings.groupText(u"RemoteAccess"_s, u"Other"_s), QString());
}

TEST_F(SettingsTest, ARemovedKeyIsUnset) {
  settings.set(u"dbAddress"_s, u"/data/DATA.MDB"_s);
  settings.remove(u"dbAddress"_s);
  EXPECT_EQ(settings.text(u"dbAddress"_s), QString());
  settings.remove(u"dbAddress"_s);
}

struct NumberCase {
  const char* name;
  QString text;
  qint16 number;
};

class SettingsNumber : public SettingsTest, public testing::WithParamInterface<NumberCase> {};

TEST_P(SettingsNumber, IsTheLeadingNumber) {
  settings.set(u"PageSize"_s, GetParam().text);
  EXPECT_EQ(settings.number(u"PageSize"_s), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SettingsNumber,
    testing::Values(NumberCase{"Plain", u"10"_s, 10}, NumberCase{"Empty", QString(), 0},
                    NumberCase{"NoNumber", u"行"_s, 0}, NumberCase{"Leading", u"15行"_s, 15},
                    NumberCase{"Negative", u"-3"_s, -3}, NumberCase{"Blanks", u"  7 "_s, 7},
                    NumberCase{"Largest", u"32767"_s, 32767},
                    NumberCase{"OneTooLarge", u"32768"_s, 0},
                    NumberCase{"Smallest", u"-32768"_s, -32768},
                    NumberCase{"OneTooSmall", u"-32769"_s, 0}, NumberCase{"Huge", u"1E300"_s, 0},
                    NumberCase{"Endless", u"1E999"_s, 0}, NumberCase{"HalfEven", u"2.5"_s, 2}),
    [](const auto& test) { return test.param.name; });

TEST_F(SettingsTest, ABrokenFileReadsAsUnsetAndTakesNewValues) {
  for (const QByteArray& broken :
       {QByteArray("\0\1\2\xff\xfe garbage [[[ = \n=\n[config", 30), QByteArray(100'000, '\xd6'),
        QByteArray("[config]\nWebServer=\"unclosed\\")}) {
    write(broken);
    EXPECT_EQ(settings.number(u"PageSize"_s), 0);
    settings.set(u"PageSize"_s, u"12"_s);
    EXPECT_EQ(settings.number(u"PageSize"_s), 12);
  }
}

TEST_F(SettingsTest, AFileThatCannotBeMadeIsNoFailure) {
  write("x");
  settings.setFilePath(path() + u"/below-a-file/qinghe.ini"_s);
  settings.set(u"PageSize"_s, u"12"_s);
  settings.remove(u"PageSize"_s);
  EXPECT_EQ(settings.text(u"WebServer"_s), QString());
}

TEST_F(SettingsTest, AFolderInTheFilesPlaceIsNoFailure) {
  settings.setFilePath(folder.path());
  settings.set(u"PageSize"_s, u"12"_s);
  EXPECT_EQ(settings.text(u"WebServer"_s), QString());
}

TEST_F(SettingsTest, StandsUnderTheProgramsNameInTheConfigurationFolder) {
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", folder.path().toLocal8Bit());
  EXPECT_EQ(Settings().filePath(), folder.filePath(u"qinghe/qinghe.ini"_s));
  before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
}

using ReadSettings = ShellTest;

TEST_F(ReadSettings, TakesEverySettingIntoTheState) {
  state.settings.set(u"WebServer"_s, u"elsewhere"_s);
  state.settings.set(u"AccessType"_s, u"2"_s);
  state.settings.set(u"Proxy"_s, u"HTTP=a:80 HTTP=b:81"_s);
  state.settings.set(u"Unicode"_s, u"1"_s);
  state.settings.set(u"AutoDial"_s, u"0"_s);
  state.settings.set(u"PageSize"_s, u"25"_s);
  state.settings.set(u"ViewPict"_s, u"1"_s);
  state.gWebServer = u"HTTP://portal/"_s;
  readSettingsIntoState();
  EXPECT_EQ(state.gAccessType, 2);
  EXPECT_EQ(state.gProxy, u"HTTP=a:80 HTTP=b:81"_s);
  EXPECT_EQ(state.gUnicode, 1);
  EXPECT_EQ(state.gAutoDial, 0);
  EXPECT_EQ(state.gPageSize, 25);
  EXPECT_EQ(state.gViewPict, 1);
  EXPECT_EQ(state.gWebServer, u"HTTP://portal/"_s);
}

TEST_F(ReadSettings, AutoPeerFollowsAutoDialAndNeverItsOwnKey) {
  state.settings.set(u"AutoDial"_s, u"1"_s);
  state.settings.set(u"AutoPeer"_s, u"0"_s);
  readSettingsIntoState();
  EXPECT_EQ(state.gAutoDial, 1);
  EXPECT_EQ(state.gAutoPeer, 1);

  state.settings.set(u"AutoDial"_s, u"0"_s);
  state.settings.set(u"AutoPeer"_s, u"1"_s);
  readSettingsIntoState();
  EXPECT_EQ(state.gAutoDial, 0);
  EXPECT_EQ(state.gAutoPeer, 0);
}

TEST_F(ReadSettings, AnEmptyPageSizeReadsAsZero) {
  state.gPageSize = 10;
  state.settings.set(u"PageSize"_s, QString());
  readSettingsIntoState();
  EXPECT_EQ(state.gPageSize, 0);
}

TEST_F(ReadSettings, AnEmptyStoreReadsAsZerosAndEmptyTexts) {
  state.gAccessType = 2;
  state.gProxy = u"x"_s;
  readSettingsIntoState();
  EXPECT_EQ(state.gAccessType, 0);
  EXPECT_EQ(state.gProxy, QString());
  EXPECT_EQ(state.gUnicode, 0);
}

}  // namespace
}  // namespace qinghe
