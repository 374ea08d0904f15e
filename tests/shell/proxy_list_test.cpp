#include "shell/proxy_list.h"

#include <gtest/gtest.h>

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

struct SplitCase {
  const char* name;
  QString text;
  QStringList entries;
};

class SplitProxyListCases : public testing::TestWithParam<SplitCase> {};

TEST_P(SplitProxyListCases, GivesItsEntries) {
  EXPECT_EQ(SplitProxyList(GetParam().text), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SplitProxyListCases,
    testing::Values(
        SplitCase{"One", u"HTTP=10.0.0.1:8080"_s, {u"10.0.0.1:8080"_s}},
        SplitCase{"Two", u"HTTP=a:80 HTTP=b:81"_s, {u"a:80"_s, u"b:81"_s}},
        SplitCase{"Three", u"HTTP=a HTTP=b HTTP=c"_s, {u"a"_s, u"b"_s, u"c"_s}},
        SplitCase{"LastIsEmpty", u"HTTP=a:80 HTTP="_s, {u"a:80"_s, QString()}},
        SplitCase{"FirstIsEmpty", u"HTTP= HTTP=a"_s, {QString(), u"a"_s}},
        SplitCase{"OnlyThePrefix", u"HTTP="_s, {QString()}},
        SplitCase{"LosesOneCharacterBeforeTheNextWhateverItIs",
                  u"HTTP=a:80;HTTP=b"_s,
                  {u"a:80"_s, u"b"_s}},
        SplitCase{"KeepsAllButOneOfSeveralBlanks", u"HTTP=a  HTTP=b"_s, {u"a "_s, u"b"_s}},
        SplitCase{"LosesTheLastCharacterWithoutABlank", u"HTTP=aHTTP=b"_s, {QString(), u"b"_s}},
        SplitCase{"PrefixTwiceGivesAnEmptyEntry", u"HTTP=HTTP=b:80"_s, {QString(), u"b:80"_s}},
        SplitCase{"KeepsBlanksAtTheEnd", u"HTTP=a:80 "_s, {u"a:80 "_s}},
        SplitCase{"LeavesOutWhatStandsBefore", u"FTP=x HTTP=a"_s, {u"a"_s}},
        SplitCase{"WithoutPrefixLosesFourCharacters", u"proxy:8080"_s, {u"y:8080"_s}},
        SplitCase{"SmallLettersAreNoPrefix", u"http=a:80"_s, {u"=a:80"_s}},
        SplitCase{"ShorterThanFiveIsAnEmptyEntry", u"abc"_s, {QString()}},
        SplitCase{"FourCharactersAreAnEmptyEntry", u"abcd"_s, {QString()}},
        SplitCase{"EmptyIsAnEmptyEntry", QString(), {QString()}}),
    [](const auto& test) { return test.param.name; });

TEST(JoinProxyList, PutsThePrefixBeforeEachAndOneBlankBetweenTwo) {
  EXPECT_EQ(JoinProxyList({}), QString());
  EXPECT_EQ(JoinProxyList({u"a:80"_s}), u"HTTP=a:80"_s);
  EXPECT_EQ(JoinProxyList({u"a:80"_s, u"b:81"_s, u"c"_s}), u"HTTP=a:80 HTTP=b:81 HTTP=c"_s);
  EXPECT_EQ(JoinProxyList({QString()}), u"HTTP="_s);
  EXPECT_EQ(JoinProxyList({QString(), QString()}), u"HTTP= HTTP="_s);
}

TEST(JoinProxyList, IsReadBackAsTheSameEntries) {
  for (const QStringList& entries :
       {QStringList{u"a:80"_s}, QStringList{u"a:80"_s, u"b:81"_s}, QStringList{u"a,b"_s, u"c;d"_s},
        QStringList{QString(), u"a"_s, QString()}, QStringList{u"青禾:8080"_s, u"带 空格"_s}})
    EXPECT_EQ(SplitProxyList(JoinProxyList(entries)), entries);
}

}  // namespace
}  // namespace qinghe
