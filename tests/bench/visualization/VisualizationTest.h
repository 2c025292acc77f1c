// Fixture of the tests of visualizers and their option dialogs.

#pragma once

#include "support/BenchTest.h"

#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QDialog>
#include <QMetaType>
#include <QVariant>

#include <functional>
#include <memory>

class QPushButton;
class ZORGeoGeometry;

/// Finds visualizers as the console does, answers their option dialogs and looks at what they made.
class VisualizationTest : public BenchTest
{
protected:
    /// One settings key of the option dialogs.
    struct Setting
    {
        const char* key; // below "Debug/Visualization"
        QMetaType::Type type;
        QVariant value;
    };

    /// Visualizes \a geometry through the registry. An option dialog that it opens must be answered.
    std::unique_ptr<ZORVisVirtualObject> Visualize(ZORGeoGeometry* geometry);
    /// The next option dialog, of class \a className, is filled in by \a fill and left with OK.
    void AnswerOptions(const QByteArray& className, const std::function<void(QDialog*)>& fill = {});

    /// Visualizes \a geometry with the options as they are and returns how the visual object was constructed; the
    /// feature environment is named "Features".
    QString TraceObject(ZORGeoGeometry* geometry, const QByteArray& className);
    /// The representation of \a object; a failure when it is none made of primitives.
    static const ZORVisRepGraphics* GetGraphics(const ZORVisVirtualObject* object);
    /// The \a index-th primitive of \a graphics as a \a Primitive; null when it is another kind.
    template<class Primitive>
    static const Primitive* GetPrimitive(const ZORVisRepGraphics* graphics, int index)
    {
        return dynamic_cast<const Primitive*>(graphics->GetPrimitives().value(index));
    }

    QVariant GetSetting(const char* key) const;
    void SetSetting(const char* key, const QVariant& value);
    /// All keys of the store and nothing else are in \a table, with these types and values.
    void ExpectSettings(const QList<Setting>& table);

    /// The button of \a options that shows \a text; a failure when there is none.
    static QPushButton* GetButton(const QDialog* options, const QString& text);
    static void Press(const QDialog* options, const QString& text);
};
