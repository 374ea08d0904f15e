#include "catalogue/pickers/attribute_text.h"

#include <gtest/gtest.h>

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

struct Row {
  QString text;
  QStringList values;
};

TEST(AttributeText, SplitsAtEveryCommaAndDropsWhatStandsBehindTheLast) {
  const Row rows[] = {
      {QString(), {}},
      {u"无逗号"_s, {}},
      {u","_s, {QString()}},
      {u"作者,"_s, {u"作者"_s}},
      {u"作者,第二版,"_s, {u"作者"_s, u"第二版"_s}},
      {u"作者,第二版"_s, {u"作者"_s}},
      {u",,32开,"_s, {QString(), QString(), u"32开"_s}},
      {u" 甲 ,乙；丙，丁,"_s, {u" 甲 "_s, u"乙；丙，丁"_s}},
  };
  for (const Row& row : rows)
    EXPECT_EQ(attributeValues(row.text), row.values) << row.text.toStdString();
}

TEST(AttributeText, JoinsWithACommaBehindEachAndSemicolonsForCommasInside) {
  const Row rows[] = {
      {QString(), {}},
      {u",,,"_s, {QString(), QString(), QString()}},
      {u"甲;乙,丙,"_s, {u"甲,乙"_s, u"丙"_s}},
      {u";;,"_s, {u",,"_s}},
  };
  for (const Row& row : rows) EXPECT_EQ(attributeText(row.values), row.text);
}

TEST(AttributeText, WhatItJoinsItSplitsAgain) {
  const QStringList values = {u"沈青禾"_s, QString(), u"32开"_s};
  EXPECT_EQ(attributeValues(attributeText(values)), values);
}

}  // namespace
