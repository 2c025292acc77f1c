// What is known of a composite material.

#pragma once

#include <ZORComposites/ZORCompositesGlobal.h>

#include <QCoreApplication>
#include <QString>

#include <limits>

/// The properties of a ply material; not a number where one is unknown. Direction 1 is along the fibres, 2
/// across them in the ply, 3 through its thickness.
///
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCOMPOSITES_EXPORT ZORCompMaterialProperties
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompMaterialProperties)

public:
    static constexpr double Unknown = std::numeric_limits<double>::quiet_NaN();

    QString type;                   // "CFRP", "GFRP" ...; any text
    double thickness = Unknown;     // of one cured ply, millimetres, above 0
    double density = Unknown;       // tonnes per cubic millimetre, above 0: 2e-9 is 2000 kg/m3
    double E1 = Unknown;            // Young's moduli, megapascals, above 0
    double E2 = Unknown;            //
    double G12 = Unknown;           // shear moduli, megapascals, above 0
    double G23 = Unknown;           //
    double v12 = Unknown;           // Poisson's ratio
    double permeability1 = Unknown; // square metres, 0 or more
    double permeability2 = Unknown; //
    double permeability3 = Unknown; //
    double rollWidth = Unknown;     // of the material as delivered, millimetres, above 0

    /// Equal texts and numbers; two unknown ones are equal.
    friend ZORCOMPOSITES_EXPORT bool operator==(const ZORCompMaterialProperties& a,
                                                const ZORCompMaterialProperties& b);
    friend ZORCOMPOSITES_EXPORT void ZorTraceAppend(QByteArray& out,
                                                    const ZORCompMaterialProperties& properties);

    /// \throws ZORSysException "material property '%1' is %2, but must be positive", "material property '%1' is
    ///         %2, but must not be negative", "material property '%1' is not finite"
    void Check() const;

    /// The numbers by their names, for whoever reads, shows or writes them all.
    struct Number
    {
        const char* name; // "thickness", "density", "E1" ...
        double ZORCompMaterialProperties::*member;
    };
    static constexpr int NumNumbers = 11;
    static const Number Numbers[NumNumbers];
};
