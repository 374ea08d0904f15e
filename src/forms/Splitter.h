#pragma once

#include <QWidget>

class QMouseEvent;

namespace qinghe {

/// Two panes side by side with a bar between them that the mouse drags. The bar turns black while
/// it is dragged; a release nearer than `leastPane` to either edge puts it back. The bar's
/// `objectName` is "Splitter". It is 3 pixels wide, and a margin of 2 pixels on either side of it
/// can be grabbed, too.
class SplitPane : public QWidget {
  Q_OBJECT

 public:
  SplitPane(QWidget* first, QWidget* second, QWidget* parent = nullptr);

  int position() const { return position_; }  ///< left edge of the bar, in pixels
  void setPosition(int x);
  void setLeastPane(int pixels) { leastPane_ = pixels; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void moved();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void layOut();
  void press(const QMouseEvent& event);
  void drag(const QMouseEvent& event);
  void finishDrag();
  void paintBar(bool dragged);

  QWidget* first_;
  QWidget* second_;
  QWidget* bar_;
  int position_ = 0;  ///< 0 until somebody sets it: a third of the width
  int leastPane_ = 42;
  int grabOffset_ = 0;  ///< from the bar's left edge to the pointer
  bool dragging_ = false;
};

}  // namespace qinghe
