#include "shell/find_row.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct Search {
  int selected;
  QString wanted;
  Qt::CaseSensitivity sensitivity;
  int found;
};

TEST(FindRow, LooksBehindTheSelectedRowThenFromTheTopAndAtTheSelectedRowLast) {
  const QStringList rows = {u"Abc"_s, u"青禾"_s, u"abc"_s, u"青禾文库"_s};
  const Search searches[] = {
      {0, u"青禾"_s, Qt::CaseSensitive, 1},    {1, u"青禾"_s, Qt::CaseSensitive, 3},
      {3, u"青禾"_s, Qt::CaseSensitive, 1},    {3, u"文库"_s, Qt::CaseSensitive, 3},
      {2, u"Abc"_s, Qt::CaseSensitive, 0},     {0, u"Abc"_s, Qt::CaseSensitive, 0},
      {0, u"Abc"_s, Qt::CaseInsensitive, 2},   {-1, u"abc"_s, Qt::CaseSensitive, 2},
      {2, QString(), Qt::CaseSensitive, 3},    {1, u"无"_s, Qt::CaseInsensitive, -1},
      {-1, u"青禾"_s, Qt::CaseInsensitive, 1},
  };
  for (const Search& one : searches) {
    const auto textOf = [&](int row) { return rows[row]; };
    EXPECT_EQ(findRow(4, one.selected, textOf, one.wanted, one.sensitivity), one.found)
        << one.selected << " " << one.wanted.toStdString();
  }
}

TEST(FindRow, LooksAtEachRowOnceAndAtNoneInAnEmptyList) {
  int looks = 0;
  const auto textOf = [&](int) {
    ++looks;
    return u"x"_s;
  };
  EXPECT_EQ(findRow(3, 1, textOf, u"y"_s, Qt::CaseSensitive), -1);
  EXPECT_EQ(looks, 3);
  EXPECT_EQ(findRow(0, -1, textOf, u"y"_s, Qt::CaseSensitive), -1);
  EXPECT_EQ(looks, 3);
}

}  // namespace
