#pragma once

#include <QPointer>
#include <QWidget>

#include "browser/BrowserEngine.h"

namespace qinghe {

/// An engine that notes what it is asked for; the test plays the page.
class FakeEngine : public QObject, public BrowserEngine {
 public:
  class Page : public PageView {
   public:
    Page(FakeEngine* engine, QWidget* parent) : engine_(engine), widget_(new QWidget(parent)) {
      widget_->setObjectName(QStringLiteral("page"));
      widget_->setFocusPolicy(Qt::StrongFocus);
    }
    ~Page() override {
      if (engine_ != nullptr) engine_->owner = nullptr;
    }
    QWidget* widget() override { return widget_; }
    void go(const QUrl& address) override { engine_->went << address.toString(); }
    void stop() override { ++engine_->stops; }

   private:
    QPointer<FakeEngine> engine_;  ///< a page may outlive it at the end of a test
    QWidget* widget_;
  };

  PageOwner* owner = nullptr;  ///< of the living page
  int pages = 0;
  int stops = 0;
  QStringList went;

  std::unique_ptr<PageView> makePage(PageOwner& newOwner, QWidget* parent) override {
    owner = &newOwner;
    ++pages;
    return std::make_unique<Page>(this, parent);
  }
};

}  // namespace qinghe
