// Saves, loads and damages container files.

#pragma once

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

class ZORGeoContainer;

QByteArray SaveContainer(const ZORGeoContainer& container);
/// \throws ZORSysFileException as ZORGeoContainer::Load()
void LoadContainer(ZORGeoContainer& container, const QByteArray& file);
/// The message of the ZORSysFileException that loading throws; empty when it throws none.
QString LoadFailure(ZORGeoContainer& container, const QByteArray& file);

/// Saves the one, loads the file into the other, which is empty, and saves that: the bytes must be the same,
/// and so must names, classes and reference counts.
testing::AssertionResult RoundTrips(const ZORGeoContainer& container, ZORGeoContainer& loaded);

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
