// Colours of the application.

#pragma once

#include "base/ZORHostCommandLine.h"

class QPalette;

namespace ZORHostTheme {

/// Gives the application the light or the dark palette with the Fusion style; System leaves style and
/// palette to the platform (and restores them after another theme).
void Apply(ZORHostOptions::Theme theme);

/// Whether texts of \a palette are lighter than their background.
bool IsDark(const QPalette& palette);

/// "light", "dark" or "system": the form in settings and on the command line.
QString ToName(ZORHostOptions::Theme theme);
/// System for an unknown name.
ZORHostOptions::Theme FromName(const QString& name);

} // namespace ZORHostTheme
