// Makes a document of the features below a composites root.

#pragma once

#include <ZORComposites/ZORCompDocument.h>

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

class ZORCompLayup;
class ZORCompMaterial;
class ZORCompPly;
class ZORCompRoot;
class ZORCompRosette;
class ZORFeatObject;
class ZORGeoCurve;

/// Materials of the library, all layups below the root with what is in them, and what they refer to elsewhere.
class ZORCompDocumentCollector
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompWriter)

public:
    /// \throws ZORSysException "sequences are nested more than %1 deep"
    explicit ZORCompDocumentCollector(const ZORCompRoot& root);

    const ZORCompDocument& GetDocument() const { return m_document; }
    /// Labels and other texts for what a document cannot hold.
    QStringList GetOmitted() const { return m_omitted; }

private:
    using Document = ZORCompDocument;

    void CollectChildren(const ZORFeatObject& parent, int layup);
    void CollectLayup(const ZORCompLayup& layup, int number);
    QList<Document::Component> CollectComponents(const ZORFeatObject& parent, int depth);
    Document::Component CollectPly(const ZORCompPly& ply);
    void Omit(const ZORFeatObject& feature);

    int NumberOf(const ZORCompMaterial* material);
    int NumberOf(const ZORCompRosette* rosette, int layup);
    int NumberOf(const ZORGeoCurve* curve);

    ZORCompDocument m_document;
    QStringList m_omitted;
    QHash<const ZORCompMaterial*, int> m_materials;
    QHash<const ZORCompRosette*, int> m_rosettes;
    QHash<const ZORGeoCurve*, int> m_curves;
};
