#include "messaging/rules/peer_frame.h"

#include <gtest/gtest.h>

#include <QList>

#include "values/code_page.h"

using namespace qinghe;
using namespace Qt::StringLiterals;

namespace {

TEST(PeerFrame, IsWrittenAsIdNameAndBodyInTheCodePage) {
  EXPECT_EQ(writeFrame(1234, u"王工"_s, u"你好"_s), "1234@\xCD\xF5\xB9\xA4,\xC4\xE3\xBA\xC3");
  EXPECT_EQ(writeFrame(1234, u"王工"_s, helloBody.toString()), "1234@\xCD\xF5\xB9\xA4,LINK");
  EXPECT_EQ(writeFrame(0, u""_s, u""_s), "0@,");
  EXPECT_EQ(writeFrame(-7, u"a"_s, u"一\r\n二"_s), "-7@a,\xD2\xBB\r\n\xB6\xFE");
}

TEST(PeerFrame, WhatTheCodePageLacksIsWrittenAsAQuestionMark) {
  EXPECT_EQ(writeFrame(1, u"é😀"_s, u"ก"_s), toCodePage(u"1@é?,?"_s));
}

struct FrameRow {
  const char* name;
  QByteArray bytes;
  std::optional<qint32> id;
  std::optional<QString> sender;
  QString body;
};

class PeerFrameRead : public testing::TestWithParam<FrameRow> {};

TEST_P(PeerFrameRead, TakesWhatCanBeMadeOut) {
  const PeerFrame frame = readFrame(GetParam().bytes);
  EXPECT_EQ(frame.id, GetParam().id);
  EXPECT_EQ(frame.name, GetParam().sender);
  EXPECT_EQ(frame.body, GetParam().body);
}

const std::optional<qint32> noId;
const std::optional<QString> noName;

INSTANTIATE_TEST_SUITE_P(
    Frames, PeerFrameRead,
    testing::Values(FrameRow{"Hello", "77@Li,LINK", 77, u"Li"_s, u"LINK"_s},
                    FrameRow{"Chinese", toCodePage(u"1234@王工,你好"), 1234, u"王工"_s, u"你好"_s},
                    FrameRow{"NameWithAComma", "7@A,B,hi", 7, u"A"_s, u"B,hi"_s},
                    FrameRow{"NameWithAnAt", "7@A@B,hi", 7, u"A@B"_s, u"hi"_s},
                    FrameRow{"MarksInTheBody", "7@A,x@y,z", 7, u"A"_s, u"x@y,z"_s},
                    FrameRow{"EmptyBody", "7@A,", 7, u"A"_s, u""_s},
                    FrameRow{"EmptyName", "7@,x", 7, u""_s, u"x"_s},
                    FrameRow{"NoId", "@A,x", 0, u"A"_s, u"x"_s},
                    FrameRow{"IdWithoutDigits", "abc@A,x", 0, u"A"_s, u"x"_s},
                    FrameRow{"LeadingNumber", " 12ab@A,x", 12, u"A"_s, u"x"_s},
                    FrameRow{"FractionToEven", "12.5@A,x", 12, u"A"_s, u"x"_s},
                    FrameRow{"Negative", "-3@A,x", -3, u"A"_s, u"x"_s},
                    FrameRow{"LargestId", "2147483647@A,x", 2147483647, u"A"_s, u"x"_s},
                    FrameRow{"IdBeyond32Bits", "2147483648@A,x", noId, u"A"_s, u"x"_s},
                    FrameRow{"HugeId", "1e999@A,x", noId, u"A"_s, u"x"_s},
                    FrameRow{"NoAt", "77 Li,LINK", noId, noName, u""_s},
                    FrameRow{"NoComma", "77@Li LINK", 77, noName, u""_s},
                    FrameRow{"CommaAheadOfTheAt", "1,2@Li", 1, noName, u""_s},
                    FrameRow{"Empty", "", noId, noName, u""_s},
                    FrameRow{"OnlyTheAt", "@", 0, noName, u""_s},
                    FrameRow{"LineBreaks", "7@A,a\r\nb", 7, u"A"_s, u"a\r\nb"_s},
                    FrameRow{"TwoFramesInOneRead", "7@A,x7@A,LINK", 7, u"A"_s, u"x7@A,LINK"_s},
                    FrameRow{"LowerCaseIsNoHello", "7@A,link", 7, u"A"_s, u"link"_s},
                    FrameRow{"InvalidBytes", "7@\xFF\x80,\xFFz", 7, u"??"_s, u"?z"_s},
                    FrameRow{"HalfACharacterAtTheEnd", "7@A,\xC4", 7, u"A"_s, u"?"_s},
                    FrameRow{"Markup", "7@<b>A</b>,<img src=x>", 7, u"<b>A</b>"_s,
                             u"<img src=x>"_s}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(PeerFrame, ZeroBytesAreText) {
  const PeerFrame frame = readFrame(QByteArray("7@A,a\0b", 7));
  EXPECT_EQ(frame.body, QString::fromLatin1("a\0b", 3));
}

TEST(PeerFrame, ComesBackAsItWasWritten) {
  const QList<std::pair<QString, QString>> samples = {
      {u"王工"_s, u"你好"_s},           {u"A"_s, u"LINK"_s}, {u""_s, u","_s}, {u"a@b"_s, u"x,@y"_s},
      {u"名"_s, u"第一行\r\n第二行"_s},
  };
  for (const auto& [name, body] : samples) {
    const PeerFrame frame = readFrame(writeFrame(25, name, body));
    EXPECT_EQ(frame.id, 25);
    EXPECT_EQ(frame.name, name);
    EXPECT_EQ(frame.body, body);
  }
}

TEST(PeerFrame, CutAnywhereItIsReadWithoutAFailure) {
  const QByteArray whole = writeFrame(1234, u"王工"_s, u"你好，世界"_s);
  for (qsizetype length = 0; length <= whole.size(); ++length) {
    const PeerFrame head = readFrame(whole.first(length));
    const PeerFrame tail = readFrame(whole.sliced(length));
    EXPECT_LE(head.body.size() + tail.body.size(), whole.size());
  }
}

TEST(PeerFrame, AReadFullOfDigitsIsNoId) {
  EXPECT_EQ(readFrame(QByteArray(frameLimit - 3, '9') + "@A,").id, noId);
}

}  // namespace
