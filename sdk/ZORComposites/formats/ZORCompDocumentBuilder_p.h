// Makes the features of documents.

#pragma once

#include <ZORComposites/ZORCompDocument.h>
#include <ZORComposites/ZORCompReadReport.h>

#include <QCoreApplication>
#include <QHash>
#include <QPointer>

#include <memory>

class ZORCompLayup;
class ZORCompMaterial;
class ZORCompMaterialLibrary;
class ZORCompPly;
class ZORCompRoot;
class ZORCompRosette;
class ZORCompSequence;
class ZORFeatObject;
class ZORGeoCurve;
class ZORGeoGeometry;

/// Adds documents to a root; takes everything away again unless Commit() is called.
class ZORCompDocumentBuilder
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompReadProcessor)

public:
    ZORCompDocumentBuilder(ZORCompRoot* root, bool replaces);
    ~ZORCompDocumentBuilder();
    Q_DISABLE_COPY_MOVE(ZORCompDocumentBuilder)

    /// \param document  must be good, see ZORCompDocument::Check()
    /// \throws ZORSysException "'%1' was removed while it was being read"
    void Build(const ZORCompDocument& document, const QString& source, ZORCompReadReport& report);
    void Commit();

private:
    using Document = ZORCompDocument;

    void BuildMaterials();
    ZORCompMaterial* BuildMaterial(const Document::Material& data);
    void BuildLayups();
    void BuildRosettes();
    void BuildContours();
    void BuildComponents(ZORFeatObject* parent, const QList<Document::Component>& components);
    void BuildPly(ZORCompSequence* parent, const Document::Component& data);
    ZORFeatObject* ParentOf(int layup) const;

    template<class Feature>
    Feature* Register(std::unique_ptr<Feature> feature, const QString& name);
    template<class Geometry>
    Geometry* Require(const QPointer<Geometry>& geometry) const;

    struct ChangedMaterial
    {
        QPointer<ZORCompMaterial> material;
        Document::Material data;
    };

    const QPointer<ZORCompRoot> m_root;
    const bool m_replaces;
    QList<QPointer<ZORGeoGeometry>> m_made; // in their order
    QList<QPointer<ZORCompLayup>> m_replaced;
    QList<ChangedMaterial> m_changed;

    // Of the document that is being built.
    const Document* m_document = nullptr;
    QString m_source;
    ZORCompReadReport* m_report = nullptr;
    QList<QPointer<ZORCompMaterial>> m_materials;
    QList<QPointer<ZORCompLayup>> m_layups;
    QList<QPointer<ZORCompRosette>> m_rosettes;
    QList<QPointer<ZORGeoCurve>> m_curves;
};
