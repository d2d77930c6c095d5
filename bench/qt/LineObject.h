#pragma once

// A line as a program on Qt would hold it: an object with properties.

#include <QObject>
#include <QString>

namespace velt::bench {

class LineObject : public QObject {
  Q_OBJECT
  Q_PROPERTY(int color MEMBER color_)
  Q_PROPERTY(QString layer MEMBER layer_)
  Q_PROPERTY(QString linetype MEMBER linetype_)
  Q_PROPERTY(double linetypeScale MEMBER linetypeScale_)
  Q_PROPERTY(int lineweight MEMBER lineweight_)
  Q_PROPERTY(QString plotStyleName MEMBER plotStyleName_)
  Q_PROPERTY(int transparency MEMBER transparency_)
  Q_PROPERTY(bool visible MEMBER visible_)
  Q_PROPERTY(QString material MEMBER material_)
  Q_PROPERTY(double thickness MEMBER thickness_)
  Q_PROPERTY(double length MEMBER length_)
  Q_PROPERTY(double angle MEMBER angle_)
  Q_PROPERTY(double startX MEMBER startX_)
  Q_PROPERTY(double startY MEMBER startY_)
  Q_PROPERTY(double startZ MEMBER startZ_)
  Q_PROPERTY(double endX MEMBER endX_)
  Q_PROPERTY(double endY MEMBER endY_)
  Q_PROPERTY(double endZ MEMBER endZ_)
  Q_PROPERTY(double deltaX MEMBER deltaX_)
  Q_PROPERTY(double deltaY MEMBER deltaY_)

 private:
  int color_ = 256;
  QString layer_ = QStringLiteral("Layer 1");
  QString linetype_ = QStringLiteral("Linetype 1");
  double linetypeScale_ = 1.0;
  int lineweight_ = 256;
  QString plotStyleName_ = QStringLiteral("PlotStyleName 1");
  int transparency_ = 256;
  bool visible_ = true;
  QString material_ = QStringLiteral("Material 1");
  double thickness_ = 1.0;
  double length_ = 1.0;
  double angle_ = 1.0;
  double startX_ = 1.0;
  double startY_ = 1.0;
  double startZ_ = 1.0;
  double endX_ = 1.0;
  double endY_ = 1.0;
  double endZ_ = 1.0;
  double deltaX_ = 1.0;
  double deltaY_ = 1.0;
};

}  // namespace velt::bench
