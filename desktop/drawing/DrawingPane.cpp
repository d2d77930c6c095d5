#include "desktop/drawing/DrawingPane.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTabBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "palette/Palette.h"
#include "view/Svg.h"

namespace velt::desktop {

namespace {

constexpr int restMilliseconds = 60;
constexpr double reachPixels = 5;
constexpr double zoomStep = 1.25;
constexpr double panStep = 60;
// Curves are drawn for a picture this many times as large as is seen, so that zooming in does not show corners at once.
constexpr double spareScale = 4;
// What is painted faster is painted anew for every movement.
constexpr qint64 fluidMilliseconds = 20;
// A frame that is shown larger or smaller than this tells nothing.
constexpr double mostBlurred = 64;

constexpr QColor markColor(0x2E, 0xB3, 0xFF);

bool contains(const view::Box& box, const view::Box& inner) {
  return box.low.x <= inner.low.x && box.low.y <= inner.low.y && inner.high.x <= box.high.x
         && inner.high.y <= box.high.y;
}

// Numbers still tell its pixels apart, and are far from their limits.
bool isSensible(const Sight& sight) {
  constexpr double farthest = 1e15;
  constexpr double digits = 1e-13;
  const double pixel = 1 / sight.scale;
  const double reach = std::max(std::abs(sight.center.x), std::abs(sight.center.y));
  return sight.scale > 0 && std::isfinite(pixel) && reach < farthest && pixel < farthest
         && pixel > reach * digits && pixel > 1 / farthest;
}

}  // namespace

DrawingPane::DrawingPane(QWidget* parent) : QWidget(parent), tabs_(new QTabBar(this)) {
  setObjectName("drawing");
  setAccessibleName(tr("Drawing"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setMinimumSize(200, 200);
  setAttribute(Qt::WA_OpaquePaintEvent);
  tabs_->setObjectName("spaces");
  tabs_->setAccessibleName(tr("Model space and layouts"));
  tabs_->setShape(QTabBar::RoundedSouth);
  tabs_->setExpanding(false);
  connect(tabs_, &QTabBar::currentChanged, this, &DrawingPane::showSpace);
  rest_.setSingleShot(true);
  rest_.setInterval(restMilliseconds);
  connect(&rest_, &QTimer::timeout, this, [this] {
    frame_ = QImage();
    update();
  });
}

DrawingPane::~DrawingPane() = default;

void DrawingPane::setDrawing(const database::Drawing* drawing) {
  drawing_ = drawing;
  spaces_.clear();
  forgetPictures();
  options_.highlighted.clear();
  mark_.reset();
  tabs_->blockSignals(true);
  while (tabs_->count() > 0)
    tabs_->removeTab(0);
  if (drawing != nullptr) {
    spaces_ = view::spacesOf(*drawing);
    for (const view::Space& space : spaces_)
      tabs_->addTab(QString::fromStdWString(space.name));
  }
  tabs_->blockSignals(false);
  if (!spaces_.empty()) showSpace(0);
}

std::vector<QString> DrawingPane::spaceNames() const {
  std::vector<QString> names;
  for (const view::Space& space : spaces_)
    names.push_back(QString::fromStdWString(space.name));
  return names;
}

QRect DrawingPane::area() const {
  return rect().adjusted(0, 0, 0, -tabs_->sizeHint().height());
}

void DrawingPane::showSpace(int number) {
  if (number < 0 || static_cast<std::size_t>(number) >= spaces_.size()) return;
  tabs_->blockSignals(true);
  tabs_->setCurrentIndex(number);
  tabs_->blockSignals(false);
  forgetPictures();
  fit();
}

// --- the picture --------------------------------------------------------------------------------------------

void DrawingPane::forgetPictures() {
  contents_.reset();
  index_.reset();
  hovered_ = view::none;
  hoveredPrimitives_.clear();
  picture_ = {};
  wholeIndex_.reset();
  whole_ = {};
  if (drawing_ != nullptr && !spaces_.empty()) contents_.emplace(*drawing_);
  frame_ = QImage();
  update();
}

const view::SpatialIndex& DrawingPane::whole() {
  if (!wholeIndex_) {
    if (contents_) whole_ = view::draw(*drawing_, *contents_, space(), {});
    wholeIndex_.emplace(whole_);
  }
  return *wholeIndex_;
}

const view::Space& DrawingPane::space() const {
  return spaces_[static_cast<std::size_t>(std::max(tabs_->currentIndex(), 0))];
}

bool DrawingPane::isPictureCurrent() const {
  return index_ && sight_.scale <= pictureScale_ && contains(pictureWindow_, sight_.box());
}

void DrawingPane::makePicture() {
  if (!contents_ || isPictureCurrent()) return;
  const view::Box seen = sight_.box();
  const view::Vector2 size = seen.high - seen.low;
  pictureWindow_ = {seen.low - size, seen.high + size};
  pictureScale_ = sight_.scale * spareScale;
  index_.reset();
  picture_ = view::draw(*drawing_, *contents_, space(),
                        {.scale = pictureScale_, .window = pictureWindow_, .seenHeight = size.y});
  index_.emplace(picture_);
  findHovered();
  options_.dimmed.clear();
  std::uint32_t before = view::none;
  for (const view::Primitive& primitive : picture_.primitives) {
    if (primitive.entity == before) continue;
    before = primitive.entity;
    if (palette::isOnLockedLayer(drawing_->idOf(primitive.entity))) options_.dimmed.insert(primitive.entity);
  }
}

void DrawingPane::redraw() {
  forgetPictures();
}

void DrawingPane::setSelected(const std::vector<VkDbObjectId>& entities) {
  options_.highlighted.clear();
  for (const VkDbObjectId entity : entities) {
    if (const auto object = database::resolve(entity)) options_.highlighted.insert(object->record);
  }
  frame_ = QImage();
  update();
}

void DrawingPane::setMark(const std::optional<Mark>& mark) {
  if (!mark && !mark_) return;
  mark_ = mark;
  update();
}

void DrawingPane::setDark(bool isDark) {
  options_.isDark = isDark;
  frame_ = QImage();
  update();
}

void DrawingPane::setSight(const Sight& sight) {
  if (sight == sight_ || !isSensible(sight)) return;
  sight_ = sight;
  isFitted_ = false;
  if (paintMilliseconds_ < fluidMilliseconds && isPictureCurrent()) {
    frame_ = QImage();
  } else {
    rest_.start();
  }
  update();
}

void DrawingPane::fit() {
  static_cast<void>(whole());
  const view::Box box = view::windowAround(whole_.extents);
  const QSize size = area().size();
  const double scale =
      std::min(size.width() / (box.high.x - box.low.x), size.height() / (box.high.y - box.low.y));
  setSight({0.5 * (box.low + box.high), scale, size});
  isFitted_ = true;
  frame_ = QImage();
  update();
}

void DrawingPane::render() {
  makePicture();
  QElapsedTimer clock;
  clock.start();
  frame_ = QImage(sight_.size * devicePixelRatioF(), QImage::Format_RGB32);
  frame_.setDevicePixelRatio(devicePixelRatioF());
  frameSight_ = sight_;
  QPainter painter(&frame_);
  painter.setRenderHint(QPainter::Antialiasing);
  if (index_) {
    paintPicture(painter, picture_, *index_, sight_, options_);
  } else {
    painter.fillRect(QRect(QPoint(), sight_.size), backgroundOf(options_.isDark));
  }
  paintMilliseconds_ = clock.elapsed();
}

void DrawingPane::paintEvent(QPaintEvent*) {
  if (sight_.size != area().size()) sight_.size = area().size();
  if (sight_.size.isEmpty()) return;
  if (frame_.isNull() || frameSight_.size != sight_.size) render();
  QPainter painter(this);
  painter.fillRect(rect(), palette().window());
  painter.setClipRect(area());
  if (frameSight_ == sight_) {
    painter.drawImage(QPoint(), frame_);
  } else {
    // The corners of the old frame, where they are now.
    painter.fillRect(area(), backgroundOf(options_.isDark));
    const QPointF low = sight_.pixel(frameSight_.point({0, 0}));
    const QPointF high = sight_.pixel(frameSight_.point(QPointF(sight_.size.width(), sight_.size.height())));
    const double blur = sight_.scale / frameSight_.scale;
    if (blur < mostBlurred && blur > 1 / mostBlurred) painter.drawImage(QRectF(low, high), frame_);
  }
  if (!hoveredPrimitives_.empty()) {
    paintOnTop(painter, picture_, hoveredPrimitives_, sight_, options_.isDark);
    painter.setClipRect(area());
  }
  if (mark_) paintMark(painter);
  if (pressed_ && !isPanning_) {
    const QRect window = QRect(*pressed_, last_).normalized();
    painter.setPen(
        QPen(palette().highlight().color(), 1, last_.x() >= pressed_->x() ? Qt::SolidLine : Qt::DashLine));
    painter.drawRect(window);
  }
}

void DrawingPane::paintMark(QPainter& painter) const {
  const auto object = database::resolve(mark_->entity);
  if (!object || !contents_) return;
  const std::span<const std::uint32_t> shown = contents_->of(space().contents);
  if (std::find(shown.begin(), shown.end(), object->record) == shown.end()) return;
  const QPointF place = sight_.pixel(mark_->place);
  constexpr double reach = 6;
  const QRectF square(place - QPointF(reach, reach), place + QPointF(reach, reach));
  // Seen on lines of any color.
  painter.setBrush(Qt::NoBrush);
  for (const auto& [color, width] : {std::pair(backgroundOf(options_.isDark), 4), std::pair(markColor, 2)}) {
    painter.setPen(QPen(color, width));
    painter.drawRect(square);
  }
}

void DrawingPane::resizeEvent(QResizeEvent*) {
  const int height = tabs_->sizeHint().height();
  tabs_->setGeometry(0, this->height() - height, width(), height);
  sight_.size = area().size();
  if (isFitted_) fit();
}

// --- moving -------------------------------------------------------------------------------------------------

void DrawingPane::zoom(double factor, QPointF at) {
  Sight sight = sight_;
  const view::Vector2 under = sight.point(at);
  sight.scale *= factor;
  // The same point stays under the pointer.
  const view::Vector2 now = sight.point(at);
  sight.center = sight.center + (under - now);
  setSight(sight);
}

void DrawingPane::pan(QPointF by) {
  Sight sight = sight_;
  sight.center = sight.center + view::Vector2{-by.x() / sight.scale, by.y() / sight.scale};
  setSight(sight);
}

void DrawingPane::wheelEvent(QWheelEvent* event) {
  constexpr double anglePerStep = 120;
  zoom(std::pow(zoomStep, event->angleDelta().y() / anglePerStep), event->position());
}

void DrawingPane::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton) return;
  pressed_ = last_ = event->pos();
  isPanning_ = event->button() == Qt::MiddleButton;
}

void DrawingPane::mouseMoveEvent(QMouseEvent* event) {
  if (pressed_ && isPanning_) pan(event->pos() - last_);
  last_ = event->pos();
  if (pressed_) {
    update();
  } else if (isPictureCurrent()) {
    hover(recordAt(event->pos()));
  }
}

std::uint32_t DrawingPane::recordAt(QPointF pixel) const {
  if (!index_) return view::none;
  const std::vector<std::uint32_t> found = index_->at(sight_.point(pixel), reachPixels / sight_.scale);
  return found.empty() ? view::none : found.front();
}

void DrawingPane::hover(std::uint32_t record) {
  if (record == hovered_) return;
  hovered_ = record;
  findHovered();
  Q_EMIT hovered(record == view::none ? VkDbObjectId::kNull : drawing_->idOf(record));
  update();
}

// Once, so that moving over the drawing costs no more for it.
void DrawingPane::findHovered() {
  hoveredPrimitives_.clear();
  if (hovered_ == view::none) return;
  for (std::uint32_t i = 0; i < picture_.primitives.size(); ++i) {
    if (picture_.primitives[i].entity == hovered_) hoveredPrimitives_.push_back(i);
  }
}

void DrawingPane::leaveEvent(QEvent*) {
  hover(view::none);
}

void DrawingPane::contextMenuEvent(QContextMenuEvent* event) {
  makePicture();
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const std::uint32_t record = isByKey ? view::none : recordAt(event->pos());
  Q_EMIT menuWanted(record == view::none ? VkDbObjectId::kNull : drawing_->idOf(record), event->globalPos());
}

void DrawingPane::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressed_) return;
  const QPoint from = *pressed_;
  pressed_.reset();
  update();
  makePicture();
  if (isPanning_ || event->button() != Qt::LeftButton || !index_) return;
  const QPoint to = event->pos();
  constexpr int leastDrag = 4;
  if ((to - from).manhattanLength() < leastDrag) {
    const std::uint32_t found = recordAt(to);
    if (found == view::none) return pick({}, event->modifiers());
    return pick({found}, event->modifiers());
  }
  view::Box box;
  box.include(sight_.point(from));
  box.include(sight_.point(to));
  pick(to.x() >= from.x() ? whole().within(box) : index_->crossing(box), event->modifiers());
}

void DrawingPane::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::MiddleButton) fit();
}

void DrawingPane::pick(const std::vector<std::uint32_t>& records, Qt::KeyboardModifiers modifiers) {
  const bool adds = modifiers.testFlag(Qt::ShiftModifier);
  const bool takesAway = modifiers.testFlag(Qt::ControlModifier);
  Records chosen = adds || takesAway ? options_.highlighted : Records();
  for (const std::uint32_t record : records) {
    if (takesAway) {
      chosen.erase(record);
    } else {
      chosen.insert(record);
    }
  }
  // In the order of the file, as lists have them.
  std::vector<std::uint32_t> ordered(chosen.begin(), chosen.end());
  std::sort(ordered.begin(), ordered.end());
  std::vector<VkDbObjectId> entities;
  for (const std::uint32_t record : ordered)
    entities.push_back(drawing_->idOf(record));
  Q_EMIT selected(entities);
}

void DrawingPane::keyPressEvent(QKeyEvent* event) {
  const QPointF middle = QRectF(area()).center();
  switch (event->key()) {
    case Qt::Key_Left:
      return pan({panStep, 0});
    case Qt::Key_Right:
      return pan({-panStep, 0});
    case Qt::Key_Up:
      return pan({0, panStep});
    case Qt::Key_Down:
      return pan({0, -panStep});
    case Qt::Key_Plus:
      return zoom(zoomStep, middle);
    case Qt::Key_Minus:
      return zoom(1 / zoomStep, middle);
    case Qt::Key_Home:
      return fit();
    case Qt::Key_Escape:
      Q_EMIT selected({});
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace velt::desktop
