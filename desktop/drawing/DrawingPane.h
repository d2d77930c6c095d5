#pragma once

// The drawing: model space or a layout, to zoom and to pan, and to select in.
//
// Wheel: zoom at the pointer. Middle button: pan; double: fit. Left button: select what is under the pointer; drag to the
// right: all that lies within; to the left: all that is touched. With Shift add, with Control take away. Right button: a
// menu. Keys: arrows, plus, minus, Home (fit), Escape (nothing selected).

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
  // A place of an entity at which somebody looks. It is marked where the entity is to be seen.
  struct Mark {
    VkDbObjectId entity;
    view::Vector2 place;
  };
  void setMark(const std::optional<Mark>& mark);

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
  // Somebody asks what can be done with the entity there; null for none.
  void menuWanted(const VkDbObjectId& entity, const QPoint& onScreen);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  [[nodiscard]] QRect area() const;
  // Requires a drawing with spaces.
  [[nodiscard]] const view::Space& space() const;
  void zoom(double factor, QPointF at);
  void pan(QPointF by);
  void render();
  // Whether the picture shows all that is in sight, fine enough.
  [[nodiscard]] bool isPictureCurrent() const;
  void makePicture();
  void forgetPictures();
  const view::SpatialIndex& whole();
  void paintMark(QPainter& painter) const;
  // That which lies on top; none for no entity.
  [[nodiscard]] std::uint32_t recordAt(QPointF pixel) const;
  void hover(std::uint32_t record);
  void findHovered();
  void pick(const std::vector<std::uint32_t>& records, Qt::KeyboardModifiers modifiers);

  const database::Drawing* drawing_ = nullptr;
  QTabBar* tabs_;
  std::vector<view::Space> spaces_;
  std::optional<view::Contents> contents_;
  // What is in sight and around it, with curves that are fine enough to be seen a few times as large. It holds no more
  // than that, so that a close look costs no more than one from afar.
  view::Picture picture_;
  std::optional<view::SpatialIndex> index_;
  view::Box pictureWindow_;
  double pictureScale_ = 0;
  // All of the space, coarse, made when somebody asks how far it reaches, or for all that lies within a window.
  view::Picture whole_;
  std::optional<view::SpatialIndex> wholeIndex_;
  Sight sight_;
  PaintOptions options_;
  std::optional<Mark> mark_;
  // The record of the entity under the pointer.
  std::uint32_t hovered_ = view::none;
  // What is seen of it, in the picture.
  std::vector<std::uint32_t> hoveredPrimitives_;
  // The last frame, and what was seen in it. Where painting takes long, it is shown moved and scaled while the sight
  // changes, and painted anew when the sight rests for a moment: so moving stays fluid however much there is to paint.
  QImage frame_;
  Sight frameSight_;
  qint64 paintMilliseconds_ = 0;
  QTimer rest_;
  std::optional<QPoint> pressed_;
  QPoint last_;
  bool isPanning_ = false;
  // Nobody has zoomed or moved since it was last fitted, so it is fitted again when the pane changes its size.
  bool isFitted_ = true;
};

}  // namespace velt::desktop
