// Saves, loads and damages container files.

#pragma once

#include "support/ContainerBytes.h"

#include <ZORGeometry/ZORGeoGeometry.h>

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

/// The message of the ZORSysFileException that loading throws; empty when it throws none.
QString LoadFailure(ZORGeoContainer& container, const QByteArray& file);

/// Runs \a change, which has to change what SaveContainer() writes, and expects ContentChanged() of the container.
testing::AssertionResult ReportsChange(const ZORGeoContainer& container, const std::function<void()>& change);
/// Runs \a call, which has to leave what SaveContainer() writes as it is, and expects no ContentChanged().
testing::AssertionResult ReportsNoChange(const ZORGeoContainer& container, const std::function<void()>& call);

/// Saves the one, loads the file into the other, which is empty, and saves that: the bytes must be the same,
/// and so must names, classes and reference counts.
testing::AssertionResult RoundTrips(const ZORGeoContainer& container, ZORGeoContainer& loaded);

/// What has the place of \a original in a container that was loaded from a file of \a container, before anything
/// changes in either; null if that is of another class.
template<class Geometry>
Geometry* CounterpartOf(const Geometry* original, const ZORGeoContainer& container,
                        const ZORGeoContainer& loaded)
{
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        if (container.GetGeometryByIndex(i) == original)
            return qobject_cast<Geometry*>(loaded.GetGeometryByIndex(i));
    }
    return nullptr;
}

/// The document of a container file, without compression.
QByteArray OpenContainerFile(const QByteArray& file);
/// The container file of a document of the test's own, without compression.
QByteArray SealContainerFile(const QByteArray& document);
/// A damaged file with a checksum that fits the damage.
QByteArray ResealContainerFile(QByteArray file);

using ContainerMaker = std::function<std::unique_ptr<ZORGeoContainer>()>;
/// Changes one to three bytes at a time, of the document and of the compressed content, each behind a right
/// checksum, and loads the file into a new container. A load that fails must leave it as it was; after one that
/// does not, what was loaded can be saved and loaded again.
/// \param make  an empty container
/// \return the loads that failed
int LoadDamagedFiles(const QByteArray& file, const ContainerMaker& make, int count, unsigned seed);
