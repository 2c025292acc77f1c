// What a job has made.

#pragma once

#include <ZORWorker/ZORWorkResource.h>

#include <QByteArray>
#include <QList>
#include <QSharedDataPointer>

class ZORWorkResultData;

/// The files that a job returns, in the order in which it made them, and bytes; empty by default. A value: copies share
/// their data, O(1). One that was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORWORKER_EXPORT ZORWorkResult
{
public:
    ZORWorkResult();
    explicit ZORWorkResult(const QList<ZORWorkResource>& resources, const QByteArray& data = {});
    explicit ZORWorkResult(const QByteArray& data);
    ZORWorkResult(const ZORWorkResult& other);
    ZORWorkResult(ZORWorkResult&& other) noexcept;
    ZORWorkResult& operator=(const ZORWorkResult& other);
    ZORWorkResult& operator=(ZORWorkResult&& other) noexcept;
    ~ZORWorkResult();
    void swap(ZORWorkResult& other) noexcept { d.swap(other.d); }

    QList<ZORWorkResource> GetResources() const;
    /// What the job returns besides files, in a form that its kind defines.
    QByteArray GetData() const;

private:
    QSharedDataPointer<ZORWorkResultData> d;
};

Q_DECLARE_SHARED(ZORWorkResult)
