#include "store/ShapeParser.h"

#include "store_test_tools.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

// The command put back into one form, to compare by eye.
QString shown(const ShapeCommand& command) {
  QString text = u"%1{%2}"_s.arg(command.name, command.sql);
  for (const ShapeCommand::Child& child : command.children) {
    QStringList relations;
    for (const auto& relation : child.relations) {
      relations.append(relation.parentColumn + u'>' + relation.childColumn);
    }
    text += u'[' + child.name + u':' + relations.join(u' ') + u' ' + shown(child.command) + u']';
  }
  return text;
}

struct Reading {
  const char* name;
  QString command;
  QString read;
};

class Shape : public testing::TestWithParam<Reading> {};

TEST_P(Shape, IsTakenApart) {
  EXPECT_EQ(shown(parseShape(GetParam().command)), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Shape,
    testing::Values(
        Reading{"oneLevel", u"SHAPE {a} AS n"_s, u"n{a}"_s},
        Reading{"noAlias", u"SHAPE {a}"_s, u"{a}"_s},
        Reading{"aliasWithoutAs", u"shape {a} n append ({b} m relate x to y) k"_s,
                u"n{a}[k:x>y m{b}]"_s},
        Reading{"twoLevels", u"SHAPE {a}  AS n APPEND ({b}  AS m RELATE 'X' TO 'y') AS m"_s,
                u"n{a}[m:X>y m{b}]"_s},
        Reading{
            "threeLevels",
            u"SHAPE {a}  AS n APPEND (( SHAPE {b}  AS m APPEND ({c}  AS k RELATE 'p' TO 'q','r' "
            u"TO 's') AS k) AS m RELATE 'x' TO 'y') AS m"_s,
            u"n{a}[m:x>y m{b}[k:p>q r>s k{c}]]"_s},
        Reading{"twoChildren",
                u"SHAPE {a} AS n APPEND ({b} RELATE x TO y) AS m, ({c} RELATE x TO z) AS k"_s,
                u"n{a}[m:x>y {b}][k:x>z {c}]"_s},
        Reading{"childKeepsItsOwnName", u"SHAPE {a} APPEND ({b} AS m RELATE x TO y)"_s,
                u"{a}[m:x>y m{b}]"_s},
        Reading{"quotedNames", u"SHAPE {a} AS [n 1] APPEND ({b} RELATE \"x\" TO [y z]) AS '名'"_s,
                u"n 1{a}[名:x>y z {b}]"_s},
        Reading{"braceInText", u"SHAPE {a '}' \"}\" [}] '}''}'} AS n"_s,
                u"n{a '}' \"}\" [}] '}''}'}"_s},
        Reading{"noRelation", u"SHAPE {a} APPEND ({b} AS m) AS m"_s, u"{a}[m: m{b}]"_s}),
    [](const auto& row) { return row.param.name; });

TEST(Shape, IsKnownByItsFirstWord) {
  EXPECT_TRUE(isShapeCommand(u"  shape {a}"));
  EXPECT_FALSE(isShapeCommand(u"select * from shape"));
  EXPECT_FALSE(isShapeCommand(u""));
}

TEST(Shape, CutAtAnyPlaceIsAFailureWithWordsOrAShorterCommand) {
  const QString whole =
      u"SHAPE {a} AS n APPEND (( SHAPE {b} AS m APPEND ({c} AS k RELATE 'p' TO 'q','r' TO 's') AS "
      u"k) AS m RELATE 'x' TO 'y')"_s;
  EXPECT_NO_THROW(parseShape(whole));
  for (qsizetype length = 0; length < whole.size(); ++length) {
    const QString words = storeErrorOf([&] { parseShape(whole.first(length)); });
    EXPECT_FALSE(words.isEmpty());
    EXPECT_TRUE(length <= 22 || words.startsWith(u"SHAPE 命令错误: "_s)) << length;
  }
}

TEST(Shape, RefusesWhatIsNoShape) {
  for (const QString& command :
       {u"SHAPE"_s, u"SHAPE a"_s, u"SHAPE {a} AS"_s, u"SHAPE {a} AS AS"_s, u"SHAPE {a} n m"_s,
        u"SHAPE {a} APPEND {b}"_s, u"SHAPE {a} APPEND ({b} RELATE x y)"_s,
        u"SHAPE {a} APPEND ({b} RELATE x TO)"_s, u"SHAPE {a} APPEND ({b} RELATE 1 TO 2)"_s,
        u"SHAPE {a} APPEND ()"_s, u"SHAPE {a 'x} AS n"_s, u"SHAPE {a} }"_s}) {
    EXPECT_THROW(parseShape(command), StoreError) << command.toStdString();
  }
}

TEST(Shape, BoundsItsDepth) {
  const auto nested = [](int depth) {
    QString command = u"{c} AS k"_s;
    for (int i = 0; i < depth; ++i) {
      command = u"SHAPE {a} AS n APPEND ("_s + command + u" RELATE x TO y) AS m"_s;
    }
    return command;
  };
  EXPECT_NO_THROW(parseShape(nested(20)));
  EXPECT_THROW(parseShape(nested(5000)), StoreError);
  EXPECT_THROW(parseShape(QString(1'000'000, u'(')), StoreError);
  EXPECT_THROW(parseShape(u"SHAPE {a} APPEND "_s + QString(1'000'000, u'(')), StoreError);
}

}  // namespace
}  // namespace qinghe
