#include "text_codec.h"

#include <gtest/gtest.h>

#include "Parameters.h"
#include "PortalRequest.h"
#include "RequestLine.h"

using namespace qinghe::portal_server;

TEST(DecodeEscapes, TakesOneOrTwoDigitsAndLeavesWhatIsNone) {
  const struct {
    std::string raw;
    std::string bytes;
  } table[] = {
      {"", ""},
      {"%41", "A"},
      {"%9", "\t"},
      {"%A", "\n"},
      {"%9%41", "\tA"},
      {"%A%D", "\n\r"},
      {"%D6%D0", "\xD6\xD0"},
      {"%d6%d0", "\xD6\xD0"},
      {"abc", "abc"},
      {"a+b", "a+b"},
      {"%", "%"},
      {"100%", "100%"},
      {"%zz", "%zz"},
      {"%%41", "%A"},
      {"%414", "A4"},
      {"%25%34%31", "%41"},
      {"\xD6\xD0", "\xD6\xD0"},
      {"50%\xD6\xD0", "50%\xD6\xD0"},
      {"%0", std::string(1, '\0')},
  };
  for (const auto& row : table) EXPECT_EQ(decodeEscapes(row.raw), row.bytes) << row.raw;
}

TEST(StoredText, LeavesNoMarkupButTheLineBreak) {
  const struct {
    const char* given;
    const char* kept;
  } table[] = {
      {"", ""},
      {"a&lt;b", "a&lt;b"},
      {"a<b", "a&lt;b"},
      {"a>b", "a&gt;b"},
      {"one<br>two", "one<br>two"},
      {"one<BR>two", "one<br>two"},
      {"one\r\ntwo", "one<br>two"},
      {"<b>x</b>", "&lt;b&gt;x&lt;/b&gt;"},
      {"<script>", "&lt;script&gt;"},
      {"<br", "&lt;br"},
      {"<br />", "&lt;br /&gt;"},
      {"<<br>>", "&lt;<br>&gt;"},
      {"R&D", "R&D"},
      {"\"'", "\"'"},
  };
  for (const auto& row : table) EXPECT_EQ(storedText(row.given), row.kept) << row.given;
  EXPECT_EQ(storedText(std::string_view("a\0b", 3)), "ab");
}

TEST(CodePage, BytesComeBackAsTextAndBrokenOnesAsReplacements) {
  EXPECT_EQ(utf8FromCodePage("\xD6\xD0"), "中");
  EXPECT_EQ(utf8FromCodePage("a\xFF"), "a\xEF\xBF\xBD");
  EXPECT_EQ(codePageFromUtf8("中"), "\xD6\xD0");
  EXPECT_EQ(codePageFromUtf8("a😀b"), "a?b");
}

TEST(WholeNumber, TakesDigitsAlone) {
  EXPECT_EQ(wholeNumber("0"), 0);
  EXPECT_EQ(wholeNumber("20"), 20);
  for (const char* text : {"", "-1", "+1", "1.5", " 1", "x", "1234567890123456789"}) {
    EXPECT_EQ(wholeNumber(text), -1) << text;
  }
}

TEST(Parameters, FirstOfOneNameCountsAndNamesCompareWithoutCase) {
  Parameters parameters;
  parameters.add("stable=%78&STABLE=second&empty=&&=x&stray&last=a=b");
  EXPECT_EQ(parameters.text("STABLE"), "x");
  EXPECT_TRUE(parameters.has("empty"));
  EXPECT_EQ(parameters.bytes("empty"), "");
  EXPECT_FALSE(parameters.has("stray"));
  EXPECT_EQ(parameters.text("last"), "a=b");
  EXPECT_EQ(parameters.all().size(), 3U);
  parameters.add("stable=body&more=1");
  EXPECT_EQ(parameters.text("stable"), "x");
  EXPECT_EQ(parameters.text("more"), "1");
}

TEST(RequestTarget, ComesApartWithAndWithoutHostAndEndsAtTheFirstBlank) {
  const struct {
    std::string target;
    std::string host;
    std::string path;
    std::string query;
  } table[] = {
      {"/", "", "", ""},
      {"/a.asp?x=1&y=2", "", "a.asp", "x=1&y=2"},
      {"//a.asp", "", "a.asp", ""},
      {"/A/B.asp", "", "a/b.asp", ""},
      {"HTTP://Host:8180/p.asp?q", "host:8180", "p.asp", "q"},
      {"http://host", "host", "", ""},
      {"http://host?x=1", "host", "", "x=1"},
      {"/a?b=c d&e=f", "", "a", "b=c"},
      {"ftp://host/x", "", "ftp://host/x", ""},
  };
  for (const auto& row : table) {
    const RequestTarget parsed = parseTarget(row.target);
    EXPECT_EQ(parsed.host, row.host) << row.target;
    EXPECT_EQ(parsed.path, row.path) << row.target;
    EXPECT_EQ(parsed.query, row.query) << row.target;
  }
}

TEST(RequestLine, TakesTheTargetByteForByteUpToItsFirstBlank) {
  const auto plain = parseRequestLine("GET /a?b=1 HTTP/1.1");
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->method, "GET");
  EXPECT_EQ(plain->target, "/a?b=1");
  EXPECT_TRUE(plain->http11);
  const auto raw = parseRequestLine("GET /a?n=\xD6\xD0\"<>^ rest of it HTTP/1.0");
  ASSERT_TRUE(raw);
  EXPECT_EQ(raw->target, "/a?n=\xD6\xD0\"<>^");
  EXPECT_FALSE(raw->http11);
}

TEST(RequestLine, RefusesWhatIsNone) {
  for (const char* line : {"", "GET", "GET / HTTP/2.0", "GET /", " / HTTP/1.1", "GET HTTP/1.1",
                           "GET  HTTP/1.1", "get / HTTP/1.1", "G\x01T / HTTP/1.1",
                           "GET /\x01 HTTP/1.1", "ABCDEFGHIJKLMNOPQ / HTTP/1.1", "\xFF\xFE\xFD"}) {
    EXPECT_FALSE(parseRequestLine(line)) << line;
  }
}

TEST(CodePage, BrokenBytesBecomeOneMarkEachAndNeverMoreThanTheyWere) {
  EXPECT_EQ(codePageFromUtf8("\x80\xBF"), "??");
  EXPECT_EQ(codePageFromUtf8("a\xE4\xB8"), "a?") << "cut within a character";
  EXPECT_EQ(codePageFromUtf8("\xE4"), "?");
  EXPECT_EQ(codePageFromUtf8("\xF0\x9F\x98\x80!"), "?!") << "beyond the code page";
  EXPECT_EQ(codePageFromUtf8(std::string(1000, '\xC0')), std::string(1000, '?'));
  std::string kept = "中";
  appendCodePage(kept, "文x");
  EXPECT_EQ(kept, "中\xCE\xC4x");
}
