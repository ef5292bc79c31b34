#include "pictures/path_data.h"

#include <gtest/gtest.h>

#include <limits>

namespace pagerex {
namespace {

TEST(PathData, CountsFromThePointBefore) {
  PathData path;
  path.MoveTo({10, 20});
  path.LineTo({15, 17});
  path.LineTo({15, 30});
  path.Close();
  EXPECT_EQ(path.view(), "M10 20l5-3 0 13z");
}

TEST(PathData, GoesOnFromTheFigureBeginAfterItsEnd) {
  PathData path;
  path.MoveTo({10, 10});
  path.LineTo({20, 10});
  path.Close();
  path.LineTo({12, 14});
  EXPECT_EQ(path.view(), "M10 10l10 0zl2 4");
}

TEST(PathData, RoundsWhereAPointIsAndNotTheWayToIt) {
  PathData path;
  path.MoveTo({0.4, 0.4});
  for (int i = 1; i <= 4; ++i) path.LineTo({0.4 + i * 0.4, 0.4});
  // 0.8 is 1, 1.2 is 1, 1.6 is 2, 2.0 is 2.
  EXPECT_EQ(path.view(), "M0 0l1 0 0 0 1 0 0 0");
}

TEST(PathData, SpellsCurvesBoxesAndEllipses) {
  PathData curve, box, ellipse;
  curve.MoveTo({0, 0});
  curve.CurveTo({1, 2}, {3, -4}, {5, 6});
  EXPECT_EQ(curve.view(), "M0 0c1 2 3-4 5 6");
  box.AddBox({10, 20, 40, 25});
  EXPECT_EQ(box.view(), "M10 20h30v5h-30z");
  ellipse.AddEllipse({0, 0, 200, 100});
  EXPECT_EQ(ellipse.view(),
            "M100 0c55 0 100 22 100 50 0 28-45 50-100 50-55 0-100-22-100-50 0-28 45-50 100-50z");
}

TEST(PathData, KeepsRadiiWithinTheirBox) {
  PathData path;
  path.AddRoundBox({0, 0, 20, 20}, 1000, 1000);
  EXPECT_EQ(path.bounds().right, 20);
  EXPECT_EQ(path.bounds().left, 0);
}

TEST(PathData, HasNoNumberThatABrowserCannotRead) {
  PathData path;
  path.MoveTo({std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()});
  path.LineTo({-1e300, 1e300});
  EXPECT_EQ(path.view(), "M0 4000000l-4000000 0");
}

TEST(PathData, KnowsItsBoundsAlsoOfWhatWasAppended) {
  PathData first, second;
  first.AddBox({0, 0, 10, 10});
  second.MoveTo({-5, 3});
  second.LineTo({7, 30});
  first.Append(second);
  EXPECT_EQ(first.view(), "M0 0h10v10h-10zM-5 3l12 27");
  EXPECT_EQ(first.bounds().left, -5);
  EXPECT_EQ(first.bounds().bottom, 30);
  first.clear();
  EXPECT_TRUE(first.empty());
  EXPECT_LT(first.bounds().right, first.bounds().left);
}

TEST(PathData, ArcsAreBoundedByTheirRadii) {
  PathData path;
  path.MoveTo({0, 0});
  path.ArcTo(10, 5, 30, false, true, {10, 10});
  EXPECT_EQ(path.view(), "M0 0a10 5 30 0 1 10 10");
  EXPECT_GE(path.bounds().right, 10);
}

}  // namespace
}  // namespace pagerex
