#include "VisualizationTest.h"

#include "core/ZORTestCommandRegistry.h"
#include "visualization/ZORTestVisualizer.h"

#include <ZORGeometry/ZORGeoGeometry.h>

#include <QPushButton>
#include <QTest>

std::unique_ptr<ZORVisVirtualObject> VisualizationTest::Visualize(ZORGeoGeometry* geometry)
{
    auto* visualizer = ZORTestCommandRegistry::Instance().CreateVisualizer(geometry->metaObject());
    if (!visualizer) {
        ADD_FAILURE() << "no visualizer for " << geometry->metaObject()->className();
        return nullptr;
    }
    return std::unique_ptr<ZORVisVirtualObject>(visualizer->Visualize(GetEnvironment(), geometry));
}

void VisualizationTest::AnswerOptions(const QByteArray& className, const std::function<void(QDialog*)>& fill)
{
    answers.Answer(className, [fill](QDialog* options) {
        if (fill)
            fill(options);
        Press(options, QStringLiteral("OK"));
    });
}

QString VisualizationTest::TraceObject(ZORGeoGeometry* geometry, const QByteArray& className)
{
    GetFeatEnvironment()->setObjectName("Features");
    AnswerOptions(className);
    const QStringList calls = TraceCalls([&] { EXPECT_NE(nullptr, Visualize(geometry)); });
    return calls.filter("ZORVisVirtualObject::ZORVisVirtualObject").join(u'\n');
}

const ZORVisRepGraphics* VisualizationTest::GetGraphics(const ZORVisVirtualObject* object)
{
    const auto* graphics = dynamic_cast<const ZORVisRepGraphics*>(object->GetRep());
    if (!graphics)
        ADD_FAILURE() << "the object has no graphics";
    return graphics;
}

QVariant VisualizationTest::GetSetting(const char* key) const
{
    return GetEnvironment()->GetSettings()->value(QStringLiteral("Debug/Visualization/")
                                                  + QLatin1String(key));
}

void VisualizationTest::SetSetting(const char* key, const QVariant& value)
{
    GetSettings()->setValue(QStringLiteral("Debug/Visualization/") + QLatin1String(key), value);
}

void VisualizationTest::ExpectSettings(const QList<Setting>& table)
{
    QStringList keys;
    for (const Setting& setting : table) {
        keys.append(QStringLiteral("Debug/Visualization/") + QLatin1String(setting.key));
        const QVariant value = GetSetting(setting.key);
        EXPECT_EQ(int(setting.type), value.typeId()) << setting.key;
        EXPECT_EQ(setting.value, value) << setting.key;
    }
    keys.sort();
    QStringList present = GetSettings()->allKeys();
    present.sort();
    EXPECT_EQ(keys, present);
}

QPushButton* VisualizationTest::GetButton(const QDialog* options, const QString& text)
{
    const auto buttons = options->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == text)
            return button;
    }
    ADD_FAILURE() << "no button " << text.toStdString();
    return nullptr;
}

void VisualizationTest::Press(const QDialog* options, const QString& text)
{
    if (QPushButton* button = GetButton(options, text))
        QTest::mouseClick(button, Qt::LeftButton);
}
