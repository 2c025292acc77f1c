// Reads documents from CompoST JSON.

#pragma once

#include "ZORCompJsonFields_p.h"

#include <ZORComposites/ZORCompDocument.h>
#include <ZORComposites/ZORCompReadReport.h>

#include <QCoreApplication>
#include <QHash>
#include <QSet>

/// Makes one layup of a CompoST file: materials, splines and axis systems by their identifiers, sequences and plies
/// of the tree of components. docs/layup-json.md tells what becomes of each field.
class ZORCompJsonParser
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompJsonFormat)

public:
    explicit ZORCompJsonParser(ZORCompReadReport& report);

    /// \throws ZORSysException with the path of a field and what is wrong with it
    ZORCompDocument Parse(const QByteArray& content);

private:
    using Document = ZORCompDocument;
    using Fields = ZORCompJsonFields;

    void ParseMaterials(Fields& file);
    void ParseMaterial(Fields& fields);
    void TakeProperties(Fields& fields, ZORCompMaterialProperties& properties);

    void ParseGeometry(Fields& file);
    bool ParseSpline(Fields& fields);
    bool ParseAxisSystem(Fields& fields);

    void IndexComponents(const QJsonArray& components, const QString& path);
    void CollectReferences(const QJsonArray& components);
    QList<Document::Component> ParseTop(const QJsonArray& values, Fields& file);
    QList<Document::Component> ParseList(const QString& name, const QJsonArray& values, Fields& owner,
                                         int depth);
    bool ParseComponent(const QJsonValue& value, const QString& path, int depth,
                        QList<Document::Component>& components);
    void ParseSequence(Fields& fields, int depth, Document::Component& component);
    void ParsePly(Fields& fields, Document::Component& component);
    void TakeBoundaries(Fields& fields, QList<int>& boundaries);
    int TakeRosette(Fields& fields);

    void ReportKept(const Fields& fields, const QString& type);

    ZORCompReadReport& m_report;
    Document m_document;
    QSet<qint64> m_geometryIdentifiers;
    QSet<qint64> m_componentIdentifiers;
    QHash<QString, int> m_materials;        // indices by name
    QHash<qint64, int> m_splines;           // indices of contours by identifier
    QHash<qint64, int> m_axisSystems;       // indices of rosettes by identifier
    QHash<qint64, QJsonValue> m_components; // of the top, by identifier
    QSet<qint64> m_references;              // identifiers that stand for components in lists
};
