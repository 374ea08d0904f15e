#include "reports/engine/PdfTextDevice.h"

#include <gtest/gtest.h>

#include <QBuffer>

#include "reports/engine/TextFitter.h"

using namespace qinghe;

namespace {

const QHash<ushort, ushort> kCodes = {{0x2F25, 0x5973}, {0x2F26, 0x5B50}, {0x0009, 0x0020}};

QByteArray mapOf(const QByteArray& ranges) {
  return "/CIDInit /ProcSet findresource begin\nbegincmap\n2 beginbfrange\n" + ranges +
         "endbfrange\nendcmap\nend\n";
}

TEST(PdfTextDevice, ReplacesCodesButNotTheNumbersOfGlyphs) {
  const struct {
    QByteArray before, after;
  } cases[] = {
      {"<0001> <0003> [<0041> <2F26> <0009> ]\n", "<0001><0003>[<0041><5B50><0020>]\n"},
      {"<2F25> <2F26> [<0041> <0042> ]\n", "<2F25><2F26>[<0041><0042>]\n"},
      {"<0008> <0009> [<2F25> <2F26> ]\n", "<0008><0009>[<5973><5B50>]\n"},
      {"<0000> <0000> <0000>\n", "<0000> <0000> <0000>\n"},
      {"<0001> <000B> <0030>\n", "<0001> <000B> <0030>\n"},
      {"<0001> <0001> <2F26>\n<0002> <0005> [<0041> <0042> <0043> <0044> ]\n",
       "<0001><0001>[<5B50>]\n<0002><0005>[<0041><0042><0043><0044>]\n"},
  };
  for (const auto& c : cases) {
    const QByteArray map = mapOf(c.before);
    const QByteArray corrected = PdfTextDevice::corrected(map, kCodes);
    EXPECT_EQ(corrected.trimmed(), mapOf(c.after).trimmed());
    EXPECT_EQ(corrected.size(), map.size());
  }
}

TEST(PdfTextDevice, WritesOutARunOfCodesWhereThereIsRoomForIt) {
  const QByteArray map = mapOf(
      "<0001> <000A> [<0041> <0043> <0045> <0047> <0049> <004B> <004D> <0051> <0053> <0055> ]\n"
      "<000B> <000C> <2F25>\n");
  const QByteArray corrected = PdfTextDevice::corrected(map, kCodes);
  EXPECT_TRUE(corrected.contains("<000B><000C>[<5973><5B50>]"));
  EXPECT_EQ(corrected.size(), map.size());
}

TEST(PdfTextDevice, LeavesAMapAloneThatWouldGrow) {
  const QByteArray map = mapOf("<000B> <000E> <2F25>\n");
  EXPECT_EQ(PdfTextDevice::corrected(map, kCodes), map);
}

TEST(PdfTextDevice, PassesEverythingElseOnUnchanged) {
  QBuffer target;
  ASSERT_TRUE(target.open(QIODevice::WriteOnly));
  PdfTextDevice device(target, reportFont(36, false));
  const QByteArray other = "<0001> <0001> [<2F26> ]\n";
  EXPECT_EQ(device.write(other), other.size());
  EXPECT_EQ(device.write(QByteArray("\x00\x01", 2)), 2);
  EXPECT_EQ(target.data(), other + QByteArray("\x00\x01", 2));
}

TEST(PdfTextDevice, ReportsWhatTheTargetFailedToWrite) {
  QBuffer target;
  ASSERT_TRUE(target.open(QIODevice::ReadOnly));
  PdfTextDevice device(target, reportFont(36, false));
  EXPECT_LT(device.write("abc"), 3);
}

TEST(PdfTextDevice, FindsSharedCodesOnlyAmongBlanksAndRadicals) {
  const auto codes = PdfTextDevice::sharedCodes(reportFont(36, false));
  for (auto it = codes.cbegin(); it != codes.cend(); ++it) {
    const bool tab = it.key() == '\t' && it.value() == ' ';
    const bool radical = it.key() >= 0x2E80 && it.key() <= 0x2FDF && it.value() >= 0x4E00;
    EXPECT_TRUE(tab || radical) << it.key();
  }
}

}  // namespace
