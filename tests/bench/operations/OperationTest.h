// Fixture of the tests of modelling dialogs.

#pragma once

#include "core/ZORTestDialog.h"
#include "support/BenchTest.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <QStringList>

class ZORFeatFolder;
class ZORGeoPointOnSurface;

/// Opens dialogs by class name, looks at their forms and records the SDK calls of OK.
class OperationTest : public BenchTest
{
protected:
    /// A feature folder in the root "ZORFeatRoot".
    ZORFeatFolder* AddFolder(const QString& name);
    /// A square of \a size x \a size mm in the plane z = 0 from the origin, two triangles, with an open border.
    ZORGeoSurface* AddSquare(const QString& name, double size = 10);
    /// A cube of edge length 1 at the origin: no border.
    ZORGeoSurface* AddCube(const QString& name);
    ZORGeoPointOnSurface* AddPointOn(ZORGeoSurface* surface, const QString& name, const ZORMathPoint& point);

    /// The class information \a key of the open dialog; empty without one.
    QString GetClassInfo(const char* key) const;
    /// The captions of the open dialog from top to bottom and left to right: its labels and check boxes.
    QStringList GetCaptions() const;
    /// "geoType" of the selectors of the open dialog from top to bottom.
    QStringList GetGeoTypes() const;
    /// The entries of the combo box in the selector \a objectName.
    QStringList GetCandidates(const char* objectName) const;
    /// Presses OK and returns the SDK calls that it made, in order.
    QStringList TraceOk();
    /// The geometries that were added to the container since the start of the test or the last call.
    QList<ZORGeoGeometry*> TakeNew();
    /// Which calls of the SDK a refused input may make.
    enum class SdkCalls { Any, None };
    /// Presses OK and checks that it reports \a message alone and adds no geometry.
    void ExpectRefused(const QString& message, SdkCalls calls = SdkCalls::Any);
    /// Checks the title of the open dialog, which is the label of its class, and what the class creates.
    void ExpectClass(const QString& title, const QString& createdTypes) const;
    /// Checks that an entry of the console's menus opens the dialog of a class.
    void ExpectMenuOpens(const char* action, const char* className);
    /// Puts a geometry into the list of the selector \a objectName and selects it.
    void SelectInList(const char* objectName, ZORGeoGeometry* geometry);
    void TypeInto(const char* objectName, const QString& text);

    template<class Widget>
    Widget* Field(const char* objectName) const
    {
        auto* field = dialog->findChild<Widget*>(QLatin1String(objectName));
        EXPECT_NE(nullptr, field) << objectName;
        return field;
    }
    /// The only new geometry, as a \a Geometry; a failure when there is another number of them.
    template<class Geometry>
    Geometry* TakeOnly()
    {
        const QList<ZORGeoGeometry*> added = TakeNew();
        EXPECT_EQ(1, added.size());
        auto* geometry = added.isEmpty() ? nullptr : qobject_cast<Geometry*>(added.constFirst());
        EXPECT_NE(nullptr, geometry);
        return geometry;
    }

private:
    struct Located
    {
        const QWidget* widget; // not owned
        QString text;
    };
    QStringList SortByPosition(QList<Located> texts) const;

    int m_numKnown = 0;
};
