// Collects what a source file draws.

#pragma once

#include "ZORNestArcFit_p.h"
#include "ZORNestPart_p.h"

#include <QCoreApplication>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class ZORWorkContext;

/// An arc of an ellipse (of a circle where u and v are alike): center + cos(t) * u + sin(t) * v for t between
/// \a from and \a to.
struct ZORNestConic
{
    ZORNestPlanePoint center;
    ZORNestPlanePoint u;
    ZORNestPlanePoint v;
    double from = 0;
    double to = 0; ///< above \a from by up to 2 pi, or below it to run the other way; 2 pi: closed
};

/// A rational spline; with as many weights as poles, or none when all are 1.
struct ZORNestNurbs
{
    static constexpr int kMaximumDegree = 15;

    int degree = 3;
    QList<double> knots; ///< ascending, poles + degree + 1 of them
    QList<ZORNestPlanePoint> poles;
    QList<double> weights;
};

/// Everything that a source draws, as chains of lines and arcs in millimetres. Bounded: more than
/// MaximumCurves throw ZORSysException "drawing has more than %1 curves", curves that take more than
/// MaximumSamples "curves of the drawing need too many arcs for the tolerance".
class ZORNestDrawing
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestDrawing)

public:
    static constexpr int kMaximumCurves = 1000000;
    /// How many points of curves are looked at to find their arcs, in all: six to nine for an arc.
    static constexpr qint64 kMaximumSamples = 16000000;
    /// Whatever has coordinates beyond this, in millimetres, is skipped.
    static constexpr double kMaximumCoordinate = 1e9;

    /// \param tolerance  largest distance between a curve and the arcs that stand in for it
    ZORNestDrawing(double tolerance, const ZORWorkContext& context);

    /// Starts a chain; what is added up to EndChain() belongs to it. Every piece starts where the one before
    /// ends.
    void BeginChain(const ZORNestLook& look, const ZORNestPlaneMap& map);
    void AddLine(ZORNestPlanePoint start, ZORNestPlanePoint end);
    void AddBulge(ZORNestPlanePoint start, ZORNestPlanePoint end, double bulge);
    /// \a start and \a end replace the computed ends where the caller knows them exactly; null: not known.
    void AddConic(const ZORNestConic& conic, const ZORNestPlanePoint* start = nullptr,
                  const ZORNestPlanePoint* end = nullptr);
    /// \param poles  4 of a cubic, 3 of a quadratic Bezier curve
    void AddBezier(const QList<ZORNestPlanePoint>& poles);
    /// \pre the counts of \a nurbs fit, and its degree is 1 to kMaximumDegree
    void AddNurbs(const ZORNestNurbs& nurbs);
    /// \param what  name of the entity for the report, should it have to be skipped
    /// \return false when it was skipped: without length, not finite, beyond MaximumCoordinate, or with a curve that
    ///         needs more arcs than anybody could see
    bool EndChain(const QString& what);

    /// \param text  in the coordinates of \a map
    void AddText(ZORNestDrawnText text, const ZORNestPlaneMap& map);

    /// Counts something that has been left out.
    void Skip(const QString& what) { ++m_skipped[what]; }
    /// "skipped: %1 (%2 times)", sorted.
    QStringList GetReport() const;

    QList<ZORNestChain> TakeChains() { return std::move(m_chains); }
    QList<ZORNestDrawnText> TakeTexts() { return std::move(m_texts); }

private:
    enum class CurveForm { Simple, Spline };
    void Append(QList<ZORNestPiece> pieces, CurveForm form);
    void AppendFitted(const ZORNestArcFit::Fitted& fitted);
    ZORNestArcFit::Place CheckPlace(const ZORNestArcFit::Place& place);
    void CountCurve();
    double GetTolerance(double size) const;

    const double m_tolerance;
    const ZORWorkContext& m_context;
    QList<ZORNestChain> m_chains;
    QList<ZORNestDrawnText> m_texts;
    QMap<QString, qint64> m_skipped;
    qint64 m_curves = 0;
    qint64 m_samples = 0;

    ZORNestChain m_chain; // the one that is being added
    ZORNestLook m_look;
    ZORNestPlaneMap m_map;
    bool m_isBad = false;
    bool m_isTooLong = false; // a curve of the chain needs too many arcs
};
