#include "shell/SingleInstance.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "ShellTest.h"

namespace qinghe {
namespace {

class SingleInstanceTest : public testing::Test {
 protected:
  SingleInstanceTest() : before_(qgetenv("XDG_RUNTIME_DIR")) {
    qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
  }
  ~SingleInstanceTest() override {
    before_.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", before_);
  }

  QStringList lockFiles() const {
    return QDir(folder.path()).entryList({u"*.lock"_s}, QDir::Files);
  }

  QTemporaryDir folder;

 private:
  QByteArray before_;
};

TEST_F(SingleInstanceTest, TheFirstHoldsThePlaceUntilItEnds) {
  {
    const SingleInstance first(u"/opt/a"_s);
    EXPECT_TRUE(first.isFirst());
    const SingleInstance second(u"/opt/a"_s);
    EXPECT_FALSE(second.isFirst());
  }
  EXPECT_TRUE(lockFiles().isEmpty());
  EXPECT_TRUE(SingleInstance(u"/opt/a"_s).isFirst());
}

TEST_F(SingleInstanceTest, ASecondStartDoesNotDisturbTheFirst) {
  const SingleInstance first(u"/opt/a"_s);
  { EXPECT_FALSE(SingleInstance(u"/opt/a"_s).isFirst()); }
  EXPECT_EQ(lockFiles().size(), 1);
  EXPECT_FALSE(SingleInstance(u"/opt/a"_s).isFirst());
}

TEST_F(SingleInstanceTest, AnotherProgramFolderIsAnotherPlace) {
  const SingleInstance a(u"/opt/a"_s);
  const SingleInstance b(u"/opt/b"_s);
  EXPECT_TRUE(a.isFirst());
  EXPECT_TRUE(b.isFirst());
}

TEST_F(SingleInstanceTest, TheSameFolderWrittenOtherwiseIsTheSamePlace) {
  const SingleInstance a(u"/opt/a"_s);
  EXPECT_FALSE(SingleInstance(u"/opt/./a/"_s).isFirst());
}

TEST_F(SingleInstanceTest, ACrashedOwnerDoesNotBlockTheNextStart) {
  const pid_t child = fork();
  if (child == 0) {
    const SingleInstance crashing(u"/opt/a"_s);
    _exit(crashing.isFirst() ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  ASSERT_EQ(lockFiles().size(), 1);
  EXPECT_TRUE(SingleInstance(u"/opt/a"_s).isFirst());
}

TEST_F(SingleInstanceTest, ARunningOwnerInAnotherProcessHoldsThePlace) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const SingleInstance owner(u"/opt/a"_s);
    if (write(ready[1], owner.isFirst() ? "1" : "0", 1) != 1) _exit(1);
    for (;;) pause();
  }
  char answer = 0;
  ASSERT_EQ(read(ready[0], &answer, 1), 1);
  EXPECT_EQ(answer, '1');
  EXPECT_FALSE(SingleInstance(u"/opt/a"_s).isFirst());
  kill(child, SIGKILL);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  EXPECT_TRUE(SingleInstance(u"/opt/a"_s).isFirst());
  close(ready[0]);
  close(ready[1]);
}

TEST_F(SingleInstanceTest, ALockCutOffInWritingDoesNotBlockTheNextStart) {
  QString name;
  {
    const SingleInstance owner(u"/opt/a"_s);
    ASSERT_EQ(lockFiles().size(), 1);
    name = folder.filePath(lockFiles().first());
  }
  for (const QByteArray& content : {QByteArray(), QByteArray("12"), QByteArray("\0\0\0\n", 4)}) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    EXPECT_TRUE(SingleInstance(u"/opt/a"_s).isFirst());
  }
}

TEST_F(SingleInstanceTest, WhereNoLockCanBeMadeTheProgramStarts) {
  qputenv("XDG_RUNTIME_DIR", folder.filePath(u"file/below"_s).toLocal8Bit());
  QFile blocker(folder.filePath(u"file"_s));
  ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
  EXPECT_TRUE(SingleInstance(u"/opt/a"_s).isFirst());
}

}  // namespace
}  // namespace qinghe
