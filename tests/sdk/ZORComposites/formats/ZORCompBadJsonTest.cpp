// JSON layup files that are refused.

#include "JsonFormatTest.h"

namespace {

using ZORCompBadJsonTest = JsonFormatTest;

TEST_F(ZORCompBadJsonTest, ComponentsInCirclesOrInTwoPlacesAreRefused)
{
    const QByteArray a = R"({"_serialized_type": "X.Sequence", "ID": 1, "subComponents": [2]})";
    const QByteArray b = R"({"_serialized_type": "X.Sequence", "ID": 2, "subComponents": [1]})";
    EXPECT_TRUE(FailureOf(File(a + "," + b), kJsonId).endsWith("is part of itself"));
    const QByteArray self = R"({"_serialized_type": "X.Sequence", "ID": 1, "subComponents": [1]})";
    EXPECT_EQ(QString("component 1 is part of itself"), FailureOf(File(self), kJsonId));
    const QByteArray ply = R"({"_serialized_type": "X.Ply", "ID": 3})";
    EXPECT_EQ(QString("allComposite[1].subComponents[1]: component 3 is there twice or part of itself"),
              FailureOf(File(ply + "," + Sequence("3, 3")), kJsonId));
    EXPECT_EQ(QString("allComposite[1].ID: identifier 3 is there twice"),
              FailureOf(File(ply + "," + ply), kJsonId));
}

struct BadJson
{
    const char* content;
    const char* message;
};

class BadJsonTest : public JsonFormatTest, public testing::WithParamInterface<BadJson>
{
};

TEST_P(BadJsonTest, IsRefusedWithThePlace)
{
    EXPECT_EQ(QString::fromUtf8(GetParam().message), FailureOf(GetParam().content, kJsonId));
}

INSTANTIATE_TEST_SUITE_P(
    Wrong, BadJsonTest,
    testing::Values(
        BadJson{"", "offset 0: illegal value"}, BadJson{"{", "offset 1: unterminated object"},
        BadJson{"[]", "this is no object"}, BadJson{"{}", "there is no list 'allComposite'"},
        BadJson{R"({"allComposite": 5})", "allComposite: this is no list"},
        BadJson{R"({"allComposite": ["x"]})", "allComposite[0]: this is no object"},
        BadJson{R"({"allComposite": [], "allMaterials": [5]})", "allMaterials[0]: this is no object"},
        BadJson{R"({"allComposite": [], "allMaterials": [{"E1": "stiff"}]})",
                "allMaterials[0].E1: this is no number"},
        BadJson{R"({"allComposite": [], "allMaterials": [{"E1": true}]})",
                "allMaterials[0].E1: this is no number"},
        BadJson{R"({"allComposite": [], "allMaterials": [{"materialName": "a"}, {"materialName": " a"}]})",
                "allMaterials[1]: material 'a' is there twice"},
        BadJson{R"({"allComposite": [], "allGeometry": [{"ID": 1}, {"ID": 1}]})",
                "allGeometry[1].ID: identifier 1 is there twice"},
        BadJson{
            R"({"allComposite": [], "allGeometry": [{"_serialized_type": "X.Spline", "points": [{"x": 1}]}]})",
            "allGeometry[0].points[0].y: this is no number"},
        BadJson{R"({"allComposite": [], "allGeometry": [{"_serialized_type": "Spline",
                "points": [{"x": 1e61, "y": 0, "z": 0}]}]})",
                "contour 0: point 0 of the curve is not finite or too far away"},
        BadJson{R"({"allComposite": [{"_serialized_type": "Ply", "orientation": "nan"}]})",
                "allComposite[0].orientation: this is no number"},
        BadJson{R"({"allComposite": [{"_serialized_type": "Ply", "active": 1}]})",
                "allComposite[0].active: this is neither true nor false"},
        BadJson{R"({"allComposite": [{"_serialized_type": "Ply", "memberName": 1}]})",
                "allComposite[0].memberName: this is no text"},
        BadJson{R"({"allComposite": [{"_serialized_type": "Ply", "splineRelimitationRef": 1.5}]})",
                "allComposite[0].splineRelimitationRef: this is no identifier"},
        BadJson{R"({"allComposite": [], "name": 1e999})", "offset 34: illegal number"}));

TEST_F(ZORCompBadJsonTest, SequencesThatNestTooDeeplyAreRefused)
{
    QByteArray deep = Ply();
    for (int i = 0; i < 65; ++i)
        deep = Sequence(deep);
    EXPECT_TRUE(FailureOf(File(deep), kJsonId).endsWith("sequences are nested more than 64 deep"));
    const QByteArray bomb = "{\"allComposite\":" + QByteArray(100000, '[');
    EXPECT_NE(QString(), FailureOf(bomb, kJsonId));
}

} // namespace
