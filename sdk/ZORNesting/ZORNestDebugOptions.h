// Debugging aids of the nesting module.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <memory>

/// Process-wide options; they are off at start and live as long as the process.
/// Thread safety: thread-safe.
class ZORNESTING_EXPORT ZORNestDebugOptions
{
public:
    static ZORNestDebugOptions* GetInstance();

    /// Whether the work directories of translation jobs stay when the jobs end.
    bool GetKeepTranslationWorkDirectories() const;
    void SetKeepTranslationWorkDirectories(bool keep);

    /// Whether the work directories of nesting jobs stay when the jobs end.
    bool GetKeepNestingWorkDirectories() const;
    void SetKeepNestingWorkDirectories(bool keep);

private:
    ZORNestDebugOptions();
    ~ZORNestDebugOptions();
    Q_DISABLE_COPY_MOVE(ZORNestDebugOptions)

    class Private;
    const std::unique_ptr<Private> d;
};
