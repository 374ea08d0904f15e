#include <gtest/gtest.h>

#include "Multipart.h"

namespace qinghe::portal_server {
namespace {

std::string form() {
  const std::string content("\r\n--b\r\n\0x", 9);
  return "--b0\r\nContent-Disposition: form-data; name=\"stable\"\r\n\r\nximu\r\n"
         "--b0\r\ncontent-disposition: form-data; filename=\"a;b.png\"; name=\"picture\"\r\n"
         "Content-Type: image/png\r\n\r\n" +
         content + "\r\n--b0--\r\n";
}

TEST(Multipart, AFormIsTakenApart) {
  const std::string body = form();
  const auto parts = parseForm(body, "b0");
  ASSERT_TRUE(parts);
  ASSERT_EQ(parts->size(), 2U);
  EXPECT_EQ((*parts)[0].name, "stable");
  EXPECT_EQ((*parts)[0].bytes, "ximu");
  EXPECT_FALSE((*parts)[0].isFile);
  EXPECT_EQ((*parts)[1].name, "picture");
  EXPECT_EQ((*parts)[1].fileName, "a;b.png");
  EXPECT_TRUE((*parts)[1].isFile);
  EXPECT_EQ((*parts)[1].bytes, std::string("\r\n--b\r\n\0x", 9)) << "nearly a boundary is content";
}

TEST(Multipart, TheBoundaryStandsInTheContentType) {
  EXPECT_EQ(formBoundary("multipart/form-data; boundary=b0"), "b0");
  EXPECT_EQ(formBoundary("Multipart/Form-Data; charset=x; Boundary=\"b 0\""), "b 0");
  EXPECT_EQ(formBoundary("application/x-www-form-urlencoded"), std::nullopt);
  EXPECT_EQ(formBoundary("multipart/mixed; boundary=b0"), std::nullopt);
  EXPECT_EQ(formBoundary(""), std::nullopt);
  EXPECT_EQ(formBoundary("multipart/form-data"), "") << "a form, but one that cannot be read";
  EXPECT_EQ(formBoundary("multipart/form-data; boundary=" + std::string(71, 'x')), "");
}

TEST(Multipart, AFormCutAnywhereIsBrokenAndNeverRunsOver) {
  const std::string body = form();
  const std::size_t end = body.rfind("--\r\n");
  for (std::size_t size = 0; size < end + 2; ++size) {
    EXPECT_FALSE(parseForm(std::string_view(body).substr(0, size), "b0")) << size;
  }
}

TEST(Multipart, WhatIsNoFormIsBroken) {
  const std::string disposition = "Content-Disposition: form-data; name=\"a\"\r\n\r\n";
  for (const std::string& body : std::initializer_list<std::string>{
           std::string("a=1&b=2"), std::string("--b0"), std::string("--b0\r\n\r\n\r\n--b0--"),
           "--b0\r\nno header\r\n\r\nx\r\n--b0--",
           "--b0\r\nContent-Disposition: form-data\r\n\r\nx\r\n--b0--",
           "--b0\r\nContent-Disposition: form-data; name=\"\"\r\n\r\nx\r\n--b0--",
           "--b0\r\nX: " + std::string(5000, 'x') + "\r\n" + disposition + "x\r\n--b0--",
           "--b0x" + disposition + "x\r\n--b0--"}) {
    EXPECT_FALSE(parseForm(body, "b0")) << body.substr(0, 40);
  }
  EXPECT_FALSE(parseForm(form(), ""));
  EXPECT_FALSE(parseForm(form(), "other"));
}

TEST(Multipart, PartsAreBounded) {
  const auto formOf = [](int parts) {
    std::string body;
    for (int i = 0; i < parts; ++i) {
      body += "--b\r\nContent-Disposition: form-data; name=\"n\"\r\n\r\nv\r\n";
    }
    return body + "--b--";
  };
  EXPECT_TRUE(parseForm(formOf(16), "b"));
  EXPECT_FALSE(parseForm(formOf(17), "b"));
  EXPECT_TRUE(parseForm("--b--", "b")) << "an empty form is a form";
}

}  // namespace
}  // namespace qinghe::portal_server
