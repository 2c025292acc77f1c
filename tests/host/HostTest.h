// Fixture of the host tests: settings, a document, and waiting for states.

#pragma once

#include "support/Printers.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>

#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

class ZORGeoSurface;
class ZORVisVirtualObject;

/// Fresh settings and a current environment per test.
class HostTest : public testing::Test
{
public:
    HostTest();
    ~HostTest() override;

protected:
    ZORFeatEnvironment* GetEnvironment() const { return m_environment.get(); }
    QSettings* GetSettings() const { return m_settings.get(); }
    /// A path in the temporary folder of this test.
    QString GetPath(const QString& fileName) const { return m_directory.filePath(fileName); }
    QString WriteFile(const QString& fileName, const QByteArray& contents) const;
    /// An ASCII STL file with a tetrahedron of edge about 100.
    QString WriteTetrahedron(const QString& fileName) const;
    /// The surface of a 100 x 60 x 30 box, shown in the environment.
    ZORGeoSurface* AddBox(const QString& name);

    /// Runs the event loop until \a condition holds, at most 10 seconds.
    template<class Condition>
    static bool WaitFor(Condition condition)
    {
        return QTest::qWaitFor(condition, 10'000);
    }
    /// Presses a button of the next message box, which need not be its default.
    static void PressInNextBox(QMessageBox::StandardButton button);
    /// Deletes what waits for its deletion.
    static void DeleteDeferred();

private:
    QTemporaryDir m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<ZORFeatEnvironment> m_environment;
};
