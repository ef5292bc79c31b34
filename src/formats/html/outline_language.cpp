#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

#include "formats/html/shape_outlines.h"

// Reads the rows of shape_outlines.cpp, where their language is told.

namespace pagerex {
namespace {

constexpr double kSize = 21600;
constexpr size_t kMostValues = 8, kLetters = 26;
constexpr size_t kHalf = kLetters - 2, kWhole = kLetters - 1;  // y and z, which are no guides

/// Takes what stands in front of `mark` off `rest`, and the mark.
std::string_view takeUntil(std::string_view& rest, char mark) {
  const size_t end = std::min(rest.find(mark), rest.size());
  const std::string_view part = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

/// With or without a sign and a point; no other manner.
double numberOf(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  double value = 0, part = 0;
  for (const char digit : text.substr(isNegative ? 1 : 0)) {
    if (digit == '.') {
      part = 1;
      continue;
    }
    value = value * 10 + (digit - '0');
    part *= 10;
  }
  if (part > 0) value /= part;
  return isNegative ? -value : value;
}

struct OutlineRow {
  std::string_view adjustments, guides, path, textBox;
};

bool isOneOf(std::string_view types, uint16_t type) {
  while (!types.empty()) {
    if (numberOf(takeUntil(types, ',')) == type) return true;
  }
  return false;
}

bool findRow(uint16_t type, OutlineRow& out) {
  std::string_view rows = kShapeOutlines;
  while (!rows.empty()) {
    std::string_view row = takeUntil(rows, '\n');
    if (!isOneOf(takeUntil(row, '|'), type)) continue;
    out.adjustments = takeUntil(row, '|');
    out.guides = takeUntil(row, '|');
    out.path = takeUntil(row, '|');
    out.textBox = row;
    return true;
  }
  return false;
}

/// What the values of a row are computed with.
class OutlineValues {
 public:
  OutlineValues(const OutlineRow& row, const ShapeGeometry& shape, double width, double height);

  /// Of a number, an adjustment, a guide, or an expression in brackets; a ' behind it measures it from the
  /// other side. Takes it off `rest`.
  double Take(std::string_view& rest) const;

 private:
  double ValueOf(std::string_view word) const;
  double Compute(std::string_view expression) const;

  double width_, height_;
  std::array<double, kMostValues> adjustments_{};
  std::array<double, kLetters> guides_{};
};

OutlineValues::OutlineValues(const OutlineRow& row, const ShapeGeometry& shape, double width, double height)
    : width_(width), height_(height) {
  std::string_view defaults = row.adjustments;
  for (size_t i = 0; i < kMostValues; ++i) {
    std::string_view most = takeUntil(defaults, ',');
    const double usual = numberOf(takeUntil(most, '<'));
    adjustments_[i] = shape.adjustments[i] ? *shape.adjustments[i] : usual;
    if (!most.empty()) adjustments_[i] = std::clamp(adjustments_[i], 0.0, numberOf(most));
  }
  guides_[kHalf] = kSize / 2;
  guides_[kWhole] = kSize;
  std::string_view guides = row.guides;
  for (size_t i = 0; i < kHalf && !guides.empty(); ++i) guides_[i] = Compute(takeUntil(guides, ';'));
}

double OutlineValues::Take(std::string_view& rest) const {
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  double value = 0;
  if (rest.starts_with('(')) {
    rest.remove_prefix(1);
    value = Compute(takeUntil(rest, ')'));
  } else {
    const size_t end = std::min(rest.find_first_of(" '"), rest.size());
    value = ValueOf(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  if (!rest.starts_with('\'')) return value;
  rest.remove_prefix(1);
  return kSize - value;
}

double OutlineValues::ValueOf(std::string_view word) const {
  if (word.empty()) return 0;
  const char first = word[0];
  if (first == '$' && word.size() == 2) return adjustments_[static_cast<size_t>(word[1] - '0') % kMostValues];
  if (first >= 'a' && first <= 'z') return guides_[static_cast<size_t>(first - 'a')];
  if (first == 'W') return width_;
  if (first == 'H') return height_;
  return first == 'S' ? std::min(width_, height_) : numberOf(word);
}

/// Values, and behind them what is done to those that are left.
double OutlineValues::Compute(std::string_view expression) const {
  constexpr double kRadians = std::numbers::pi / 180;
  std::array<double, 8> stack{};
  size_t count = 0;
  while (!expression.empty()) {
    const std::string_view word = takeUntil(expression, ' ');
    const char sign = word.size() == 1 ? word[0] : 'a';
    const bool isUnary = sign == '~' || sign == '#' || sign == '^' || sign == '!' || sign == '@';
    const bool isBinary = std::string_view("+-*/<>&").find(sign) != std::string_view::npos;
    const size_t needed = isUnary ? 1 : isBinary ? 2 : sign == '?' ? 3 : 0;
    if (count < needed || (needed == 0 && count == stack.size())) return 0;
    if (needed == 0) {
      stack[count++] = ValueOf(word);
      continue;
    }
    count -= needed - 1;
    double& a = stack[count - 1];
    const double b = stack[count % stack.size()], c = stack[(count + 1) % stack.size()];
    switch (sign) {
      case '+':
        a += b;
        break;
      case '-':
        a -= b;
        break;
      case '*':
        a *= b;
        break;
      case '/':
        a = b != 0 ? a / b : 0;
        break;
      case '<':
        a = std::min(a, b);
        break;
      case '>':
        a = std::max(a, b);
        break;
      case '&':
        a = std::atan2(a, b) / kRadians;
        break;
      case '~':
        a = -a;
        break;
      case '#':
        a = std::abs(a);
        break;
      case '^':
        a = std::sqrt(std::max(a, 0.0));
        break;
      case '!':
        a = std::sin(a * kRadians);
        break;
      case '@':
        a = std::cos(a * kRadians);
        break;
      default:
        a = a > 0 ? b : c;
        break;
    }
  }
  return count > 0 ? stack[0] : 0;
}

/// Draws the path of a row.
class OutlineDrawer {
 public:
  OutlineDrawer(const OutlineValues& values, const ShapeGeometry& shape, double width, double height,
                ShapePath& out)
      : values_(values), shape_(shape), width_(width), height_(height), out_(out) {}

  void Draw(std::string_view path);

 private:
  double Number() { return values_.Take(path_); }
  PathPoint Point();
  PathPoint Placed(double x, double y) const;
  bool hasMore();
  void DrawStep(char command);
  void Bulge(PathPoint to);
  void Star();
  void Rays();

  const OutlineValues& values_;
  const ShapeGeometry& shape_;
  double width_, height_;
  ShapePath& out_;
  std::string_view path_;
};

void OutlineDrawer::Draw(std::string_view path) {
  path_ = path;
  char command = 'M';
  while (hasMore()) {
    if (path_[0] >= 'A' && path_[0] <= 'Z') {
      command = path_[0];
      path_.remove_prefix(1);
    }
    DrawStep(command);
    if (command == 'M') command = 'L';
  }
}

bool OutlineDrawer::hasMore() {
  path_.remove_prefix(std::min(path_.find_first_not_of(' '), path_.size()));
  return !path_.empty();
}

PathPoint OutlineDrawer::Placed(double x, double y) const {
  const double spaceX = double{1} * shape_.right - shape_.left,
               spaceY = double{1} * shape_.bottom - shape_.top;
  return {(x - shape_.left) * width_ / (spaceX > 0 ? spaceX : kSize),
          (y - shape_.top) * height_ / (spaceY > 0 ? spaceY : kSize)};
}

PathPoint OutlineDrawer::Point() {
  const double x = Number();
  return Placed(x, Number());
}

void OutlineDrawer::DrawStep(char command) {
  switch (command) {
    case 'M':
      return out_.Move(Point());
    case 'L':
      return out_.Line(Point());
    case 'U':
      return Bulge(Point());
    case 'X':
      return out_.Quadrant(Point(), true);
    case 'Y':
      return out_.Quadrant(Point(), false);
    case 'Z':
      return out_.Close();
    case 'E':
      return out_.NextPart();
    case 'N':
      out_.Current().isFilled = false;
      return;
    case 'O':
      out_.Current().isStroked = false;
      return;
    case 'G':
      out_.Current().shade = 1;
      return;
    case 'D':
      out_.Current().shade = -1;
      return;
    case 'P':
      return Star();
    case 'R':
      return Rays();
    default:
      break;
  }
  const PathPoint a = Point();
  if (command == 'Q') return out_.Quadratic(a, Point());
  const PathPoint b = Point();
  if (command == 'C') return out_.Curve(a, b, Point());
  const double start = Number();
  out_.Arc(a, b, start, Number());
}

/// To the left of the way.
void OutlineDrawer::Bulge(PathPoint to) {
  constexpr double kAlong = 0.1, kAside = 0.45;
  const PathPoint from = out_.Here();
  const double x = to.x - from.x, y = to.y - from.y;
  out_.Curve({from.x + x * kAlong + y * kAside, from.y + y * kAlong - x * kAside},
             {to.x - x * kAlong + y * kAside, to.y - y * kAlong - x * kAside}, to);
}

/// So many points, and how far from the middle the corners between them are.
void OutlineDrawer::Star() {
  constexpr double kMiddle = kSize / 2, kMost = 64;
  const int points = static_cast<int>(std::clamp(Number(), 2.0, kMost));
  const double inner = std::clamp(Number(), 0.0, kMiddle);
  for (int i = 0; i < 2 * points; ++i) {
    const double angle = i * std::numbers::pi / points, radius = i % 2 == 0 ? kMiddle : inner;
    const PathPoint to = Placed(kMiddle + radius * std::cos(angle), kMiddle + radius * std::sin(angle));
    i == 0 ? out_.Move(to) : out_.Line(to);
  }
  out_.Close();
}

void OutlineDrawer::Rays() {
  constexpr double kMiddle = kSize / 2, kMost = 64;
  const int rays = static_cast<int>(std::clamp(Number(), 1.0, kMost));
  const double inner = Number(), half = Number() * std::numbers::pi / 180;
  for (int i = 0; i < rays; ++i) {
    const double angle = 2 * i * std::numbers::pi / rays;
    const auto at = [&](double turn, double radius) {
      return Placed(kMiddle + radius * std::cos(turn), kMiddle + radius * std::sin(turn));
    };
    out_.Move(at(angle, kMiddle));
    out_.Line(at(angle + half, inner));
    out_.Line(at(angle - half, inner));
    out_.Close();
  }
}

int32_t whole(double length) {
  constexpr double kMost = 1 << 30;
  return length > -kMost && length < kMost ? static_cast<int32_t>(std::lround(length)) : 0;
}

/// Whether the file has lines for it.
bool isFreeform(const ShapeGeometry& shape) {
  return !shape.vertices.empty();
}

}  // namespace

bool shapeOutline(const ShapeGeometry& shape, double width, double height, ShapePath& out) {
  if (isFreeform(shape)) return freeformOutline(shape, width, height, out);
  OutlineRow row;
  if (!findRow(shape.type, row)) return false;
  const OutlineValues values(row, shape, width, height);
  OutlineDrawer(values, shape, width, height, out).Draw(row.path);
  return true;
}

ShapeBox shapeTextBox(const ShapeGeometry& shape, double width, double height) {
  ShapeBox box{0, 0, whole(width), whole(height)};
  OutlineRow row;
  if (isFreeform(shape) || !findRow(shape.type, row) || row.textBox.empty()) return box;
  const OutlineValues values(row, shape, width, height);
  std::string_view sides = row.textBox;
  double side[4];
  for (double& each : side) each = std::clamp(values.Take(sides), 0.0, kSize) / kSize;
  box.left = whole(side[0] * width);
  box.top = whole(side[1] * height);
  box.width = whole(std::max(side[2] - side[0], 0.0) * width);
  box.height = whole(std::max(side[3] - side[1], 0.0) * height);
  return box;
}

}  // namespace pagerex
