// The answer to one translation.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QObject>
#include <QStringList>

class ZORWorkResponse;

/// One source file on its way through a ZORNestTranslationProcessor, which makes and owns it.
class ZORNESTING_EXPORT ZORNestTranslationResponse : public QObject
{
    Q_OBJECT

public:
    ~ZORNestTranslationResponse() override;

    /// Status, reason of a failure, and the part files. They are the job's own and may be deleted. Never
    /// null, not owned.
    ZORWorkResponse* GetWorkResponse() const { return m_workResponse; }
    /// What the translation has to tell about units, closed gaps and whatever was left out; a line each.
    /// Empty unless the job is finished.
    QStringList GetReport() const;

private:
    friend class ZORNestTranslationProcessor;
    ZORNestTranslationResponse(ZORWorkResponse* workResponse, QObject* parent);

    ZORWorkResponse* const m_workResponse; // not owned
};
