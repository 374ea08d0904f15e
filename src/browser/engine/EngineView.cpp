#include "browser/engine/EngineView.h"

#include <QContextMenuEvent>
#include <QMenu>

#include "browser/engine/EngineMenu.h"
#include "browser/engine/EnginePage.h"

namespace qinghe {

namespace {

class View : public QWebEngineView {
 public:
  using QWebEngineView::QWebEngineView;

 protected:
  void contextMenuEvent(QContextMenuEvent* event) override {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fillPageMenu(*menu, *this);
    menu->popup(event->globalPos());
  }
};

}  // namespace

EngineView::EngineView(PageOwner& owner, std::shared_ptr<QWebEngineProfile> profile,
                       QWidget* parent)
    : profile_(std::move(profile)),
      view_(new View(parent)),
      page_(std::make_unique<EnginePage>(owner, profile_.get(), nullptr)) {
  view_->setPage(page_.get());
}

// In this order: a page must not outlive its profile, nor a view its page.
EngineView::~EngineView() {
  delete view_.get();
  page_.reset();
}

void EngineView::go(const QUrl& address) {
  page_->load(address);
}

void EngineView::stop() {
  page_->triggerAction(QWebEnginePage::Stop);
}

}  // namespace qinghe
