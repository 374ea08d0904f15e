#include "shell/program_directory.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class ProgramDirectory : public testing::Test {
 protected:
  ProgramDirectory() {
    QDir root(folder.path());
    root.mkpath(u"system"_s);
    root.mkpath(u"user"_s);
    QFile program(folder.filePath(u"system/qinghe"_s));
    EXPECT_TRUE(program.open(QIODevice::WriteOnly));
    program.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(
        QFile::link(folder.filePath(u"system/qinghe"_s), folder.filePath(u"user/qinghe"_s)));
  }

  QTemporaryDir folder;
};

TEST_F(ProgramDirectory, IsTheFolderOfAnAbsolutePath) {
  EXPECT_EQ(programDirectoryOf(u"/opt/qinghe/bin/qinghe"_s), u"/opt/qinghe/bin"_s);
  EXPECT_EQ(programDirectoryOf(u"/opt//qinghe/./qinghe"_s), u"/opt/qinghe"_s);
  EXPECT_EQ(programDirectoryOf(u"/qinghe"_s), u"/"_s);
}

TEST_F(ProgramDirectory, IsTheFolderOfTheLinkAndNotOfItsTarget) {
  EXPECT_EQ(programDirectoryOf(folder.filePath(u"user/qinghe"_s)), folder.filePath(u"user"_s));
}

TEST_F(ProgramDirectory, ARelativePathStartsAtTheCurrentDirectory) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(folder.path()));
  const QString here = QDir::currentPath();
  EXPECT_EQ(programDirectoryOf(u"user/qinghe"_s), here + u"/user"_s);
  EXPECT_EQ(programDirectoryOf(u"./qinghe"_s), here);
  QDir::setCurrent(before);
}

TEST_F(ProgramDirectory, ABareNameIsFoundInThePathWithoutFollowingLinks) {
  const QByteArray before = qgetenv("PATH");
  qputenv("PATH", (u"/no/such:"_s + folder.filePath(u"user"_s)).toLocal8Bit());
  EXPECT_EQ(programDirectoryOf(u"qinghe"_s), folder.filePath(u"user"_s));
  qputenv("PATH", before);
}

TEST_F(ProgramDirectory, ANameThatIsNowhereGivesTheRealProgramsFolder) {
  EXPECT_EQ(programDirectoryOf(u"no-such-program-anywhere"_s),
            QCoreApplication::applicationDirPath());
  EXPECT_EQ(programDirectoryOf(QString()), QCoreApplication::applicationDirPath());
}

TEST_F(ProgramDirectory, LeavesGoingUpToTheSystemBecauseOfLinks) {
  const QString directory = programDirectoryOf(folder.path() + u"/user/../system/qinghe"_s);
  EXPECT_EQ(QDir(directory).canonicalPath(), QDir(folder.filePath(u"system"_s)).canonicalPath());
}

}  // namespace
}  // namespace qinghe
