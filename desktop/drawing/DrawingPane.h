#pragma once

// The drawing: model space or a layout, to zoom and to pan, and to select in.
//
// Wheel: zoom at the pointer. Middle button: pan; double: fit. Left button: select what is under the pointer; drag to the
// right: all that lies within; to the left: all that is touched. With Shift add, with Control take away. Keys: arrows,
// plus, minus, Home (fit), Escape (nothing selected).

#include <QImage>
#include <QPoint>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

#include "desktop/drawing/PicturePainter.h"
#include "embedded/database/Drawing.h"
#include "view/Draw.h"
#include "view/SpatialIndex.h"

class QTabBar;

namespace velt::desktop {

class DrawingPane : public QWidget {
  Q_OBJECT

 public:
  explicit DrawingPane(QWidget* parent = nullptr);
  ~DrawingPane() override;

  // The drawing must outlive the pane or be replaced; null shows nothing.
  void setDrawing(const database::Drawing* drawing);
  // To be called when the drawing has been edited.
  void redraw();
  void setSelected(const std::vector<VkDbObjectId>& entities);

  // What is seen when the tab of that number is chosen, from 0.
  [[nodiscard]] std::vector<QString> spaceNames() const;
  void showSpace(int number);
  void fit();
  // Of the picture, as it is seen now.
  [[nodiscard]] const Sight& sight() const { return sight_; }
  void setSight(const Sight& sight);
  void setDark(bool isDark);

 Q_SIGNALS:
  void selected(const std::vector<VkDbObjectId>& entities);
  // The entity under the pointer; null for none.
  void hovered(const VkDbObjectId& entity);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QRect area() const;
  void zoom(double factor, QPointF at);
  void pan(QPointF by);
  void render();
  void makePicture();
  void pick(const std::vector<std::uint32_t>& records, Qt::KeyboardModifiers modifiers);

  const database::Drawing* drawing_ = nullptr;
  QTabBar* tabs_;
  std::vector<view::Space> spaces_;
  std::optional<view::Contents> contents_;
  view::Picture picture_;
  std::optional<view::SpatialIndex> index_;
  // Of the curves in the picture; a picture that is seen much larger is made anew.
  double pictureScale_ = 0;
  Sight sight_;
  PaintOptions options_;
  // The last frame, and what was seen in it. While the sight changes it is shown moved and scaled, and it is painted anew
  // when the sight rests for a moment: so moving stays fluid however much there is to paint.
  QImage frame_;
  Sight frameSight_;
  QTimer rest_;
  std::optional<QPoint> pressed_;
  QPoint last_;
  bool isPanning_ = false;
  // Nobody has zoomed or moved since it was last fitted, so it is fitted again when the pane changes its size.
  bool isFitted_ = true;
};

}  // namespace velt::desktop
