// The answer to one translation.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QObject>
#include <QStringList>

#include <memory>

class ZORWorkResponse;

/// One source file on its way through a ZORNestTranslationProcessor, which makes and owns it.
/// Thread safety: reentrant; an object belongs to its thread.
class ZORNESTING_EXPORT ZORNestTranslationResponse : public QObject
{
    Q_OBJECT

public:
    ~ZORNestTranslationResponse() override;

    /// Status, reason of a failure, and the part files. They are the job's own and may be deleted. Never
    /// null, not owned.
    ZORWorkResponse* GetWorkResponse() const;
    /// What the translation reports about units, closed gaps and whatever was left out; a line each.
    /// Empty until the job is at its end, and where it was canceled or did not come to an end by itself.
    QStringList GetReport() const;

private:
    friend class ZORNestTranslationProcessor;
    ZORNestTranslationResponse(ZORWorkResponse* workResponse, std::shared_ptr<const QStringList> report,
                               QObject* parent);

    class Private;
    const std::unique_ptr<Private> d;
};
