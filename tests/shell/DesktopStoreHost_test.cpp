#include "shell/DesktopStoreHost.h"

#include "ShellTest.h"

namespace qinghe {
namespace {

struct Ended {};

class DesktopStoreHostTest : public ShellTest {
 protected:
  DesktopStoreHostTest() : host(static_cast<DesktopStoreHost&>(*state.storeHost)) {
    host.endAction = [] { throw Ended(); };
  }

  DesktopStoreHost& host;
};

TEST_F(DesktopStoreHostTest, KeepsTheDatabasesPathInTheSettings) {
  EXPECT_EQ(host.databaseSetting(), QString());
  host.setDatabaseSetting(u"/数据/DATA.MDB"_s);
  EXPECT_EQ(host.databaseSetting(), u"/数据/DATA.MDB"_s);
  EXPECT_EQ(state.settings.text(u"dbAddress"_s), u"/数据/DATA.MDB"_s);
  host.removeDatabaseSetting();
  EXPECT_EQ(host.databaseSetting(), QString());
}

TEST_F(DesktopStoreHostTest, NamesTheProgramDirectory) {
  EXPECT_EQ(host.programDirectory(), folder.path());
}

TEST_F(DesktopStoreHostTest, AsksForTheFileInTheProgramDirectory) {
  prompts->expectFile(u"/elsewhere/DATA.MDB"_s);
  EXPECT_EQ(host.askForFile(u"DATA.MDB"_s), u"/elsewhere/DATA.MDB"_s);
  ASSERT_EQ(prompts->filesAsked.size(), 1);
  const FileQuestion& question = prompts->filesAsked.first();
  EXPECT_EQ(question.title, u"请查找DATA.MDB"_s);
  EXPECT_EQ(question.directory, folder.path());
  EXPECT_EQ(question.fileName, u"DATA.MDB"_s);
  EXPECT_EQ(question.filter, u"Access (*.mdb *.MDB)"_s);
}

TEST_F(DesktopStoreHostTest, CancellingTheQuestionIsAFailure) {
  prompts->expectFile(std::nullopt);
  EXPECT_THROW(host.askForFile(u"DATA.MDB"_s), Failure);
}

TEST_F(DesktopStoreHostTest, ShowsAMessageUnderTheProductsTitle) {
  prompts->expect(Answer::Ok);
  host.showMessage(u"不存在与 DATA.MDB 符合的文件名"_s);
  ASSERT_EQ(prompts->asked.size(), 1);
  EXPECT_EQ(prompts->asked.first().text, u"不存在与 DATA.MDB 符合的文件名"_s);
  EXPECT_EQ(prompts->asked.first().title, QString());
  EXPECT_EQ(prompts->asked.first().mark, Mark::None);
}

TEST_F(DesktopStoreHostTest, EndsTheProgramBehindACriticalMessage) {
  prompts->expect(Answer::Ok);
  EXPECT_THROW(host.endProgram(u"服务器启动错误"_s, u"原因 - 5"_s), Ended);
  ASSERT_EQ(prompts->asked.size(), 1);
  EXPECT_EQ(prompts->asked.first().title, u"服务器启动错误"_s);
  EXPECT_EQ(prompts->asked.first().text, u"原因 - 5"_s);
  EXPECT_EQ(prompts->asked.first().mark, Mark::Critical);
}

TEST_F(DesktopStoreHostTest, WithoutAnotherEndTheProcessEndsWithAFailureCode) {
  host.endAction = nullptr;
  prompts->expect(Answer::Ok);
  EXPECT_EXIT(host.endProgram(u"服务器启动错误"_s, u"原因 - 5"_s), testing::ExitedWithCode(1), "");
  // The child answered it; here it is still to be taken.
  prompts->ask(nullptr, {});
}

TEST_F(DesktopStoreHostTest, AMissingDatabaseThatNobodyShowsEndsTheProgram) {
  prompts->expectFile(std::nullopt);
  prompts->expect(Answer::Ok);
  EXPECT_THROW(GetData data(state.store), Ended);
  ASSERT_EQ(prompts->asked.size(), 1);
  EXPECT_EQ(prompts->asked.first().title, u"服务器启动错误"_s);
  EXPECT_EQ(prompts->asked.first().text, u"没有选择数据库文件 - 32755"_s);
}

}  // namespace
}  // namespace qinghe
