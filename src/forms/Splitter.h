#pragma once

#include <QWidget>

namespace qinghe {

/// Two panes side by side with a bar between them that the mouse drags. The bar turns black while
/// it is dragged; a release nearer than `leastPane` to either edge puts it back. The bar's
/// `objectName` is "Splitter".
class SplitPane : public QWidget {
  Q_OBJECT

 public:
  SplitPane(QWidget* first, QWidget* second, QWidget* parent = nullptr);

  int position() const { return position_; }  ///< left edge of the bar, in pixels
  void setPosition(int x);
  void setLeastPane(int pixels) { leastPane_ = pixels; }

 signals:
  void moved();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void layOut();

  QWidget* first_;
  QWidget* second_;
  QWidget* bar_;
  int position_ = 0;
  int leastPane_ = 42;
  bool dragging_ = false;
};

}  // namespace qinghe
