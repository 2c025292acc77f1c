#include "ZORCompStoredAttributes_p.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompAttributed)
};

} // namespace

void ZorCompWriteAttributes(const ZORCompAttributed& feature, ZORGeoObjectWriter& writer)
{
    const QJsonObject& attributes = feature.GetAttributes();
    const QByteArray json =
        attributes.isEmpty() ? QByteArray() : QJsonDocument(attributes).toJson(QJsonDocument::Compact);
    writer.WriteString("attributes", QString::fromUtf8(json));
}

void ZorCompReadAttributes(ZORCompAttributed& feature, const ZORGeoObjectReader& reader)
{
    const QString json = reader.GetString("attributes");
    if (json.isEmpty())
        return;
    const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8());
    if (!document.isObject())
        reader.Fail(Texts::tr("its attributes are no JSON object"));
    feature.SetAttributes(document.object());
}
