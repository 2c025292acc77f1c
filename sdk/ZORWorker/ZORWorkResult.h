// What a job has made.

#pragma once

#include <ZORWorker/ZORWorkResource.h>

#include <QList>

/// The files that a job hands over, in the order in which it made them. A value; empty by default.
class ZORWORKER_EXPORT ZORWorkResult
{
public:
    ZORWorkResult() = default;
    explicit ZORWorkResult(const QList<ZORWorkResource>& resources);

    QList<ZORWorkResource> GetResources() const { return m_resources; }

private:
    QList<ZORWorkResource> m_resources;
};
