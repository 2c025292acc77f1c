// What a composites source file holds, as plain values.

#pragma once

#include <ZORComposites/ZORCompMaterialProperties.h>
#include <ZORComposites/ZORCompositesGlobal.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORMathematics/ZORMathVector.h>

#include <QCoreApplication>
#include <QJsonObject>
#include <QList>
#include <QString>

/// Between a format and the features: a format makes one of a file and a file of one. Parts refer to others by
/// their indices in the lists of the document, from 0; -1 refers to none. An empty name leaves the feature its
/// default label. Attributes are those of ZORCompAttributed.
///
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORCOMPOSITES_EXPORT ZORCompDocument
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompDocument)

public:
    struct Material
    {
        QString name;
        ZORCompMaterialProperties properties;
        QJsonObject attributes;

        friend bool operator==(const Material&, const Material&) = default;
    };

    struct Rosette
    {
        int layup = -1; // in which it lies; none: in the root
        QString name;
        ZORMathPoint origin; // millimetres
        ZORMathVector xAxis = {1, 0, 0};
        ZORMathVector normal = {0, 0, 1};
        QJsonObject attributes;

        friend bool operator==(const Rosette&, const Rosette&) = default;
    };

    struct Contour
    {
        int layup = -1;        // in which it lies; none: in the root
        bool isFeature = true; // a ZORCompContour; false: a polyline of the container and no more
        QString name;
        ZORMathSetOfPoints points; // millimetres
        QJsonObject attributes;    // of a feature

        friend bool operator==(const Contour&, const Contour&) = default;
    };

    /// A ply or a sequence.
    struct Component
    {
        enum Kind { Sequence, Ply };

        Kind kind = Sequence;
        QString name;
        bool isActive = true;
        int rosette = -1;
        int material = -1;           // of a ply
        double angle = 0;            // of a ply, radians
        QList<int> boundaries;       // of a ply: contours
        QList<Component> components; // of a sequence, in the order in which they are laid
        QJsonObject attributes;

        friend bool operator==(const Component&, const Component&) = default;
    };

    struct Layup
    {
        QString name;
        int rosette = -1;
        QList<Component> sequences; // of the kind Sequence
        QJsonObject attributes;

        friend bool operator==(const Layup&, const Layup&) = default;
    };

    /// Levels of sequences below a layup.
    static constexpr int MaximumDepth = 64;

    QList<Material> materials;
    QList<Rosette> rosettes;
    QList<Contour> contours;
    QList<Layup> layups;

    /// Whether features can be made of the document.
    /// \throws ZORSysException "%1 %2: %3", with the kind of part, its index and what is wrong with it: "there
    ///         is no layup %1", "there is no rosette %1", "there is no material %1", "there is no contour %1",
    ///         "the angle is not finite", "a ply has no components", "a layup has no plies of its own",
    ///         "sequences are nested more than %1 deep", "point %1 of the curve is not finite or too far away",
    ///         and the messages of ZORCompMaterialProperties and ZORCompRosette
    void Check() const;
    /// Returns what is wrong with more than MaximumDepth levels: "sequences are nested more than %1 deep".
    static QString DescribeTooDeep();

    friend bool operator==(const ZORCompDocument&, const ZORCompDocument&) = default;
};
