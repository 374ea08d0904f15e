#pragma once

#include "catalogue/PortalRecordEditor.h"

namespace qinghe {

class WebBrowser;

/// The tabs of an editor with a picture page, in order.
enum EditorTab { BasicTab, IntroTab, PictureTab, NoteTab };

/// What a record's picture page needs.
struct PicturePage {
  QString table;             ///< `stable` of the page
  bool askedFor = true;      ///< shown only where the settings ask for pictures
  qint16 attributeKind = 0;  ///< `gShxiKind` while the editor is the one opened last
};

/// A portal editor on four tabs, one of which shows the portal's own page of the record's picture:
/// the program neither sends nor receives images, the user works in that page.
class PicturedRecordEditor : public PortalRecordEditor {
  Q_OBJECT

 public:
  WebBrowser* WebBrowserPICT;

 protected:
  PicturedRecordEditor(EditorLook look, const PortalRecordKind& kind, const PicturePage& picture);

  void onLoad() override;
  void recordShown(double id) override;

 private:
  const PicturePage picture_;
};

}  // namespace qinghe
