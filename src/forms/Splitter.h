#pragma once

#include <QWidget>

class QMouseEvent;

namespace qinghe {

/// Two panes, side by side or one above the other, with a bar between them that the mouse drags.
/// The bar turns black while it is dragged; a release nearer than `leastPane` to either edge puts
/// it back. The bar's `objectName` is "Splitter". It is 3 pixels wide, and a margin of 2 pixels on
/// either side of it can be grabbed, too.
class SplitPane : public QWidget {
  Q_OBJECT

 public:
  SplitPane(QWidget* first, QWidget* second, QWidget* parent = nullptr);

  int position() const { return position_; }  ///< left or upper edge of the bar, in pixels
  void setPosition(int position);
  void setLeastPane(int pixels) { leastPane_ = pixels; }
  /// The panes stand side by side (`Qt::Horizontal`) unless told otherwise.
  void setOrientation(Qt::Orientation orientation);
  void setBarName(const QString& name);
  void setBarWidth(int pixels);
  /// A release too near to an edge puts the bar at the least distance from it, and not back.
  void setClamping(bool on) { clamping_ = on; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void moved();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Along the direction in which the bar moves.
  int along(const QPoint& point) const;
  int length() const;
  QRect slice(int from, int size) const;
  void layOut();
  void press(const QMouseEvent& event);
  void drag(const QMouseEvent& event);
  void finishDrag();
  void paintBar(bool dragged);

  QWidget* first_;
  QWidget* second_;
  QWidget* bar_;
  Qt::Orientation orientation_ = Qt::Horizontal;
  int position_ = 0;  ///< 0 until somebody sets it: a third of the length
  int leastPane_ = 42;
  int barWidth_ = 3;
  int grabOffset_ = 0;  ///< from the bar's edge to the pointer
  bool clamping_ = false;
  bool dragging_ = false;
};

}  // namespace qinghe
