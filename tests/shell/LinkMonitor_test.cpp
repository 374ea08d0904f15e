#include "shell/LinkMonitor.h"

#include <QDir>
#include <QFile>

#include "ShellTest.h"

namespace qinghe {
namespace {

TEST(NetworkLinks, NamesTheMachinesLinksWithoutLoopback) {
  NetworkLinks links;
  const auto entries = links.enumerate();
  ASSERT_TRUE(entries.has_value());
  EXPECT_FALSE(entries->contains(u"lo"_s));
  for (const QString& entry : *entries)
    EXPECT_TRUE(QDir(u"/sys/class/net"_s).exists(entry)) << utf8(entry);
  EXPECT_EQ(QSet<QString>(entries->cbegin(), entries->cend()).size(), entries->size());
}

TEST(NetworkLinks, LoopbackAndUnknownAndEmptyNamesAreNotConnected) {
  NetworkLinks links;
  EXPECT_FALSE(links.isConnected(u"lo"_s));
  EXPECT_FALSE(links.isConnected(u"no-such-link"_s));
  EXPECT_FALSE(links.isConnected(QString()));
}

/// A folder that stands alone in PATH, with an `nmcli` that writes down its arguments.
class NmcliDialerTest : public testing::Test {
 protected:
  NmcliDialerTest() : path_(qgetenv("PATH")) { qputenv("PATH", folder.path().toLocal8Bit()); }
  ~NmcliDialerTest() override { qputenv("PATH", path_); }

  void makeNmcli() const {
    QFile script(folder.filePath(u"nmcli"_s));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + record().toLocal8Bit() +
                 ".new'\nPATH=" + path_ + " mv '" + record().toLocal8Bit() + ".new' '" +
                 record().toLocal8Bit() + "'\n");
    script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  QString record() const { return folder.filePath(u"arguments"_s); }

  QByteArray arguments() const {
    if (!QTest::qWaitFor([this] { return QFile::exists(record()); }, 60'000)) return {};
    QFile file(record());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;

 private:
  QByteArray path_;
};

TEST_F(NmcliDialerTest, BringsTheEntryUpByItsName) {
  makeNmcli();
  NmcliDialer().dial(u"我的 宽带"_s);
  EXPECT_EQ(arguments(), "connection\nup\nid\n我的 宽带\n");
}

TEST_F(NmcliDialerTest, HandsTheEntryOverAsItStandsWithoutAShell) {
  makeNmcli();
  NmcliDialer().dial(u"--help; touch x $(id) `id` \"'"_s);
  EXPECT_EQ(arguments(), "connection\nup\nid\n--help; touch x $(id) `id` \"'\n");
}

TEST_F(NmcliDialerTest, DoesNothingWhereNmcliIsMissing) {
  NmcliDialer().dial(u"宽带"_s);
  EXPECT_FALSE(QFile::exists(record()));
}

TEST_F(NmcliDialerTest, DoesNothingWithoutAnEntry) {
  makeNmcli();
  NmcliDialer().dial(QString());
  // A second one proves that the first would have been seen.
  NmcliDialer().dial(u"second"_s);
  EXPECT_EQ(arguments(), "connection\nup\nid\nsecond\n");
}

}  // namespace
}  // namespace qinghe
