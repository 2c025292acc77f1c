// What a composites feature carries along without understanding it.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>

#include <QJsonObject>

#include <memory>

/// Mixed into the composites features: fields of a source file that the SDK has no member for, so that nothing
/// of it is lost. Readers fill them, writers write them back, container files keep them.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompAttributed
{
public:
    virtual ~ZORCompAttributed();
    Q_DISABLE_COPY_MOVE(ZORCompAttributed)

    /// By the names of the source; empty by default.
    const QJsonObject& GetAttributes() const;
    /// Replaces all of them.
    void SetAttributes(const QJsonObject& attributes);

protected:
    ZORCompAttributed();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
