// Fonts of strokes, for texts made of polylines.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <memory>

class ZORVisStrokeFont;

/// One of the Hershey fonts. A value; copies are cheap.
///
/// The fonts are part of the library and need no file at run time. A font has glyphs for the printable ASCII
/// characters and one more, "japanese" for the codes 32 to 224; symbol fonts put their symbols in the place of
/// letters.
///
/// Source: A. V. Hershey, "Calligraphy for Computers", U. S. Naval Weapons Laboratory, 1967. The library's
/// acknowledgements must accompany the font data.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisVectorFont
{
    Q_DECLARE_TR_FUNCTIONS(ZORVisVectorFont)

public:
    /// Reads the font the first time that it is asked for, some 0.1 ms.
    /// \param name  one of GetFontNames(); any other name, also the empty one, stands for the first of them
    explicit ZORVisVectorFont(const QString& name);

    /// Names of all fonts, sorted by their codes; never empty. They do not depend on the language.
    static QStringList GetFontNames();

    /// One of GetFontNames().
    QString GetName() const { return m_name; }

    /// The name.
    friend ZORVISUALIZATION_EXPORT void ZorTraceAppend(QByteArray& out, const ZORVisVectorFont& font);

private:
    friend class ZORVisVectorTextLayout;

    QString m_name;
    std::shared_ptr<const ZORVisStrokeFont> m_font;
};
