// Content of a container file, apart from any container.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QSharedDataPointer>

#include <functional>
#include <optional>

class QIODevice;
class ZORGeoContainer;
class ZORGeoContainerFileData;

/// The two halves of ZORGeoContainer::Load() and Save(): what takes long and needs no container, reading and writing the
/// file, may happen in any thread; what concerns the objects happens in the thread of the container.
///
/// The values of the objects never change here, whatever happens to the container they were taken from. A value: copies
/// share their data, O(1). One that was moved from may only be assigned or destroyed.
///
/// Functions \a report are called in the same thread with the part that is done, 0 to 1, never less than before; they
/// return false to cancel. What they throw passes through. An empty one reports nothing.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoContainerFile
{
public:
    /// No objects.
    ZORGeoContainerFile();
    ZORGeoContainerFile(const ZORGeoContainerFile& other);
    ZORGeoContainerFile(ZORGeoContainerFile&& other) noexcept;
    ZORGeoContainerFile& operator=(const ZORGeoContainerFile& other);
    ZORGeoContainerFile& operator=(ZORGeoContainerFile&& other) noexcept;
    ~ZORGeoContainerFile();
    void swap(ZORGeoContainerFile& other) noexcept { d.swap(other.d); }

    int GetNumObjects() const;

    /// Reads a file: the first half of ZORGeoContainer::Load(), in any thread.
    /// \param device  open for reading, and holding nothing but the file from where it stands
    /// \return nothing when canceled
    /// \throws ZORSysFileException as ZORGeoContainer::Load(), except for what is wrong with single objects
    static std::optional<ZORGeoContainerFile> Read(QIODevice& device,
                                                   const std::function<bool(double)>& report = {});
    /// Makes the objects and registers them: the second half of ZORGeoContainer::Load(), in the thread of \a container.
    /// All of them are added, or none when it throws.
    /// \throws ZORSysFileException as ZORGeoContainer::Load()
    void AddTo(ZORGeoContainer& container) const;

    /// Copies the values of all geometries: the first half of ZORGeoContainer::Save(), in the thread of \a container.
    /// \throws ZORSysException, ZORSysFileException as ZORGeoContainer::Save()
    static ZORGeoContainerFile Take(const ZORGeoContainer& container);
    /// Writes the file: the second half of ZORGeoContainer::Save(), in any thread. The bytes are the same.
    /// \param device  open for writing
    /// \return false when canceled; the device has then got only a part of the file, or nothing
    /// \throws ZORSysFileException as ZORGeoContainer::Save()
    bool Write(QIODevice& device, const std::function<bool(double)>& report = {}) const;

private:
    friend class ZORGeoContainer;

    QSharedDataPointer<ZORGeoContainerFileData> d;
};

Q_DECLARE_SHARED(ZORGeoContainerFile)
