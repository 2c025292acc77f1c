// The user's display options of nesting results.

#pragma once

#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORNesting/ZORNestingGlobal.h>

/// Keeps the options in the application's settings: group "Nesting/Visualization", key "Filters".
/// Thread safety: main thread only.
class ZORNESTING_EXPORT ZORNestVisualizationManager
{
public:
    static ZORNestVisualizationManager* GetInstance();

    /// What the settings hold; everything is shown where they hold nothing, or where there are none.
    ZORNestVisOptions GetOptionsFromCurrentSetting() const;
    /// \throws ZORSysException "no settings store set"
    void SetOptionsInCurrentSetting(const ZORNestVisOptions& options);

private:
    ZORNestVisualizationManager() = default;
};
