// The dialog of curves on supports with inputs for it.

#pragma once

#include "OperationTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORWireframe/ZORWFCurveOnSupport.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <QCheckBox>
#include <QComboBox>

/// A folder "F" with the raw surface "Su", 200 mm square, and the raw points "St" and "En".
class CurveOnSupportDlgTest : public OperationTest
{
protected:
    static inline const QString kGroup = QStringLiteral("Debug/WFCurveOnSupport/");
    static inline const QString kClass = QStringLiteral("ZORWFCurveOnSupport::");

    void OpenDialog(int type = 0)
    {
        ASSERT_NE(nullptr, Open("ZORTestWFCurveOnSupportDlg"));
        Field<QComboBox>("_TypeCombo")->setCurrentIndex(type);
    }
    template<class Feature, class... Args>
    Feature* AddFeature(const QString& name, Args&&... args)
    {
        auto* const feature = new Feature(folder, std::forward<Args>(args)...);
        feature->setObjectName(name);
        feature->Initialize();
        TakeNew();
        return feature;
    }
    void AddFolderF()
    {
        folder = AddFolder("F");
        folder->GetParentFeature()->setObjectName("Root");
    }
    void AddInputs()
    {
        AddFolderF();
        surface = AddSquare("S", 200);
        AddFeature<ZORWFRawSurface>("Su", surface);
        AddFeature<ZORWFRawPoint>("St", ZORMathPoint(50, 20, 0));
        AddFeature<ZORWFRawPoint>("En", ZORMathPoint(90, 50, 0));
    }
    void SelectInputs()
    {
        SelectFeature("_FolderSel", "F");
        SelectFeature("_SurfaceSel", "Su");
        SelectFeature("_StartPtSel", "St");
        SelectFeature("_EndPtSel", "En");
        SelectFeature("_DirSel", "F");
    }
    void SelectFeature(const char* objectName, const QString& name)
    {
        Select(objectName, QString("%1 (%1)").arg(name));
    }
    /// Makes the choice of a selector nothing.
    void Clear(const char* objectName)
    {
        Field<ZORTestGeometrySelector>(objectName)->findChild<QComboBox*>("_Combo")->setCurrentIndex(-1);
    }
    ZORWFRawCurve* AddLimit(const QString& name, double x)
    {
        auto* curve =
            new ZORGeoCurveOnSurface({surface->Project({x, 15, 0}), surface->Project({x, 25, 0})}, false);
        curve->Initialize();
        return AddFeature<ZORWFRawCurve>(name, curve);
    }
    void Check(const char* objectName, bool checked) { Field<QCheckBox>(objectName)->setChecked(checked); }
    void SetValue(const char* objectName, double value)
    {
        Field<ZORCmnUnitSpinBox>(objectName)->setValue(value);
    }
    QVariant Setting(const char* key) { return GetSettings()->value(kGroup + QLatin1String(key)); }
    QStringList SettingKeys()
    {
        GetSettings()->beginGroup(kGroup.chopped(1));
        const QStringList keys = GetSettings()->allKeys();
        GetSettings()->endGroup();
        return keys;
    }
    /// The new feature; the last of what was added.
    ZORWFCurveOnSupport* TakeFeature()
    {
        ZORWFCurveOnSupport* feature = nullptr;
        for (ZORGeoGeometry* geometry : TakeNew()) {
            if (auto* found = qobject_cast<ZORWFCurveOnSupport*>(geometry)) {
                EXPECT_EQ(nullptr, feature) << "only one";
                feature = found;
            }
        }
        EXPECT_NE(nullptr, feature);
        return feature;
    }
    void ExpectRun(const ZORFeatGeometry* feature, const ZORMathPoint& from, const ZORMathPoint& to)
    {
        ASSERT_TRUE(feature && feature->GetBody());
        const auto* curve = qobject_cast<const ZORGeoCurveOnSurface*>(feature->GetBody()->GetGeometry());
        ASSERT_TRUE(curve);
        EXPECT_TRUE(IsNear(from, curve->GetPoint(0))) << testing::PrintToString(curve->GetPoint(0));
        const ZORMathPoint end = curve->GetPoint(curve->GetNumPoints() - 1);
        EXPECT_TRUE(IsNear(to, end)) << testing::PrintToString(end);
    }
    /// Presses OK and returns the SDK calls that it made but those for its settings.
    QStringList TraceFeature()
    {
        QStringList calls = TraceOk();
        calls.removeIf([](const QString& call) { return call.startsWith("ZORSysSettingGroupContext::"); });
        return calls;
    }
    /// Presses OK, which must show \a message and call nothing of the SDK.
    void ExpectRefusal(const QString& message)
    {
        EXPECT_EQ(QStringList(), TraceFeature());
        EXPECT_EQ(QStringList({message}), boxes.TakeErrors());
        EXPECT_TRUE(TakeNew().isEmpty());
    }

    ZORFeatFolder* folder = nullptr;
    ZORGeoSurface* surface = nullptr;
};
