// Tests of ZORNestInstance.

#include "NestedLayout.h"
#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORNesting/ZORNestInstance.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

using Purpose = ZORNestInstance::Purpose;

namespace {

const char kKit[] = R"({"name": "kit", "items": [
    {"id": 7, "name": "rib", "demand": 3, "shape": {"data": [[0, 0], [10, 0], [10, 10], [0, 0]]}},
    {"shape": {"type": "polygon", "data": {"outer": [[0, 0], [9, 0], [9, 9]], "inner": [[[6, 1], [7, 1], [7, 2]]]}}}],
  "strip_height": 30, "packagings": [{"id": 4, "name": "board", "width": 20, "length": 40}]})";

QByteArray Item(const QByteArray& shape)
{
    return R"({"strip_height": 9, "items": [{"id": 7, "shape": )" + shape + "}]}";
}

/// A half circle whose end is off its circle by a part of the radius.
QByteArray HalfDisc(double miss)
{
    return Item(R"({"type": "path", "contours": [{"start": [1, 0], "segs": [["A", )"
                + QByteArray::number(-1 - miss, 'g', 17) + R"(, 0, 0, 0, "ccw"], ["L", 1, 0]]}]})");
}

QString GetFailure(const QByteArray& document, Purpose purpose)
{
    return MessageOf([&] { ZORNestInstance::Read(document, purpose); });
}

} // namespace

TEST(ZORNestInstanceTest, HoldsNothingAtFirst)
{
    const ZORNestInstance instance;
    EXPECT_EQ("", instance.GetName());
    EXPECT_EQ(0, instance.GetNumItems());
    EXPECT_EQ(0, instance.GetNumPackagings());
    EXPECT_EQ("", instance.GetFault());
    EXPECT_EQ(1U, instance.GetSeed());
}

TEST(ZORNestInstanceTest, NamesAndNumbersItemsAndPackagings)
{
    const ZORNestInstance instance = ZORNestInstance::Read(kKit, Purpose::Nesting);
    EXPECT_EQ("kit", instance.GetName());
    ASSERT_EQ(2, instance.GetNumItems());
    EXPECT_EQ(7, instance.GetItemId(0));
    EXPECT_EQ("rib", instance.GetItemName(0));
    EXPECT_EQ(1, instance.GetItemId(1));
    EXPECT_EQ("1", instance.GetItemName(1));
    ASSERT_EQ(2, instance.GetNumPackagings());
    EXPECT_EQ(0, instance.GetPackagingId(0));
    EXPECT_EQ("strip", instance.GetPackagingName(0));
    EXPECT_EQ(4, instance.GetPackagingId(1));
    EXPECT_EQ("board", instance.GetPackagingName(1));
}

TEST(ZORNestInstanceTest, CopiesKeepTheirOwnSeed)
{
    ZORNestInstance first = ZORNestInstance::Read(kKit, Purpose::Nesting);
    const ZORNestInstance second = first;
    first.SetSeed(~quint64(0));
    EXPECT_EQ(~quint64(0), first.GetSeed());
    EXPECT_EQ(1U, second.GetSeed());
    EXPECT_EQ("rib", second.GetItemName(0));
}

TEST(ZORNestInstanceTest, TranslationReadsNamesAndOutlinesAlone)
{
    const ZORNestInstance instance = ZORNestInstance::Read(
        R"({"items": [{"demand": -1, "name": 5, "id": "a", "shape": {"type": "simple_polygon", "data": [[0, 0], [4, 0], [4, 3]]}},
                      {"id": 1.5, "shape": {"type": "polygon", "data": {"outer": [[0, 0], [1, 0], [1, 1]], "inner": 3}}}],
            "packagings": 3})",
        Purpose::Translation);
    EXPECT_EQ("", instance.GetFault());
    ASSERT_EQ(2, instance.GetNumItems());
    EXPECT_EQ("a", instance.GetItemName(0));
    EXPECT_EQ("1", instance.GetItemName(1));
    EXPECT_EQ(0, instance.GetNumPackagings());
    const ZORNestSolver::Contour& contour = instance.GetData().job.items[0].contours.at(0);
    EXPECT_EQ(2U, contour.segments.size());
}

TEST(ZORNestInstanceTest, TranslationEndsAtTheFirstFault)
{
    const ZORNestInstance instance = ZORNestInstance::Read(
        R"({"items": [{"shape": {"type": "simple_polygon", "data": []}},
                      {"shape": {"type": "polygon", "data": {"outer": [[0, 0], [1, 0], [1, 1]], "inner": [3]}}}, {}]})",
        Purpose::Translation);
    EXPECT_EQ("'inner' is no list", instance.GetFault());
    ASSERT_EQ(2, instance.GetNumItems());
    EXPECT_EQ(1U, instance.GetData().job.items[1].contours.size()) << "what precedes the fault is kept";
}

TEST(ZORNestInstanceTest, OnlyTranslationNeedsArcsThatEndOnTheirCircle)
{
    for (const double miss : {-1e-4 + 1e-12, 0.0, 1e-4 - 1e-12}) {
        EXPECT_EQ("", ZORNestInstance::Read(HalfDisc(miss), Purpose::Nesting).GetFault());
        EXPECT_EQ("", ZORNestInstance::Read(HalfDisc(miss), Purpose::Translation).GetFault()) << miss;
    }
    for (const double miss : {-0.99, -1.1e-4, 1.1e-4, 1e300}) {
        const ZORNestInstance nested = ZORNestInstance::Read(HalfDisc(miss), Purpose::Nesting);
        EXPECT_EQ(1, nested.GetNumItems());
        EXPECT_EQ("end of an arc is not on its circle",
                  ZORNestInstance::Read(HalfDisc(miss), Purpose::Translation).GetFault())
            << miss;
    }
    const QByteArray point = R"([{"start": [0, 0], "segs": [["A", 0, 0, 0, 0, "cw"]]}])";
    const QByteArray empty = Item(R"({"type": "path", "contours": )" + point + "}");
    EXPECT_EQ(1, ZORNestInstance::Read(empty, Purpose::Nesting).GetNumItems());
    EXPECT_EQ("end of an arc is not on its circle",
              ZORNestInstance::Read(empty, Purpose::Translation).GetFault());
}

TEST(ZORNestInstanceTest, EveryFaultIsDescribedForItsPurpose)
{
    struct Case
    {
        QByteArray shape;
        QString nesting;     // "": no fault
        QString translation; // "": no fault
    };
    const auto path = [](const QByteArray& segment) {
        return R"({"type": "path", "contours": [{"start": [0, 0], "segs": [)" + segment + "]}]}";
    };
    const QString at = "items[0].shape";
    const QString segment = at + ".contours[0].segs[0]";
    const QList<Case> cases{
        {"3", at + ": an object is expected", "shape of unknown type ''"},
        {"{}", at + ".data: is missing", "shape of unknown type ''"},
        {R"({"data": [[0, 0]]})", "", "shape of unknown type ''"},
        {R"({"type": 3})", at + ".type: a text is expected", "shape of unknown type ''"},
        {R"({"type": "blob"})", at + R"(.type: must be "simple_polygon", "polygon" or "path")",
         "shape of unknown type 'blob'"},
        {R"({"type": "simple_polygon"})", at + ".data: is missing", "'data' is no list"},
        {R"({"type": "simple_polygon", "data": 3})", at + ".data: an object is expected",
         "'data' is no list"},
        {R"({"type": "simple_polygon", "data": {"outer": []}})", "", "'data' is no list"},
        {R"({"type": "polygon", "data": [[0, 0]]})", "", "'outer' is no list"},
        {R"({"type": "polygon", "data": {"outer": 3}})", at + ".data.outer: an array is expected",
         "'outer' is no list"},
        {R"({"type": "polygon", "data": {"outer": [], "inner": 3}})",
         at + ".data.inner: an array is expected", ""},
        {R"({"type": "polygon", "data": {"outer": [], "inner": [[[0, 0], [0, "x"]]]}})",
         at + ".data.inner[0][1][1]: a number is expected", "coordinate is no number"},
        {R"({"data": [[0, 0], 3], "type": "simple_polygon"})", at + ".data[1]: an array is expected",
         "'point' is no list"},
        {R"({"data": [[0]], "type": "simple_polygon"})", at + ".data[0]: coordinates are missing",
         "coordinate is no number"},
        {R"({"type": "path"})", "", "'contours' is no list"},
        {R"({"type": "path", "contours": [3]})", at + ".contours[0]: an object is expected",
         "'start' is no list"},
        {R"({"type": "path", "contours": [{}]})", at + ".contours[0].start: coordinates are missing",
         "'start' is no list"},
        {R"({"type": "path", "contours": [{"start": [0, 0]}]})", "", "'segs' is no list"},
        {path("3"), segment + ": an array is expected", "'segment' is no list"},
        {path("[]"), segment + ": coordinates are missing", "'' is no segment"},
        {path("[3, 1, 2]"), segment + "[0]: a text is expected", "'' is no segment"},
        {path(R"(["Q", 1, 2])"), segment + R"(: a segment begins with "L" or "A")", "'Q' is no segment"},
        {path(R"(["Q"])"), segment + ": coordinates are missing", "'Q' is no segment"},
        {path(R"(["L", 1, null])"), segment + "[2]: a number is expected", "coordinate is no number"},
        {path(R"(["A", 1, 2, 3])"), segment + ": coordinates are missing", "coordinate is no number"},
        {path(R"(["A", 1, 2, 3, 4])"), segment + R"(: an arc ends with "ccw" or "cw")",
         "'' is no direction of an arc"},
        {path(R"(["A", 1, 2, 3, 4, 5])"), segment + "[5]: a text is expected",
         "'' is no direction of an arc"},
        {path(R"(["A", 1, 2, 3, 4, ")" + QByteArray(99, 'u') + "\"]"),
         segment + R"(: an arc ends with "ccw" or "cw")",
         "'" + QString(40, u'u') + "' is no direction of an arc"},
    };
    for (const Case& test : cases) {
        EXPECT_EQ(test.nesting, GetFailure(Item(test.shape), Purpose::Nesting)) << test.shape.constData();
        EXPECT_EQ(test.translation, ZORNestInstance::Read(Item(test.shape), Purpose::Translation).GetFault())
            << test.shape.constData();
    }
}

TEST(ZORNestInstanceTest, DocumentsThatAreNoInstancesAreRefused)
{
    const QByteArray brace = "{";
    EXPECT_EQ("unterminated object, at byte 1", GetFailure(brace, Purpose::Nesting));
    EXPECT_EQ("no JSON: unterminated object (byte 1)", GetFailure(brace, Purpose::Translation));
    EXPECT_EQ("document: an object is expected", GetFailure("[1]", Purpose::Nesting));
    EXPECT_EQ("no nesting instance: 'items' is missing", GetFailure("[1]", Purpose::Translation));
    EXPECT_EQ("items: there are none", GetFailure("{}", Purpose::Nesting));
    EXPECT_EQ("no nesting instance: 'items' is missing",
              GetFailure(R"({"items": {}})", Purpose::Translation));
}
