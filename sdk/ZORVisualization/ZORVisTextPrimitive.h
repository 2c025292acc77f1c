// Text at a point.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORVisualization/ZORVisPrimitive.h>

#include <QString>

/// A text that faces the viewer, in the colour and text size of the representation.
///
/// A text is hidden as a whole where a surface covers its position, else drawn as a whole. Line feeds in the
/// text start new lines.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisTextPrimitive final : public ZORVisPrimitive
{
public:
    /// The place of the text's box that lies at the position.
    enum AnchorLocation : int {
        LowerLeft = 0, ///< the text stands right of and above the position
        LowerCenter = 1,
        LowerRight = 2,
        CenterLeft = 3,
        Center = 4,
        CenterRight = 5,
        UpperLeft = 6,
        UpperCenter = 7,
        UpperRight = 8
    };
    enum Scalability : int {
        Scalable = 0, ///< grows with the zoom; the text size is in millimetres
        FixedSize = 1 ///< keeps its size on the screen; the text size is in pixels
    };

    /// \param position     millimetres; not drawn when it is not finite
    /// \param anchor       other codes than those of the enumeration are taken as LowerLeft
    /// \param scalability  other codes are taken as FixedSize
    ZORVisTextPrimitive(const QString& text, const ZORMathPoint& position, AnchorLocation anchor,
                        Scalability scalability);

    const QString& GetText() const;
    ZORMathPoint GetPosition() const;
    AnchorLocation GetAnchorLocation() const;
    Scalability GetScalability() const;
};
