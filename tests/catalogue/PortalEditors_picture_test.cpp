// The picture page of the four editors that have one.

#include <gtest/gtest.h>

#include "PortalEditorKinds.h"

using namespace qinghe;
using namespace qinghe::portal_editors;
using namespace Qt::StringLiterals;

namespace {

template <class Kind>
class PicturePages : public PortalEditorsFixture<Kind> {};
TYPED_TEST_SUITE(PicturePages, Kinds);

TYPED_TEST(PicturePages, APaidUserSeesThePicturePageOfEachRecord) {
  this->state.gViewPict = 1;
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  EXPECT_EQ(this->shownPage(), this->picturePage(u"71"_s));
  this->show(1, this->record(u"40000"_s, u"乙"_s));
  EXPECT_EQ(this->shownPage(), this->picturePage(u"40000"_s));
  EXPECT_TRUE(this->screen().WebBrowserPICT->staysOnHost());
}

TYPED_TEST(PicturePages, AFreeUserSeesABlankPicturePage) {
  this->state.gViewPict = 1;
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->state.gUserLevel = 0;
  this->show(1, this->record(u"40000"_s, u"乙"_s));
  EXPECT_EQ(this->shownPage(), u"about:blank"_s) << "the page of the record before is gone";
  this->state.gUserLevel = -1;
  this->show(0, this->record(u"71"_s, u"甲"_s));
  EXPECT_EQ(this->shownPage(), this->picturePage(u"71"_s)) << "a level of 0 alone hides it";
}

TYPED_TEST(PicturePages, OnlyThePicturesScreenShowsPagesToThoseWhoAskForNone) {
  for (const qint16 wish : {qint16{0}, qint16{2}, qint16{-1}}) {
    this->state.gViewPict = wish;
    this->openTwo();
    this->show(0, this->record(u"71"_s, u"甲"_s));
    EXPECT_EQ(this->shownPage(), TypeParam::paged ? u"about:blank"_s : this->picturePage(u"71"_s));
    ASSERT_TRUE(this->screen().unload());
  }
}

TYPED_TEST(PicturePages, PicturesNoLongerAskedForLeaveThePageThatIsThere) {
  this->state.gViewPict = 1;
  this->openTwo();
  this->show(0, this->record(u"71"_s, u"甲"_s));
  this->state.gViewPict = 0;
  this->state.gUserLevel = TypeParam::paged ? 0 : 1;
  this->show(1, this->record(u"40000"_s, u"乙"_s));
  EXPECT_EQ(this->shownPage(), this->picturePage(TypeParam::paged ? u"71"_s : u"40000"_s));
}

}  // namespace
