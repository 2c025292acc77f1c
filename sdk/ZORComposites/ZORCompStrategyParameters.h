// How a layer is draped.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>

#include <QByteArray>
#include <QCoreApplication>

#include <limits>
#include <numbers>

/// What a draping strategy says; a value.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCOMPOSITES_EXPORT ZORCompStrategyParameters
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompStrategyParameters)

public:
    /// The course of the two yarns through the seed, which all others follow from.
    enum Generators : int {
        Geodesic = 0,      // straight over the surface
        ConstantAngle = 1, // at the same angle to the reference direction everywhere
    };

    Generators generators = Geodesic;
    double step = 10;                           // millimetres from node to node, the side of all cells
    double fibreAngle = 0;                      // radians from the reference direction to the warp
    double yarnAngle = std::numbers::pi / 2;    // radians from warp to weft in the flat layer
    double lockingAngle = std::numbers::pi / 4; // radians of shear that the yarns bear
    /// Millimetres along the yarns that the net reaches from the seed, both ways; NaN or infinity: no bound.
    double warpExtent = std::numeric_limits<double>::infinity();
    double weftExtent = std::numeric_limits<double>::infinity();

    /// \throws ZORSysException "generators %1 are unknown", "step is not a length above 0", "fibre angle is not
    ///         finite", "yarn angle is not between 10 and 170 degrees", "locking angle is not between 0 and 90
    ///         degrees", "extent is negative"
    void Check() const;

    friend ZORCOMPOSITES_EXPORT bool operator==(const ZORCompStrategyParameters& a,
                                                const ZORCompStrategyParameters& b);
    friend ZORCOMPOSITES_EXPORT void ZorTraceAppend(QByteArray& out,
                                                    const ZORCompStrategyParameters& parameters);
};
