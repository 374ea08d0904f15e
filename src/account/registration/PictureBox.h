#pragma once

#include <QPixmap>
#include <QWidget>

namespace qinghe {

/// A picture in a frame, shrunk to fit and never blown up.
class PictureBox : public QWidget {
  Q_OBJECT

 public:
  explicit PictureBox(const QString& name, QWidget* parent = nullptr);

  /// Shows a picture file; false, with nothing shown, when it is none or too large to be read.
  bool load(const QString& path);
  bool isEmpty() const { return picture_.isNull(); }

  /// A text carried along: here the file's path.
  QString Tag;

  QSize sizeHint() const override { return {240, 160}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap picture_;
};

}  // namespace qinghe
