#include "shell/modal.h"

#include <QTimer>

#include "forms/Form.h"
#include "support/ClientFixture.h"

namespace qinghe {
namespace {

using namespace Qt::StringLiterals;

class Plain : public Form {
 public:
  Plain() : Form(Kind::Dialog, u"Plain"_s, u"一"_s) {}
};

class Modal : public ClientFixture {
 protected:
  /// Shows a form modally, and has `leave` run while it is shown.
  void show(const std::function<void(Plain&)>& leave) {
    auto& form = defaultInstance<Plain>();
    QTimer::singleShot(0, &form, [&] {
      shown = form.isVisible();
      whileShown = app().tray.state();
      leave(form);
    });
    showModalWaiting(form);
  }

  bool shown = false;
  Tray::State whileShown = Tray::State::None;
};

TEST_F(Modal, TheTrayWaitsWhileTheFormIsShown) {
  show([](Plain& form) { form.hideForm(); });
  EXPECT_TRUE(shown);
  EXPECT_EQ(whileShown, Tray::State::Waiting);
}

TEST_F(Modal, TheConnectionIsLookedAtBehindTheForm) {
  show([](Plain& form) { form.hideForm(); });
  EXPECT_EQ(app().tray.state(), Tray::State::Connected);
  goOffline();
  show([](Plain& form) { form.hideForm(); });
  EXPECT_EQ(app().tray.state(), Tray::State::Offline);
}

TEST_F(Modal, AFormMayUnloadItself) {
  show([](Plain& form) { form.unload(); });
  EXPECT_FALSE(isLoaded<Plain>());
  EXPECT_EQ(app().tray.state(), Tray::State::Connected);
}

}  // namespace
}  // namespace qinghe
