#include "ViewFixture.h"
#include "content/views/FrmView.h"
#include "content/views/FrmView2.h"
#include "content/views/frmHELP.h"
#include "support/PortalProcess.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

/// The views on a real portal with the demo trade, in the direct and the mixed mode.
template <class View>
class PortalView : public ViewFixture<View>, public testing::WithParamInterface<qint16> {
 protected:
  PortalView() {
    this->state.gWebServer = u"HTTP://"_s + server.host() + u"/"_s;
    this->state.gUnicode = GetParam();
  }

  PortalProcess server{{u"--relay-own-network"_s}};
};

class LiveInformation : public PortalView<FrmView> {};
class FixedInformation : public PortalView<FrmView2> {};
class HelpTopics : public PortalView<frmHELP> {};

TEST_P(LiveInformation, TheDemosServiceShowsThePaperPricesOfThePortalsOwnPage) {
  ASSERT_EQ(services().itemCount(), 1);
  clickService(0);
  EXPECT_EQ(headers(), QStringList({u"品名"_s, u"规格"_s, u"价格"_s, u"单位"_s}));
  ASSERT_EQ(data().itemCount(), 10);
  EXPECT_EQ(dataRow(0), QStringList({u"双胶纸"_s, u"70克 787×1092"_s, u"6150"_s, u"元/吨"_s}));
}

TEST_P(LiveInformation, AServiceReadsAPageElsewhereWhateverItsCharset) {
  const QString table = u"今日<table>\n<tr><td>銅版紙</td><td>6150</td></tr></table>"_s;
  const QByteArray bytes = table.toUtf8();
  ScriptedServer elsewhere;
  elsewhere.setHandler([bytes](const QByteArray&) {
    return ScriptedServer::Reply{
        .bytes = "HTTP/1.1 200 OK\r\nContent-Type: text/html;charset=UTF-8\r\nContent-Length: " +
                 QByteArray::number(bytes.size()) + "\r\n\r\n" + bytes};
  });
  SQLite::Database database = server.database(SQLite::OPEN_READWRITE);
  SQLite::Statement change(database,
                           "UPDATE info_fuwu SET wazh = ?, guji = '今日', wezh = 1, zidu = 2");
  change.bind(1, (u"http://"_s + elsewhere.host() + u"/纸 价?d=今日"_s).toStdString());
  ASSERT_EQ(change.exec(), 1);
  clickService(0);
  ASSERT_EQ(data().itemCount(), 1);
  EXPECT_EQ(dataRow(0), QStringList({u"銅版紙"_s, u"6150"_s}));
  EXPECT_EQ(elsewhere.requests().size(), 1);
}

TEST_P(FixedInformation, TheDemosServicesShowTheirTables) {
  ASSERT_EQ(services().itemCount(), 2);
  clickService(0);
  EXPECT_EQ(headers(), QStringList({u"品名"_s, u"规格"_s, u"价格"_s, u"单位"_s}));
  ASSERT_EQ(data().itemCount(), 10);
  EXPECT_EQ(data().itemAt(0)->key(), u"1 ID"_s);
  EXPECT_EQ(dataRow(0), QStringList({u"双胶纸"_s, u"70克 787×1092"_s, u"6150"_s, u"元/吨"_s}));
  clickService(1);
  EXPECT_EQ(headers(), QStringList{u"行业"_s});
  EXPECT_GT(data().itemCount(), 3);
}

TEST_P(FixedInformation, MoreColumnsThanTheTableHasAreEmptyCells) {
  SQLite::Database database = server.database(SQLite::OPEN_READWRITE);
  database.exec("UPDATE info_fuwu2 SET zidu = 9 WHERE id = 1");
  clickService(0);
  ASSERT_EQ(data().itemCount(), 10);
  EXPECT_EQ(dataRow(9).size(), 4);
}

// Presses each topic below the node, and theirs; the number of texts read.
int readAll(frmHELP& help, TreeNode& node) {
  int texts = 0;
  for (int index = 0; index < node.childCount(); ++index) {
    TreeNode* topic = node.childNode(index);
    help.TreeView1->scrollToItem(topic);
    const QPoint place = help.TreeView1->visualItemRect(topic).center();
    QTest::mouseClick(help.TreeView1->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    EXPECT_GT(help.txtFields->text().size(), 80) << topic->text().toStdString();
    EXPECT_FALSE(help.txtFields->text().contains(u'<')) << topic->text().toStdString();
    texts += 1 + readAll(help, *topic);
  }
  return texts;
}

TEST_P(HelpTopics, OfTheDemoAreTwentyAndEachCanBeRead) {
  EXPECT_EQ(readAll(screen(), *screen().TreeView1->root(0)), 20);
  EXPECT_TRUE(screen().txtFields->text().contains(u"\r\n"_s));
}

const auto modes = testing::Values(qint16(1), qint16(2));
std::string nameOf(const testing::TestParamInfo<qint16>& row) {
  return row.param == 1 ? "Mixed" : "Direct";
}
INSTANTIATE_TEST_SUITE_P(Mode, LiveInformation, modes, nameOf);
INSTANTIATE_TEST_SUITE_P(Mode, FixedInformation, modes, nameOf);
INSTANTIATE_TEST_SUITE_P(Mode, HelpTopics, modes, nameOf);

}  // namespace
