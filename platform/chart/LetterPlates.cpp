#include "platform/chart/LetterPlates.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "platform/chart/GraphPainter.h"
#include "platform/chart/Palette.h"

using namespace Qt::StringLiterals;

namespace {

// Signs whose places come closer than so many gaps cannot be told apart.
constexpr double leastApart = 1.5;

// Points that share a plate, and where that stands.
struct Plate {
  QStringList letters;  // of each point
  QString first, last;
  QRectF points;
  double radius;
  bool above;
  QString text{};
  QSizeF size{};
  enum Place { AtPoint, InRow, InStrip } place = AtPoint;
  QRectF box{};
  std::vector<QLineF> leader{};

  double X() const { return points.center().x(); }
  bool IsStretch() const { return letters.size() > 1; }
};

QString FromTo(const QString& first, const QString& last) {
  return first == last ? first : first + u'\u2013' + last;
}

class Plates {
 public:
  Plates(QPainter& painter, MarkRoom& room, const GraphGeometry& geometry,
         const std::vector<LetteredSpot>& spots)
      : painter_(painter),
        room_(room),
        geometry_(geometry),
        font_(geometry.PlateFont()),
        metrics_(font_, painter.device()),
        gap_(room.Gap()) {
    for (const LetteredSpot& spot : spots) Add(spot);
    for (Plate& plate : plates_) SetText(plate, plate.letters.join(u' '));
    Shorten();
  }

  // What one place takes from another only ever leads farther away: in the strip there is room for all.
  void Place() {
    for (bool isSettled = false; !isSettled;) {
      MarkRoom room = room_;
      for (Plate& plate : plates_)
        if (plate.place == Plate::AtPoint) PutAtPoint(plate, room);
      for (const auto& row : Rows())
        if (!PutInRow(row, room))
          for (Plate* plate : row) plate->place = Plate::InStrip;
      isSettled = PutInStrip(room);
      if (isSettled) room_ = room;
    }
  }

  void Paint() {
    painter_.setFont(font_);
    for (const Plate& plate : plates_) {
      painter_.setPen(LinePen({0, 0, Palette::Grey}, geometry_.unit));
      for (const QLineF& line : plate.leader)
        for (const QLineF& piece : room_.Seen(line)) painter_.drawLine(piece);
    }
    for (const Plate& plate : plates_) {
      painter_.fillRect(plate.box, Palette::Colour(Palette::Teal));
      painter_.setPen(Palette::Colour(Palette::White));
      painter_.drawText(plate.box.bottomLeft() + QPointF(2 * gap_, -2 * gap_), plate.text);
    }
  }

 private:
  void Add(const LetteredSpot& spot) {
    const QRectF point(spot.at, QSizeF(0, 0));
    if (!plates_.empty() && spot.at.x() - plates_.back().points.right() < leastApart * gap_)
      return Join(plates_.back(),
                  {{FromTo(spot.first, spot.last)}, spot.first, spot.last, point, spot.radius, spot.above});
    plates_.push_back(
        {{FromTo(spot.first, spot.last)}, spot.first, spot.last, point, spot.radius, spot.above});
  }

  static void Join(Plate& plate, const Plate& next) {
    plate.letters += next.letters;
    plate.last = next.last;
    const double top = std::min(plate.points.top(), next.points.top());
    const double bottom = std::max(plate.points.bottom(), next.points.bottom());
    plate.points = QRectF(QPointF(plate.points.left(), top), QPointF(next.points.right(), bottom));
    plate.radius = std::max(plate.radius, next.radius);
  }

  void SetText(Plate& plate, const QString& text) {
    plate.text = text;
    plate.size = {metrics_.horizontalAdvance(text) + 4 * gap_, metrics_.capHeight() + 4 * gap_};
  }

  double Width() const {
    double width = 0;
    for (const Plate& plate : plates_) width += plate.size.width() + 2 * gap_;
    return width;
  }

  // Until all have room beside each other.
  void Shorten() {
    const double most = geometry_.plot.width();
    if (Width() > most) {
      for (Plate& plate : plates_) SetText(plate, FromTo(plate.first, plate.last));
    }
    while (plates_.size() > 1 && Width() > most) {
      size_t closest = 0;
      const auto apart = [&](size_t i) { return plates_[i + 1].points.right() - plates_[i].points.left(); };
      for (size_t i = 1; i + 1 < plates_.size(); ++i)
        if (apart(i) < apart(closest)) closest = i;
      Join(plates_[closest], plates_[closest + 1]);
      SetText(plates_[closest], FromTo(plates_[closest].first, plates_[closest].last));
      plates_.erase(plates_.begin() + std::ptrdiff_t(closest) + 1);
    }
  }

  static void PutAtPoint(Plate& plate, MarkRoom& room) {
    const auto box = plate.IsStretch()
                         ? std::nullopt
                         : room.Near(plate.points.center(), plate.radius, plate.above, plate.size);
    plate.leader.clear();
    plate.place = box ? Plate::AtPoint : Plate::InRow;
    if (!box) return;
    plate.box = *box;
    room.TakeText(*box);
  }

  using Row = std::vector<Plate*>;

  // Beside each other, each as near as may be to its points.
  void SpreadOut(const Row& row) const {
    std::vector<double> wanted, widths;
    for (const Plate* plate : row) {
      wanted.push_back(plate->X());
      widths.push_back(plate->size.width() + 2 * gap_);
    }
    const auto centres = Placement::Spread(wanted, widths, geometry_.plot.left(), geometry_.plot.right());
    for (size_t i = 0; i < row.size(); ++i) {
      Plate& plate = *row[i];
      plate.box = QRectF(QPointF(centres[i] - plate.size.width() / 2, 0), plate.size);
    }
  }

  // Those that touch each other.
  std::vector<Row> Rows() {
    Row all;
    for (Plate& plate : plates_)
      if (plate.place == Plate::InRow) all.push_back(&plate);
    SpreadOut(all);
    std::vector<Row> rows;
    for (Plate* plate : all) {
      const bool touches = !rows.empty() && plate->box.left() - rows.back().back()->box.right() < 3 * gap_;
      if (!touches) rows.emplace_back();
      rows.back().push_back(plate);
    }
    return rows;
  }

  // From the row the leaders fan out to their points, then go straight.
  double FanOf(const Row& row) const {
    constexpr double slope = 0.35, most = 3;
    double aside = 0;
    for (const Plate* plate : row) aside = std::max(aside, std::abs(plate->box.center().x() - plate->X()));
    const double height = row.front()->size.height();
    return aside < gap_ ? 0 : std::clamp(slope * aside, height / 2, most * height);
  }

  void Lead(Plate& plate, bool isAbove, double fan) const {
    const double edge = isAbove ? plate.box.bottom() : plate.box.top();
    const double away = isAbove ? -1 : 1;
    const double reached =
        (isAbove ? plate.points.top() : plate.points.bottom()) + away * (plate.radius + gap_);
    const QPointF knee(plate.X(), edge - away * fan), end(plate.X(), reached);
    plate.leader = {QLineF(QPointF(plate.box.center().x(), edge), knee)};
    if ((end.y() - knee.y()) * away < 0) plate.leader.emplace_back(knee, end);
    if (plate.IsStretch())
      plate.leader.emplace_back(plate.points.left() - gap_, reached, plate.points.right() + gap_, reached);
  }

  // As near as may be, above or below.
  bool PutInRow(const Row& row, MarkRoom& room) const {
    const double fan = FanOf(row), height = row.front()->size.height();
    double top = row.front()->points.top(), bottom = row.front()->points.bottom();
    int above = 0;
    for (const Plate* plate : row) {
      top = std::min(top, plate->points.top() - plate->radius);
      bottom = std::max(bottom, plate->points.bottom() + plate->radius);
      above += plate->above ? 1 : -1;
    }
    const double left = row.front()->box.left(), right = row.back()->box.right();
    const double deep = height + fan;
    for (double away = 2 * gap_; away < geometry_.plot.height(); away += height / 4) {
      for (const bool isAbove : {above >= 0, above < 0}) {
        const QRectF taken(left, isAbove ? top - away - deep : bottom + away, right - left, deep);
        if (!room.IsFree(taken)) continue;
        for (Plate* plate : row) {
          plate->box.moveTop(isAbove ? taken.top() : taken.bottom() - height);
          Lead(*plate, isAbove, fan);
        }
        if (std::ranges::any_of(row, [&](const Plate* plate) { return IsInTheWay(*plate, room); })) continue;
        for (const Plate* plate : row) Take(*plate, room);
        return true;
      }
    }
    return false;
  }

  static bool IsInTheWay(const Plate& plate, const MarkRoom& room) {
    return std::ranges::any_of(
        plate.leader, [&](const QLineF& line) { return room.IsOnText(line) || room.CrossesLeader(line); });
  }

  static void Take(const Plate& plate, MarkRoom& room) {
    room.TakeText(plate.box);
    for (const QLineF& line : plate.leader) room.TakeLeader(line);
  }

  // False where others are in the way of leaders from there, which then go there as well.
  bool PutInStrip(MarkRoom& room) {
    Row strip;
    for (Plate& plate : plates_)
      if (plate.place == Plate::InStrip) strip.push_back(&plate);
    if (strip.empty()) return true;
    SpreadOut(strip);
    double fan = FanOf(strip) + 2 * gap_;
    for (const Plate* plate : strip)  // down to the highest point
      fan = std::clamp(plate->points.top() - plate->radius - geometry_.plot.top(), 2 * gap_, fan);
    for (Plate* plate : strip) {
      plate->box.moveBottom(geometry_.plot.top() - 2 * gap_);
      Lead(*plate, true, fan);
    }
    bool isSettled = true;
    for (Plate& plate : plates_) {
      if (plate.place == Plate::InStrip) continue;
      const bool isHit = std::ranges::any_of(strip, [&](const Plate* other) {
        return std::ranges::any_of(other->leader, [&](const QLineF& line) { return Meets(line, plate); });
      });
      if (!isHit) continue;
      plate.place = Plate::InStrip;
      isSettled = false;
    }
    if (isSettled)
      for (const Plate* plate : strip) Take(*plate, room);
    return isSettled;
  }

  bool Meets(const QLineF& line, const Plate& plate) const {
    return MarkRoom::Crosses(line, plate.box.adjusted(-gap_, -gap_, gap_, gap_)) ||
           std::ranges::any_of(plate.leader, [&](const QLineF& leader) {
             return leader.intersects(line) == QLineF::BoundedIntersection;
           });
  }

  QPainter& painter_;
  MarkRoom& room_;
  const GraphGeometry& geometry_;
  QFont font_;
  QFontMetricsF metrics_;
  double gap_;
  std::vector<Plate> plates_;
};

}  // namespace

void PaintLetterPlates(QPainter& painter, MarkRoom& room, const GraphGeometry& geometry,
                       const std::vector<LetteredSpot>& spots) {
  if (spots.empty()) return;
  Plates plates(painter, room, geometry, spots);
  plates.Place();
  plates.Paint();
}
