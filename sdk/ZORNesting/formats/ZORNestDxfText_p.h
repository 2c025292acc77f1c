// Colours and texts as DXF files write them.

#pragma once

#include <QColor>
#include <QString>

namespace ZORNestDxfText {

/// The colour of an index from 1 to 255; invalid for every other number. The 24 hues from index 10 on come in
/// five values, each in full and in half saturation.
QColor GetIndexedColor(int index);

/// A text with its control codes (%%d and the like) resolved.
QString GetPlainText(const QString& text);
/// A text of several lines without its formatting: lines are separated by line feeds.
QString GetPlainParagraphs(const QString& text);

} // namespace ZORNestDxfText
