#include "layout_checks.hpp"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <sstream>

using SV::Point;
using SV::Rectangle;
using SV::String;

namespace modeler {
namespace {

/// All pixels of an area, the last ones included.
struct Extent {
  explicit Extent(Rectangle const & area)
      : left(area.TopLeft().x), top(area.TopLeft().y), right(left + area.GetSize().width - 1),
        bottom(top + area.GetSize().height - 1) {}
  Extent(Point const & a, Point const & b)
      : left(std::min(a.x, b.x)), top(std::min(a.y, b.y)), right(std::max(a.x, b.x)), bottom(std::max(a.y, b.y)) {}

  bool touches(Extent const & other) const {
    return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
  }
  bool holds(Extent const & other) const {
    return left <= other.left && other.right <= right && top <= other.top && other.bottom <= bottom;
  }

  long left;
  long top;
  long right;
  long bottom;
};

/// How far from the middle of the box, measured so that its outline has the value 1: in rectangles by the larger coordinate, in
/// diamonds by their sum.
double distance(Box const & box, Point const & point) {
  double const halfWidth = static_cast<double>(box.area.GetSize().width / 2);
  double const halfHeight = static_cast<double>(box.area.GetSize().height / 2);
  double const x = std::labs(point.x - box.area.TopLeft().x - box.area.GetSize().width / 2) / halfWidth;
  double const y = std::labs(point.y - box.area.TopLeft().y - box.area.GetSize().height / 2) / halfHeight;
  return box.kind == NodeKind::Decision ? x + y : std::max(x, y);
}

/// A pixel's worth of that distance.
double pixel(Box const & box) {
  return 2.0 / static_cast<double>(std::min(box.area.GetSize().width, box.area.GetSize().height) / 2);
}

/// The place of the piece that is nearest to the middle of the box.
Point nearest(Box const & box, Extent const & piece) {
  Point const & corner = box.area.TopLeft();
  return {std::clamp(corner.x + box.area.GetSize().width / 2, piece.left, piece.right),
          std::clamp(corner.y + box.area.GetSize().height / 2, piece.top, piece.bottom)};
}

class Check {
public:
  Check(ProcessModel const & model, Layout const & layout) : model_(model), layout_(layout) {
    for (Arrow const & arrow : layout.arrows) {
      pieces_.emplace_back();
      for (std::size_t i = 1; i < arrow.points.size(); ++i)
        pieces_.back().emplace_back(arrow.points[i - 1], arrow.points[i]);
    }
    checkCounts();
    if (!faults.empty())
      return;
    checkBoxes();
    checkArrows();
    checkLabels();
  }

  std::vector<std::string> faults;

private:
  template <class... Part> void fail(Part const &... part) {
    std::ostringstream text;
    (text << ... << part);
    faults.push_back(text.str());
  }

  void checkCounts() {
    auto const labels =
        std::count_if(model_.flows.begin(), model_.flows.end(), [](Flow const & flow) { return flow.text.Len() > 0; });
    if (layout_.boxes.size() != model_.nodes.size() || layout_.arrows.size() != model_.flows.size() ||
        layout_.labels.size() != static_cast<std::size_t>(labels))
      fail("something is missing");
  }

  void checkBoxes() {
    for (std::size_t i = 0; i < layout_.boxes.size(); ++i) {
      Box const & box = layout_.boxes[i];
      checkInPicture("box", i, Extent(box.area));
      for (std::size_t other = i + 1; other < layout_.boxes.size(); ++other)
        if (Extent(box.area).touches(Extent(layout_.boxes[other].area)))
          fail("boxes ", i, " and ", other, " overlap");
      for (TextLine const & line : box.lines) {
        Extent const text(line.area);
        for (Point const & corner : {Point{text.left, text.top}, Point{text.right, text.bottom},
                                     Point{text.left, text.bottom}, Point{text.right, text.top}})
          if (distance(box, corner) >= 1)
            fail("box ", i, " does not hold '", line.text.c_str(), "'");
      }
    }
  }

  void checkArrows() {
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
      checkEnds(i);
      for (Extent const & piece : pieces_[i]) {
        checkInPicture("arrow", i, piece);
        if (piece.left != piece.right && piece.top != piece.bottom)
          fail("arrow ", i, " is aslant");
        for (std::size_t box = 0; box < layout_.boxes.size(); ++box)
          if (distance(layout_.boxes[box], nearest(layout_.boxes[box], piece)) < 1 - pixel(layout_.boxes[box]))
            fail("arrow ", i, " crosses box ", box);
      }
      for (std::size_t other = i + 1; other < pieces_.size(); ++other)
        checkApart(i, other);
    }
  }

  void checkEnds(std::size_t i) {
    ISequence<Point> const & points = layout_.arrows[i].points;
    if (points.size() < 2) {
      fail("arrow ", i, " leads nowhere");
      return;
    }
    Box const & from = layout_.boxes[model_.flows[i].from];
    Box const & to = layout_.boxes[model_.flows[i].to];
    if (std::abs(distance(from, points.front()) - 1) > pixel(from))
      fail("arrow ", i, " does not begin at its box");
    if (std::abs(distance(to, points.back()) - 1) > pixel(to))
      fail("arrow ", i, " does not end at its box");
    Point const & last = points[points.size() - 2];
    if (std::labs(last.x - points.back().x) + std::labs(last.y - points.back().y) < 2 * layout_.line / 3)
      fail("arrow ", i, " has no room for its head");
    if (layout_.arrows[i].leadsBack && !(points[1].y < points[0].y && last.y < points.back().y))
      fail("arrow ", i, " leads back, but not above its boxes");
    if (!layout_.arrows[i].leadsBack && !(points[1].x > points[0].x && last.x < points.back().x))
      fail("arrow ", i, " does not lead on from side to side");
  }

  /// Arrows may cross, but not run on each other.
  void checkApart(std::size_t i, std::size_t other) {
    for (Extent const & a : pieces_[i])
      for (Extent const & b : pieces_[other]) {
        bool const across = a.top == a.bottom && b.top == b.bottom && a.top == b.top;
        bool const down = a.left == a.right && b.left == b.right && a.left == b.left;
        if ((across || down) && a.touches(b))
          fail("arrows ", i, " and ", other, " run on each other");
      }
  }

  void checkLabels() {
    for (std::size_t i = 0; i < layout_.labels.size(); ++i) {
      Extent const label(layout_.labels[i].area);
      checkInPicture("label", i, label);
      for (std::size_t box = 0; box < layout_.boxes.size(); ++box)
        if (label.touches(Extent(layout_.boxes[box].area)))
          fail("label ", i, " lies on box ", box);
      for (std::size_t other = i + 1; other < layout_.labels.size(); ++other)
        if (label.touches(Extent(layout_.labels[other].area)))
          fail("label ", i, " lies on label ", other);
      for (std::size_t arrow = 0; arrow < pieces_.size(); ++arrow)
        for (Extent const & piece : pieces_[arrow])
          if (label.touches(piece))
            fail("label ", i, " lies on arrow ", arrow);
    }
  }

  void checkInPicture(char const * what, std::size_t i, Extent const & extent) {
    if (!Extent({0, 0}, {layout_.size.width - 1, layout_.size.height - 1}).holds(extent))
      fail(what, " ", i, " is out of the picture");
  }

  ProcessModel const & model_;
  Layout const & layout_;
  std::vector<std::vector<Extent>> pieces_;
};

std::size_t nodeOf(ProcessModel & model, char letter) {
  String const id(letter);
  auto const found =
      std::find_if(model.nodes.begin(), model.nodes.end(), [&](Node const & node) { return node.id == id; });
  auto const place = static_cast<std::size_t>(found - model.nodes.begin());
  if (found == model.nodes.end())
    model.nodes.push_back({std::isupper(letter) ? NodeKind::Decision : NodeKind::Activity, id, id + " is done", 10});
  return place;
}

} // namespace

TextFacts plainTexts(long scale) {
  return {[scale](String const & text) {
            return SV::Size{7 * scale * text.Len(), 16 * scale};
          },
          [](modeler::Node const & node) { return node.duration > 0 ? String(node.duration) + " min" : String(); }};
}

std::vector<std::string> faultsOf(ProcessModel const & model, Layout const & layout) {
  return Check(model, layout).faults;
}

ProcessModel modelOf(std::string const & flows) {
  ProcessModel model;
  std::istringstream words(flows);
  for (std::string word; words >> word;) {
    std::size_t const from = nodeOf(model, word[0]);
    if (word.size() < 3)
      continue; // a node alone
    std::size_t const to = nodeOf(model, word[2]);
    model.flows.push_back({from, to, word.size() > 3 ? word.c_str() + 4 : ""});
  }
  return model;
}

} // namespace modeler
