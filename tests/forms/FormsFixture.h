#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>

#include "forms/Form.h"
#include "forms/FormsState.h"
#include "support/ScriptedPrompts.h"
#include "support/text_printing.h"

/// A form that writes down its life, and does what a test hangs into its steps.
class LoggingForm : public qinghe::Form {
 public:
  LoggingForm(Kind kind, const QString& name, QStringList& log)
      : Form(kind, name, name), log_(log) {}
  ~LoggingForm() override { log_ << objectName() + QStringLiteral(" gone"); }

  std::function<void()> inLoad, inActivate, inUnload;
  std::function<void(qinghe::Cancel&)> inQueryUnload;

 protected:
  void onLoad() override { step("load", inLoad); }
  void onActivate() override { step("activate", inActivate); }
  void onUnload() override { step("unload", inUnload); }
  void onQueryUnload(qinghe::Cancel& cancel) override {
    step("query", {});
    if (inQueryUnload) inQueryUnload(cancel);
  }

 private:
  void step(const char* name, const std::function<void()>& then) {
    log_ << objectName() + QLatin1Char(' ') + QLatin1String(name);
    if (then) then();
  }

  QStringList& log_;
};

/// A frame with child windows over a fresh forms state.
class FormsFixture : public testing::Test {
 protected:
  FormsFixture() {
    state_->productTitle = QStringLiteral("测试");
    auto scripted = std::make_unique<qinghe::ScriptedPrompts>();
    scripted_ = scripted.get();
    state_->prompts = std::move(scripted);
  }

  ~FormsFixture() override {
    frame_.reset();
    state_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  QMdiArea& frame() {
    if (frame_ == nullptr) {
      frame_ = std::make_unique<QMainWindow>();
      area_ = new QMdiArea;
      frame_->setCentralWidget(area_);
      frame_->resize(900, 600);
      frame_->show();
      frame_->activateWindow();
      EXPECT_TRUE(QTest::qWaitForWindowActive(frame_.get()));
      state_->attachChild = [this](qinghe::Form& form) { area_->addSubWindow(&form); };
    }
    return *area_;
  }

  QMainWindow& frameWindow() {
    frame();
    return *frame_;
  }

  static QMdiSubWindow* windowOf(qinghe::Form& form) {
    return qobject_cast<QMdiSubWindow*>(form.parentWidget());
  }

  /// Lets everything that is under way arrive.
  static void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
  }

  QStringList log_;
  std::unique_ptr<qinghe::FormsState> state_ = std::make_unique<qinghe::FormsState>();
  qinghe::ScriptedPrompts* scripted_ = nullptr;

 private:
  std::unique_ptr<QMainWindow> frame_;
  QMdiArea* area_ = nullptr;
};
