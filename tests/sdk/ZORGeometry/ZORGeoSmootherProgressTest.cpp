// Tests of ZORGeoCurveOnSurfaceSmoother: progress, cancel and exceptions of receivers.

#include "CrowdedBends.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>

#include <algorithm>

namespace {

TEST(ZORGeoSmootherProgressTest, ReportsItsProgress)
{
    const auto surface = Plane(60).Make();
    const Locations curve = CrowdedZigzag(*surface, 20, 9, 30);
    const ZORGeoCurveOnSurfaceSmoother smoother(50);
    QList<double> reports;
    const auto smooth = smoother.Smooth(curve, [&](double progress) {
        reports.append(progress);
        return true;
    });
    ASSERT_TRUE(smooth);
    EXPECT_TRUE(IsSame(smoother.Smooth(curve), *smooth));
    ASSERT_GE(reports.size(), 3);
    EXPECT_EQ(0, reports.constFirst());
    EXPECT_EQ(1, reports.constLast());
    EXPECT_TRUE(std::is_sorted(reports.constBegin(), reports.constEnd()));
    EXPECT_LT(reports[reports.size() - 2], 1);
    EXPECT_TRUE(IsSame(*smooth, *smoother.Smooth(curve, {}))) << "an empty function reports nothing";
}

TEST(ZORGeoSmootherProgressTest, ReportsTheProgressOfCurvesThatStayAsTheyAre)
{
    const auto surface = Plane(2).Make();
    const Locations line = Through(*surface, {{-100, 0, 0}, {100, 20, 0}});
    for (const Locations& curve : {line, Locations(), line.mid(0, 1)}) {
        QList<double> reports;
        const auto smooth = ZORGeoCurveOnSurfaceSmoother(50).Smooth(curve, [&](double progress) {
            reports.append(progress);
            return true;
        });
        ASSERT_TRUE(smooth);
        EXPECT_TRUE(IsSame(curve, *smooth));
        EXPECT_EQ(reports.constFirst(), 0);
        EXPECT_EQ(reports.constLast(), 1);
    }
}

TEST(ZORGeoSmootherProgressTest, CanBeCanceledAtEveryReport)
{
    const auto surface = Plane(60).Make();
    const Locations curve = CrowdedZigzag(*surface, 10, 9, 30);
    const ZORGeoCurveOnSurfaceSmoother smoother(50);
    bool isCanceled = true;
    // The intervals grow, so that the test does not depend on the number of reports.
    for (int last = 1; isCanceled; last += 1 + last / 4) {
        int reports = 0;
        isCanceled = !smoother.Smooth(curve, [&](double) { return ++reports < last; });
        EXPECT_EQ(isCanceled, reports == last);
        EXPECT_LE(reports, last) << "nothing is reported after the cancel";
    }
    // At the end as well.
    EXPECT_FALSE(smoother.Smooth(curve, [](double progress) { return progress < 1; }));
    // While gaps of the curve are closed as well.
    const Locations places = {surface->Project({-290, -290, 0}), surface->Project({290, 280, 0})};
    EXPECT_FALSE(smoother.Smooth(places, [](double) { return false; }));
}

TEST(ZORGeoSmootherProgressTest, PassesExceptionsOfTheReportAndItsOwnOnesThrough)
{
    const auto surface = Plane(20).Make();
    const Locations curve = Through(*surface, Corner(pi / 3, 200, 200));
    struct Interruption
    {
    };
    EXPECT_THROW(
        ZORGeoCurveOnSurfaceSmoother(100).Smooth(curve, [](double) -> bool { throw Interruption(); }),
        Interruption);
    double last = -1;
    const Locations fold = Through(*surface, {{0, 0, 0}, {40, 20, 0}, {0, 0, 0}});
    EXPECT_THROW(ZORGeoCurveOnSurfaceSmoother(100).Smooth(fold,
                                                          [&](double progress) {
                                                              last = progress;
                                                              return true;
                                                          }),
                 ZORSysException);
    EXPECT_GE(last, 0);
    EXPECT_LT(last, 1);
}

} // namespace
