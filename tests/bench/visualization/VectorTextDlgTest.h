// The dialog of vector texts and what it draws.

#pragma once

#include "support/BenchTest.h"
#include "support/Printers.h"
#include "visualization/ZORTestVisVectorTextDlg.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QPlainTextEdit>

class VectorTextDlgTest : public BenchTest
{
public:
    VectorTextDlgTest() { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }
    ~VectorTextDlgTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

protected:
    /// The nine boxes of the plane, in their order.
    static inline const QStringList kPlaneBoxes = {"_OriginXSpn",    "_OriginYSpn",    "_OriginZSpn",
                                                   "_FirstDirXSpn",  "_FirstDirYSpn",  "_FirstDirZSpn",
                                                   "_SecondDirXSpn", "_SecondDirYSpn", "_SecondDirZSpn"};

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestVisVectorTextDlg")); }

    template<class Widget>
    Widget* Find(const QString& objectName)
    {
        auto* widget = dialog->findChild<Widget*>(objectName);
        EXPECT_NE(nullptr, widget) << objectName.toStdString();
        return widget;
    }
    QComboBox* Combo(const char* objectName) { return Find<QComboBox>(QLatin1String(objectName)); }
    QCheckBox* Check(const char* objectName) { return Find<QCheckBox>(QLatin1String(objectName)); }
    QDoubleSpinBox* Spin(const QString& objectName) { return Find<QDoubleSpinBox>(objectName); }

    void SetPlane(const QList<double>& values)
    {
        for (int i = 0; i < values.size(); ++i)
            Spin(kPlaneBoxes[i])->setValue(values[i]);
    }
    void Type(const QString& text) { Find<QPlainTextEdit>("_TextEdit")->setPlainText(text); }

    QVariant GetSetting(const char* key)
    {
        return GetSettings()->value(QStringLiteral("Debug/VisVectorText/") + QLatin1String(key));
    }
    void SetSetting(const char* key, const QVariant& value)
    {
        GetSettings()->setValue(QStringLiteral("Debug/VisVectorText/") + QLatin1String(key), value);
    }

    static int GetNumDrawn() { return ZORDebugVizContainer::GetContainer()->GetNumObjects(); }
    /// The one primitive of a drawing, which must be white, solid and without label.
    template<class Primitive>
    static const Primitive* GetDrawn(int index)
    {
        const ZORDebugVizObject* object = ZORDebugVizContainer::GetContainer()->GetObject(index);
        const auto* rep = dynamic_cast<const ZORVisRepGraphics*>(object->GetRep());
        EXPECT_NE(nullptr, rep);
        if (!rep)
            return nullptr;
        EXPECT_EQ(QString(), object->GetLabel());
        EXPECT_EQ(1, rep->GetPrimitives().size());
        EXPECT_EQ(QColor(255, 255, 255), rep->GetOptions().GetColor());
        EXPECT_EQ(ZORVisOptions::Solid, rep->GetOptions().GetLineStyle());
        EXPECT_EQ(ZORVisOptions::Cross, rep->GetOptions().GetPointSymbol());
        return dynamic_cast<const Primitive*>(rep->GetPrimitives().constFirst());
    }
    static ZORMathSetOfPoints GetPolyline(int index)
    {
        const auto* primitive = GetDrawn<ZORVisPolylinePrimitive>(index);
        EXPECT_NE(nullptr, primitive) << index;
        if (!primitive)
            return {};
        EXPECT_EQ(ZORVisPolylinePrimitive::Chain, primitive->GetStructure());
        return primitive->GetPoints();
    }
    /// What follows the \a numPolylines strokes: the origin and the lines to \a ends.
    static void ExpectOriginAndGuideLines(int numPolylines, const ZORMathPoint& origin,
                                          const QList<ZORMathPoint>& ends)
    {
        ASSERT_EQ(numPolylines + 1 + ends.size(), GetNumDrawn());
        const auto* point = GetDrawn<ZORVisPointPrimitive>(numPolylines);
        ASSERT_NE(nullptr, point);
        EXPECT_EQ(ZORMathSetOfPoints({origin}), point->GetPoints());
        for (int i = 0; i < ends.size(); ++i) {
            const ZORMathSetOfPoints line = GetPolyline(numPolylines + 1 + i);
            ASSERT_EQ(2, line.size());
            EXPECT_EQ(origin, line[0]);
            EXPECT_PRED2(IsNear, ends[i], line[1]);
        }
    }
};
