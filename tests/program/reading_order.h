#pragma once

#include <QList>

class QWidget;

/// Whether one comes to `first` before `second` when one reads the window: of two things side by
/// side to the left one, else to the upper one. What stands together in a pane or a frame is read
/// to its end before the next pane or frame.
bool isReadBefore(const QWidget* first, const QWidget* second);

/// What Tab can bring the focus to in there as it stands on the screen, in reading order.
QList<QWidget*> tabStops(QWidget* inside);

/// Where Tab, or Shift+Tab, brings the focus from where it is, until it is there again; that is
/// last. More than a hundred are not followed.
QList<QWidget*> walkByTab(Qt::Key key);
