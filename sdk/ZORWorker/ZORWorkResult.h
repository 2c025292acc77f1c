// What a job has made.

#pragma once

#include <ZORWorker/ZORWorkResource.h>

#include <QByteArray>
#include <QList>

/// The files that a job returns, in the order in which it made them, and bytes. A value; empty by default.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORWORKER_EXPORT ZORWorkResult
{
public:
    ZORWorkResult() = default;
    explicit ZORWorkResult(const QList<ZORWorkResource>& resources, const QByteArray& data = {});
    explicit ZORWorkResult(const QByteArray& data);

    QList<ZORWorkResource> GetResources() const { return m_resources; }
    /// What the job returns besides files, in a form that its kind defines.
    QByteArray GetData() const { return m_data; }

private:
    QList<ZORWorkResource> m_resources;
    QByteArray m_data;
};
