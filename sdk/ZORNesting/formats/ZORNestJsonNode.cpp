#include "ZORNestJsonNode_p.h"

#include <QJsonObject>

#include <cmath>
#include <limits>

ZORNestJsonNode::ZORNestJsonNode(const QJsonValue& document, ZORNestInstance::Purpose purpose)
    : m_value(document)
    , m_purpose(purpose)
{
}

QString ZORNestJsonNode::GetPlace() const
{
    QString place = m_path;
    for (const qsizetype index : m_indices)
        if (index >= 0)
            place += u'[' + QString::number(index) + u']';
    return place;
}

void ZORNestJsonNode::Refuse(const QString& reason, const QString& description) const
{
    if (!IsReadForNesting())
        throw ZORNestJsonFault{description.isNull() ? reason : description};
    const QString place = GetPlace();
    throw ZORNestJsonFault{(place.isEmpty() ? QStringLiteral("document") : place) + QLatin1String(": ")
                           + reason};
}

ZORNestJsonNode ZORNestJsonNode::operator[](const char* key) const
{
    if (IsReadForNesting() && !IsAbsent() && !m_value.isObject())
        Refuse(tr("an object is expected"));
    const QLatin1String name(key);
    ZORNestJsonNode node(m_value.toObject().value(name), m_purpose);
    const QString place = GetPlace();
    node.m_path = place.isEmpty() ? QString(name) : place + u'.' + name;
    node.m_label = key;
    return node;
}

QJsonArray ZORNestJsonNode::GetList() const
{
    if (!m_value.isArray() && !(IsReadForNesting() && IsAbsent()))
        Refuse(tr("an array is expected"), tr("'%1' is no list").arg(QLatin1String(m_label)));
    return m_value.toArray();
}

ZORNestJsonNode ZORNestJsonNode::GetElement(const QJsonArray& list, qsizetype index, const char* label) const
{
    ZORNestJsonNode node(list.at(index), m_purpose);
    node.m_label = label ? label : m_label;
    if (m_indices[1] < 0) {
        node.m_path = m_path;
        node.m_indices = m_indices;
        node.m_indices[m_indices[0] < 0 ? 0 : 1] = index;
    } else {
        node.m_path = GetPlace();
        node.m_indices[0] = index;
    }
    return node;
}

double ZORNestJsonNode::GetNumber() const
{
    if (!m_value.isDouble() || !std::isfinite(m_value.toDouble()))
        Refuse(tr("a number is expected"), tr("coordinate is no number"));
    return m_value.toDouble();
}

double ZORNestJsonNode::GetNumber(double absent) const
{
    return IsAbsent() ? absent : GetNumber();
}

double ZORNestJsonNode::GetSize(double absent) const
{
    const double size = GetNumber(absent);
    if (size < 0)
        Refuse(tr("must not be negative"));
    return size;
}

int ZORNestJsonNode::GetInteger(int absent, int least) const
{
    if (IsAbsent())
        return absent;
    const double number = GetNumber();
    if (number != std::floor(number) || std::abs(number) > std::numeric_limits<int>::max())
        Refuse(tr("an integer is expected"));
    if (number < least)
        Refuse(tr("must be at least %1").arg(least));
    return static_cast<int>(number);
}

bool ZORNestJsonNode::GetFlag() const
{
    if (!IsAbsent() && !m_value.isBool())
        Refuse(tr("true or false is expected"));
    return m_value.toBool();
}

QString ZORNestJsonNode::GetText(const QString& absent) const
{
    if (IsReadForNesting() && !IsAbsent() && !m_value.isString())
        Refuse(tr("a text is expected"));
    return m_value.toString(absent);
}
