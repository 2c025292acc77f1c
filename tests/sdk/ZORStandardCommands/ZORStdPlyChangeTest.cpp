// Tests of layups whose stack is edited.

#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORTopology/ZORTopBody.h>

#include <QTableView>

#include <numbers>

namespace {

constexpr int kAngle = 1; // column

/// A layup with two sequences: plies "a" and "b" at 10 and 20 degrees, and "c" at 30 degrees with a boundary.
class ZORStdPlyChangeTest : public StandardCommandsTest
{
protected:
    ZORStdPlyChangeTest()
    {
        layup->SetLabel("Panel");
        layup->Initialize();
        for (ZORCompSequence* sequence : {first, second})
            sequence->Initialize();
        c->SetBoundaries({boundary});
    }
    ZORCompPly* AddPly(ZORCompSequence* sequence, const QString& label, double degrees)
    {
        layup->Initialize();
        sequence->Initialize();
        auto* const ply = new ZORCompPly(sequence);
        ply->SetLabel(label);
        ply->SetMaterial(carbon);
        ply->SetAngle(degrees * std::numbers::pi / 180);
        ply->Initialize();
        return ply;
    }
    void Press(const char* button, int row) const
    {
        auto* const table = Find<QTableView>("_PlyTable");
        table->setCurrentIndex(table->model()->index(row, kAngle));
        Click(button);
    }
    /// "label angle" of each ply of the stack, with "*" where it has the boundary.
    QStringList GetStack() const
    {
        QStringList stack;
        for (const ZORCompPly* ply : layup->GetPlies())
            stack.append(ply->GetLabel() + ' '
                         + QString::number(qRound(ply->GetAngle() * 180 / std::numbers::pi))
                         + (ply->GetBoundaries().contains(boundary) ? QString("*") : QString()));
        return stack;
    }

    ZORCompMaterial* const carbon = AddMaterial("Carbon", 0.25);
    const ZORGeoCurve* const boundary =
        qobject_cast<const ZORGeoCurve*>(AddLine("Edge", {0, 0, 0}, {50, 0, 0})->GetBody()->GetGeometry());
    ZORCompLayup* const layup = new ZORCompLayup(container->GetFeatureRoot("ZORCompRoot"));
    ZORCompSequence* const first = new ZORCompSequence(layup);
    ZORCompSequence* const second = new ZORCompSequence(layup);
    ZORCompPly* const a = AddPly(first, "a", 10);
    ZORCompPly* const b = AddPly(first, "b", 20);
    ZORCompPly* const c = AddPly(second, "c", 30);
};

TEST_F(ZORStdPlyChangeTest, ChangesAPlyInPlace)
{
    Edit(layup);
    SetCell("_PlyTable", 1, kAngle, 45 * std::numbers::pi / 180);
    EXPECT_EQ(GetStack(), QStringList({"a 10", "b 20", "c 30*"})) << "not before OK";
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack(), QStringList({"a 10", "b 45", "c 30*"}));
    EXPECT_EQ(layup->GetPlies(), (QList<ZORCompPly*>{a, b, c}));
}

TEST_F(ZORStdPlyChangeTest, CanceledEditLeavesTheStack)
{
    Edit(layup);
    Press("_RemovePlyBtn", 0);
    Press("_MirrorBtn", 0);
    Cancel();
    EXPECT_EQ(GetStack(), QStringList({"a 10", "b 20", "c 30*"}));
}

TEST_F(ZORStdPlyChangeTest, MovesAPlyOverTheEndOfItsSequenceWithAllThatItHas)
{
    Edit(layup);
    Press("_PlyUpBtn", 2);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack(), QStringList({"a 10", "c 30*", "b 20"}));
    EXPECT_EQ(first->GetPlies().size(), 2);
    EXPECT_EQ(second->GetPlies().size(), 1);
}

TEST_F(ZORStdPlyChangeTest, RemovesAndAddsPlies)
{
    Edit(layup);
    Press("_RemovePlyBtn", 0);
    Click("_AddPlyBtn");
    Press("_PlyUpBtn", 2); // the new one between the others
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack().size(), 3);
    EXPECT_EQ(GetStack().at(0), QString("b 20"));
    EXPECT_EQ(layup->GetPlies().at(1)->GetAngle(), 0);
    EXPECT_EQ(GetStack().at(2), QString("c 30*"));
}

TEST_F(ZORStdPlyChangeTest, MirroredPliesHaveTheBoundariesOfTheirOriginals)
{
    Edit(layup);
    Press("_MirrorBtn", 0);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack(), QStringList({"a 10", "b 20", "c 30*", "Ply 1 30*", "Ply 2 20", "Ply 3 10"}));
    EXPECT_TRUE(layup->IsSymmetric());
    EXPECT_EQ(layup->GetThickness(), 1.5);
}

TEST_F(ZORStdPlyChangeTest, LeavesPliesThatItDoesNotShow)
{
    b->SetActive(false);
    Edit(layup);
    ZORCompPly* const later = AddPly(first, "later", 70);
    Press("_RemovePlyBtn", 0);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack(), QStringList({"later 70", "c 30*"}));
    EXPECT_EQ(first->GetPlies(), (QList<ZORCompPly*>{b, later}));
}

TEST_F(ZORStdPlyChangeTest, PlyThatIsDeletedMeanwhileIsMadeAgain)
{
    Edit(layup);
    a->Remove();
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetStack().size(), 3);
    EXPECT_EQ(qRound(layup->GetPlies().at(0)->GetAngle() * 180 / std::numbers::pi), 10);
}

TEST_F(ZORStdPlyChangeTest, EmptyStackGrowsASequence)
{
    first->Remove();
    second->Remove();
    Edit(layup);
    Click("_AddPlyBtn");
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(layup->GetSequences().size(), 1);
    EXPECT_EQ(layup->GetPlies().size(), 1);
    Edit(layup);
    Press("_RemovePlyBtn", 0);
    EXPECT_EQ(Accept(), QString());
    EXPECT_TRUE(layup->GetPlies().isEmpty());
}

} // namespace
