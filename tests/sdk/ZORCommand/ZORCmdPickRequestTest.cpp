// Tests of ZORCmdPickRequest and the answerer that the controller knows.

#include "support/MessageOf.h"
#include "support/PickAnswerer.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

using Request = ZORCmdPickRequest;

class ZORCmdPickRequestTest : public testing::Test
{
protected:
    ZORCmdPickRequestTest()
    {
        point->Initialize();
        surface->Initialize();
    }
    std::unique_ptr<Request> Make(Request::Kinds kinds, Request::Extent extent = Request::Extent::One)
    {
        auto request = std::make_unique<Request>(kinds, "Click somewhere.", nullptr);
        request->SetExtent(extent);
        const auto record = [this](const char* name) {
            return [this, name] { events.append(QLatin1String(name)); };
        };
        QObject::connect(request.get(), &Request::Picked, record("picked"));
        QObject::connect(request.get(), &Request::TakenBack, record("taken back"));
        QObject::connect(request.get(), &Request::Completed, record("completed"));
        QObject::connect(request.get(), &Request::Canceled, record("canceled"));
        QObject::connect(request.get(), &Request::Ended, record("ended"));
        return request;
    }
    ZORCmdPick At(double x, double y) const { return {surface, {x, y, 0}, surface->Project({x, y, 0})}; }

    ZORCmdController* const controller = ZORCmdController::GetController();
    ZORGeoContainer container;
    ZORGeoCartesianPoint* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    ZORGeoSurface* const surface =
        new ZORGeoSurface(&container, QList<ZORMathPoint>{{0, 0, 0}, {9, 0, 0}, {0, 9, 0}},
                          QList<ZORGeoSurface::Corners>{{0, 1, 2}});
    std::optional<PickAnswerer> answerer{std::in_place};
    QStringList events;
};

TEST_F(ZORCmdPickRequestTest, EndsWithItsFirstAnswer)
{
    const auto request = Make(Request::Points);
    EXPECT_FALSE(request->IsActive());
    request->Start();
    EXPECT_TRUE(request->IsActive());
    EXPECT_EQ(answerer->request, request.get());
    EXPECT_EQ(controller->GetPickRequest(), request.get());
    QObject::connect(request.get(), &Request::Picked, [&](const ZORCmdPick& pick) {
        EXPECT_EQ(pick.object, point);
        EXPECT_FALSE(request->IsActive()) << "receivers may start the next one";
    });
    EXPECT_TRUE(request->Answer({point, {1, 2, 3}, {}}));
    EXPECT_EQ(events, QStringList({"picked", "ended"}));
    EXPECT_EQ(answerer->numEnded, 1);
    EXPECT_EQ(controller->GetPickRequest(), nullptr);
    EXPECT_FALSE(request->Answer({point, {1, 2, 3}, {}})) << "it is over";
    request->Cancel();
    EXPECT_EQ(events, QStringList({"picked", "ended"}));
}

TEST_F(ZORCmdPickRequestTest, GoesOnAfterAPickThatDoesNotFit)
{
    const auto request = Make(Request::SurfaceLocations);
    request->SetFilter([this](const ZORGeoGeometry& object) { return &object == surface; });
    EXPECT_FALSE(request->Answer(At(1, 1))) << "not active yet";
    request->Start();
    EXPECT_FALSE(request->Accepts(nullptr));
    EXPECT_FALSE(request->Accepts(point));
    EXPECT_TRUE(request->Accepts(surface));
    EXPECT_FALSE(request->Answer({})) << "nothing hit";
    EXPECT_FALSE(request->Answer({point, {1, 2, 3}, At(1, 1).location})) << "filtered";
    EXPECT_FALSE(request->Answer({surface, {1, 1, 0}, {}})) << "no location";
    EXPECT_TRUE(request->IsActive());
    EXPECT_TRUE(events.isEmpty());
    EXPECT_TRUE(request->Answer(At(1, 1)));
    EXPECT_FALSE(request->IsActive());
}

TEST_F(ZORCmdPickRequestTest, SequenceTakesAnswersBackUntilItIsCompleted)
{
    const auto request = Make(Request::SurfaceLocations, Request::Extent::Sequence);
    request->Start();
    request->Answer(At(1, 1));
    request->Answer(At(2, 1));
    request->TakeBack();
    EXPECT_TRUE(request->IsActive());
    request->Complete();
    EXPECT_EQ(events, QStringList({"picked", "picked", "taken back", "completed", "ended"}));
    EXPECT_EQ(answerer->numEnded, 1);
    request->TakeBack();
    request->Complete();
    EXPECT_EQ(events.size(), 5) << "over";
}

TEST_F(ZORCmdPickRequestTest, SingleOneIsNotCompletedOrTakenBack)
{
    const auto request = Make(Request::Points);
    request->Start();
    request->TakeBack();
    request->Complete();
    EXPECT_TRUE(request->IsActive());
    request->Cancel();
    EXPECT_EQ(events, QStringList({"canceled", "ended"}));
}

TEST_F(ZORCmdPickRequestTest, StartingOneCancelsTheOther)
{
    const auto first = Make(Request::Points);
    const auto second = Make(Request::Curves);
    first->Start();
    second->Start();
    EXPECT_FALSE(first->IsActive());
    EXPECT_EQ(answerer->request, second.get());
    EXPECT_EQ(events, QStringList({"canceled", "ended"}));
    EXPECT_TRUE(answerer->isSame);
    EXPECT_EQ("the request is active already", MessageOf([&] { second->Start(); }));
    EXPECT_TRUE(second->IsActive());
    second->Cancel();
    first->Start();
    EXPECT_EQ(answerer->request, first.get()) << "reusable";
}

TEST_F(ZORCmdPickRequestTest, DestroyedRequestEndsSilently)
{
    auto request = Make(Request::Points);
    request->Start();
    request.reset();
    EXPECT_EQ(answerer->numEnded, 1);
    EXPECT_EQ(controller->GetPickRequest(), nullptr);
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(ZORCmdPickRequestTest, MayBeDestroyedByItsReceivers)
{
    auto request = Make(Request::Points);
    QObject::connect(request.get(), &Request::Picked, [&request] { request.reset(); });
    request->Start();
    EXPECT_TRUE(request->Answer({point, {}, {}}));
    EXPECT_FALSE(request);
    auto canceled = Make(Request::Points);
    QObject::connect(canceled.get(), &Request::Canceled, [&canceled] { canceled.reset(); });
    canceled->Start();
    canceled->Cancel();
    EXPECT_FALSE(canceled);
}

TEST_F(ZORCmdPickRequestTest, EndsWithItsAnswerer)
{
    const auto request = Make(Request::Points);
    int changes = 0;
    QObject::connect(controller, &ZORCmdController::PickAnswererChanged, request.get(), [&] { ++changes; });
    request->Start();
    answerer.reset();
    EXPECT_EQ(events, QStringList({"canceled", "ended"}));
    EXPECT_EQ(controller->GetPickAnswerer(), nullptr);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ("there is no view to pick in", MessageOf([&] { request->Start(); }));
    EXPECT_FALSE(request->IsActive());
    answerer.emplace();
    EXPECT_EQ(changes, 2);
    request->Start();
    EXPECT_TRUE(request->IsActive());
}

TEST_F(ZORCmdPickRequestTest, ReportsItsPromptAndItsPreview)
{
    const auto request = Make(Request::SurfaceLocations);
    QStringList prompts;
    int previews = 0;
    QObject::connect(request.get(), &Request::PromptChanged,
                     [&](const QString& prompt) { prompts.append(prompt); });
    QObject::connect(request.get(), &Request::PreviewChanged, [&] { ++previews; });
    EXPECT_EQ(request->GetPrompt(), QString("Click somewhere."));
    request->SetPrompt("Click somewhere.");
    request->SetPrompt("Click somewhere else.");
    EXPECT_EQ(prompts, QStringList("Click somewhere else."));
    const QList<ZORMathPoint> path{{1, 1, 0}, {2, 1, 0}};
    request->SetPreview({path, {path.constFirst()}});
    EXPECT_EQ(previews, 1);
    EXPECT_EQ(request->GetPreview().size(), 2);
}

} // namespace
