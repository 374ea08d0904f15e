#pragma once

#include "forms/Form.h"

namespace qinghe {

class TextBox;
class WebBrowser;

/// The small browser screen: an address box above a page.
class frmHTTP_WEB : public Form {
  Q_OBJECT

 public:
  frmHTTP_WEB();

  TextBox* const txtInput;
  WebBrowser* const WebBrowser1;

 private:
  void layOut();
  void completeInput();
  void openInput();
  void showReached(const QString& address);
};

}  // namespace qinghe
