#include "catalogue/PicturedRecordEditor.h"

#include <QGridLayout>
#include <utility>

#include "browser/WebBrowser.h"
#include "forms/TabControl.h"
#include "portal/RequestBuilder.h"
#include "shell/AppState.h"
#include "values/numbers.h"

namespace qinghe {

using namespace Qt::StringLiterals;

namespace {

const QString blankPage = u"about:blank"_s;

EditorLook onTabs(EditorLook look) {
  look.tabs = {u"基本"_s, u"介绍"_s, u"图片"_s, u"留言"_s};
  return look;
}

}  // namespace

PicturedRecordEditor::PicturedRecordEditor(EditorLook look, const PortalRecordKind& kind,
                                           const PicturePage& picture)
    : PortalRecordEditor(onTabs(std::move(look)), kind),
      WebBrowserPICT(new WebBrowser(u"WebBrowserPICT"_s, SSTab1->widget(PictureTab))),
      picture_(picture) {
  WebBrowserPICT->setAccessibleName(u"图片"_s);
  WebBrowserPICT->setStaysOnHost(true);
  auto* page = qobject_cast<QGridLayout*>(SSTab1->widget(PictureTab)->layout());
  page->addWidget(WebBrowserPICT, 0, 0, 1, 3);
}

void PicturedRecordEditor::onLoad() {
  app().gShxiKind = picture_.attributeKind;
  WebBrowserPICT->Navigate(blankPage);
  PortalRecordEditor::onLoad();
}

void PicturedRecordEditor::recordShown(double id) {
  if (picture_.askedFor && app().gViewPict != 1) return;
  if (app().gUserLevel == 0) {
    WebBrowserPICT->Navigate(blankPage);
    return;
  }
  WebBrowserPICT->Navigate(RequestBuilder(app().gWebServer, paths::productImage)
                               .raw(u"stable"_s, picture_.table)
                               .raw(u"id"_s, textOf(id))
                               .url());
}

}  // namespace qinghe
