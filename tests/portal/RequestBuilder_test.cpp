#include <gtest/gtest.h>

#include "portal/RequestBuilder.h"

using namespace Qt::StringLiterals;
using namespace qinghe;

namespace {

TEST(RequestBuilder, JoinsParametersInOrderBehindTheQuestionMark) {
  EXPECT_EQ(RequestBuilder(u"HTTP://shop/"_s, paths::productAdd)
                .encoded(u"stable"_s, u"xi"_s)
                .raw(u"structn"_s, u"18"_s)
                .encoded(u"XIMU"_s, u"书"_s)
                .url(),
            u"HTTP://shop/_vti_product/_vti_add.asp?stable=%78%69&structn=18&XIMU=%CA%E9"_s);
}

TEST(RequestBuilder, AnEmptyFieldHasNothingBehindTheEqualsSign) {
  EXPECT_EQ(RequestBuilder(u"HTTP://shop/"_s, paths::login)
                .encoded(u"NAME"_s, u""_s)
                .encoded(u"X"_s, u"1"_s)
                .url(),
            u"HTTP://shop/_vti_login/_vti_login2.asp?NAME=&X=%31"_s);
}

TEST(RequestBuilder, ABodyHasNoQuestionMark) {
  const auto request = RequestBuilder(u"HTTP://shop/"_s, paths::productAdd)
                           .encoded(u"stable"_s, u"x"_s)
                           .encoded(u"JISH"_s, u"a\r\nb"_s);
  EXPECT_EQ(request.page(), u"HTTP://shop/_vti_product/_vti_add.asp"_s);
  EXPECT_EQ(request.body(), u"stable=%78&JISH=%61%3C%62%72%3E%62"_s);
}

TEST(RequestBuilder, ARawValueStandsAsItIsWithAllItsMarks) {
  EXPECT_EQ(RequestBuilder(u"HTTP://shop/"_s, paths::productAdd)
                .encoded(u"QIYE_ID"_s, u"7"_s)
                .raw(u"XIMU"_s, u"a b&c=%41+'\"<书>#\r\n"_s)
                .raw(u"GESH"_s, QString())
                .encoded(u"NOTH"_s, u"1"_s)
                .url(),
            u"HTTP://shop/_vti_product/_vti_add.asp?QIYE_ID=%37&XIMU=a b&c=%41+'\"<书>#\r\n&GESH="
            "&NOTH=%31"_s);
}

TEST(RequestBuilder, DoesNotChangeTheValuesItEncodes) {
  const QString value = u"<"_s;
  RequestBuilder(u""_s, paths::login).encoded(u"A"_s, value);
  EXPECT_EQ(value, u"<"_s);
}

}  // namespace
