// Fixture of the tests of the SDK's own commands.

#pragma once

#include "support/DialogFrame.h"
#include "support/MessageBoxCatcher.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <QLibrary>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

class QAction;
class ZORCompMaterial;
class ZORCompMaterialLibrary;
class ZORGeoSurface;

/// Loads the library, with an environment that is current, and drives one dialog after the other by the object names
/// of its widgets.
class StandardCommandsTest : public testing::Test
{
public:
    StandardCommandsTest();
    /// Unloads the library.
    ~StandardCommandsTest() override;

protected:
    static QAction* GetAction(const char* id);
    static bool IsMapped();

    /// Triggers an action; its dialog is then in the frame.
    void Open(const char* id);
    /// Runs the command that edits an object; its dialog is then in the frame.
    void Edit(QObject* object);
    /// Presses OK.
    /// \return the message of the exception; empty when the command has finished
    QString Accept();
    void Cancel();
    QString GetProblem() const { return frame.command->GetProblem(); }
    static void ProcessEvents();

    template<class Widget>
    Widget* Find(const char* objectName) const
    {
        auto* const widget = frame.content->findChild<Widget*>(QLatin1String(objectName));
        if (!widget)
            throw std::runtime_error(std::string("no widget ") + objectName);
        return widget;
    }
    void Choose(const char* combo, const QString& text) const;
    /// The entries of a combo box.
    QStringList GetEntries(const char* combo) const;
    /// The selected entry; empty for none.
    QString GetEntry(const char* combo) const;
    void Enter(const char* lineEdit, const QString& text) const;
    /// Sets a spin box, in its shown unit.
    void SetNumber(const char* spin, double value) const;
    /// Sets "<name>XSpin" ...
    void SetTriple(const QString& name, double x, double y, double z) const;
    void Click(const char* button) const;
    void SetCell(const char* table, int row, int column, const QVariant& value) const;

    /// A square of 100 x 100 mm in the plane z = 0 from the origin, two triangles.
    ZORGeoSurface* AddSquare(const QString& name);
    ZORWFRawSurface* AddSurface(const QString& label);
    ZORWFRawPoint* AddPoint(const QString& label, const ZORMathPoint& point);
    ZORWFRawCurve* AddLine(const QString& label, const ZORMathPoint& from, const ZORMathPoint& to);
    /// A straight line on a surface.
    ZORWFRawCurve* AddLineOn(const ZORWFRawSurface* surface, const QString& label, const ZORMathPoint& from,
                             const ZORMathPoint& to);
    ZORCompMaterialLibrary* GetLibrary() const;
    ZORCompMaterial* AddMaterial(const QString& name, double thickness);
    /// The only object of a class; null and a failure when there is none or more.
    template<class T>
    T* GetOnly() const
    {
        const QList<T*> all = GetAll<T>();
        EXPECT_EQ(all.size(), 1) << T::staticMetaObject.className();
        return all.size() == 1 ? all.constFirst() : nullptr;
    }
    template<class T>
    QList<T*> GetAll() const
    {
        QList<T*> all;
        for (int i = 0; i < container->GetNumGeometry(); ++i) {
            if (auto* object = qobject_cast<T*>(container->GetGeometryByIndex(i)))
                all.append(object);
        }
        return all;
    }

    MessageBoxCatcher boxes;
    std::unique_ptr<ZORFeatEnvironment> environment = std::make_unique<ZORFeatEnvironment>();
    ZORFeatContainer* container = environment->GetContainer();
    DialogFrame frame;
    QLibrary library;
};
