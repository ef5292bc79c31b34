#include "formats/html/arrowheads.h"

#include <algorithm>
#include <cmath>

#include "formats/html/svg_text.h"

namespace pagerex {
namespace {

using Step = ShapePath::Step;

/// An end of a line: where it is, and where it comes from.
struct LineEnd {
  PathPoint tip;
  PathPoint before;
  PathPoint* point;  ///< of the step that holds it
};

bool isOpen(const ShapePath::Part& part) {
  return part.isStroked && part.steps.size() >= 2 && part.steps[0].kind == Step::Kind::kMove &&
         std::none_of(part.steps.begin(), part.steps.end(),
                      [](const Step& step) { return step.kind == Step::Kind::kClose; });
}

bool isApart(PathPoint a, PathPoint b) {
  return std::hypot(a.x - b.x, a.y - b.y) > 0.5;
}

/// The first of the points that stands apart from the tip.
PathPoint firstApart(PathPoint tip, const PathPoint (&points)[3]) {
  const auto* const found = std::find_if(points, points + 2, [tip](PathPoint p) { return isApart(p, tip); });
  return *found;
}

LineEnd startOf(ShapePath::Part& part) {
  Step& move = part.steps.front();
  const Step& next = part.steps[1];
  const PathPoint tip = move.end;
  if (next.kind != Step::Kind::kCurve) return {tip, next.end, &move.end};
  return {tip, firstApart(tip, {next.first, next.second, next.end}), &move.end};
}

LineEnd endOf(ShapePath::Part& part) {
  Step& last = part.steps.back();
  const PathPoint begin = part.steps[part.steps.size() - 2].end, tip = last.end;
  if (last.kind != Step::Kind::kCurve) return {tip, begin, &last.end};
  return {tip, firstApart(tip, {last.second, last.first, begin}), &last.end};
}

/// A point that stands so far before the tip, and so far aside of the line.
struct HeadPoint {
  double along, aside;  ///< parts of length and half width
};

struct HeadRow {
  Arrowhead::Kind kind;
  double cut;  ///< so much of the length the line ends before its tip
  HeadPoint points[4];
  size_t count;
};
constexpr HeadRow kHeads[] = {
    {Arrowhead::Kind::kTriangle, 0.9, {{0, 0}, {1, 1}, {1, -1}, {}}, 3},
    {Arrowhead::Kind::kStealth, 0.6, {{0, 0}, {1, 1}, {0.6, 0}, {1, -1}}, 4},
    {Arrowhead::Kind::kDiamond, 0, {{-0.5, 0}, {0, 1}, {0.5, 0}, {0, -1}}, 4},
    {Arrowhead::Kind::kOpen, 0.15, {{1, 1}, {0, 0}, {1, -1}, {}}, 3},
};

class HeadWriter {
 public:
  HeadWriter(std::string& out, const ShapeLine& line, double width) : out_(out), line_(line), width_(width) {}

  void Add(const Arrowhead& head, const LineEnd& end);

 private:
  void AddOval(const LineEnd& end, double length, double half, double angle);
  void AddPoints(const HeadRow& row, const LineEnd& end, PathPoint along, double length, double half);

  std::string& out_;
  const ShapeLine& line_;
  double width_;
};

void HeadWriter::Add(const Arrowhead& head, const LineEnd& end) {
  constexpr double kSizes[] = {2, 3, 5};
  constexpr double kLeastWidth = 40;  // thinner lines have heads as if they were so wide
  if (head.kind == Arrowhead::Kind::kNone || !isApart(end.tip, end.before)) return;
  const double unit = std::max(width_, kLeastWidth);
  const double length = unit * kSizes[head.length], half = unit * kSizes[head.width] / 2;
  const double distance = std::hypot(end.before.x - end.tip.x, end.before.y - end.tip.y);
  const PathPoint along{(end.before.x - end.tip.x) / distance, (end.before.y - end.tip.y) / distance};
  const auto* const row = std::find_if(std::begin(kHeads), std::end(kHeads),
                                       [&head](const HeadRow& each) { return each.kind == head.kind; });
  if (row == std::end(kHeads)) {
    return AddOval(end, length, half, std::atan2(along.y, along.x));
  }
  AddPoints(*row, end, along, length, half);
  const double cut = std::min(row->cut * length, distance * 0.9);
  *end.point = {end.tip.x + along.x * cut, end.tip.y + along.y * cut};
}

void HeadWriter::AddOval(const LineEnd& end, double length, double half, double angle) {
  constexpr double kDegrees = 57.29577951;
  out_ += "<ellipse";
  appendLengthAttribute(out_, "cx", end.tip.x);
  appendLengthAttribute(out_, "cy", end.tip.y);
  appendLengthAttribute(out_, "rx", length / 2);
  appendLengthAttribute(out_, "ry", half);
  appendRgbAttribute(out_, "fill", line_.rgb);
  out_ += " stroke=\"none\" transform=\"rotate(";
  appendDecimal(out_, angle * kDegrees);
  out_ += ' ';
  appendPoint(out_, end.tip);
  out_ += ")\"/>";
}

void HeadWriter::AddPoints(const HeadRow& row, const LineEnd& end, PathPoint along, double length,
                           double half) {
  const bool isLine = row.kind == Arrowhead::Kind::kOpen;
  out_ += "<path d=\"";
  for (size_t i = 0; i < row.count; ++i) {
    const double back = row.points[i].along * length, aside = row.points[i].aside * half;
    out_ += i == 0 ? 'M' : 'L';
    appendPoint(out_,
                {end.tip.x + along.x * back - along.y * aside, end.tip.y + along.y * back + along.x * aside});
  }
  if (isLine) {
    out_ += "\" fill=\"none\" stroke-dasharray=\"none\"/>";
    return;
  }
  out_ += "Z\" stroke=\"none\"";
  appendRgbAttribute(out_, "fill", line_.rgb);
  out_ += "/>";
}

}  // namespace

void appendArrowheads(std::string& out, const ShapeLine& line, double width, ShapePath& path) {
  HeadWriter writer(out, line, width);
  auto& parts = path.Parts();
  const auto first = std::find_if(parts.begin(), parts.end(), isOpen);
  if (first == parts.end()) return;
  const auto last = std::find_if(parts.rbegin(), parts.rend(), isOpen);
  // Both are found before one is cut.
  const LineEnd start = startOf(*first), end = endOf(*last);
  writer.Add(line.start, start);
  writer.Add(line.end, end);
}

}  // namespace pagerex
