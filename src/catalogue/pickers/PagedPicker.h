#pragma once

#include "forms/ListView.h"
#include "shell/PageWalk.h"
#include "shell/Picker.h"

namespace qinghe {

/// Where the two paged pickers differ.
struct PagedPickerKind {
  QString form, caption;
  QString idBox, nameBox;  ///< names of the boxes of the choice
  QStringView countPath, pagePath;
  QString table, fields;
  std::function<QString()> condition;  ///< of every request
};

/// A list that comes page by page, with a search over the pages that are there. What counts is the
/// remembered row: the last one that came, until the user goes to another or the search finds one.
class PagedPicker : public Picker {
  Q_OBJECT

 public:
  ListView* ListView1;    ///< key id + " ID", text the name, tag the page it came with
  TextBox* Text1;         ///< what to search for
  QPushButton* command1;  ///< search
  QPushButton* Command2;  ///< next page

  Choice choice() const override;

 protected:
  explicit PagedPicker(const PagedPickerKind& kind);

  TextBox* idBox() const { return idBox_; }
  TextBox* nameBox() const { return nameBox_; }

  void onLoad() override;
  void accept() override;
  void clearChoice() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void layOut();
  void connectControls();
  bool CountPages();
  bool LoadPage();
  void nextPage();
  void search();

  PagedPickerKind kind_;
  PageWalk pages_;
  TextBox* idBox_;
  TextBox* nameBox_;
  ListItem* remembered_ = nullptr;
};

}  // namespace qinghe
