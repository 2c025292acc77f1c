#include "ZorNestJson.h"

#include <cmath>
#include <limits>

namespace ZorNest {

Node::Node(const QJsonValue& value, const QString& path)
    : m_value(value)
    , m_path(path)
{
}

void Node::Refuse(const QString& reason) const
{
    const QString where = m_path.isEmpty() ? QString("document") : m_path;
    throw DocumentError{where + ": " + reason};
}

Node Node::operator[](const char* key) const
{
    if (!IsAbsent() && !m_value.isObject())
        Refuse("an object is expected");
    const QLatin1String name(key);
    const QString path = m_path.isEmpty() ? QString(name) : m_path + "." + name;
    return Node(m_value.toObject().value(name), path);
}

std::vector<Node> Node::GetElements() const
{
    if (IsAbsent())
        return {};
    if (!m_value.isArray())
        Refuse("an array is expected");
    const QJsonArray array = m_value.toArray();
    std::vector<Node> elements;
    for (qsizetype i = 0; i < array.size(); ++i)
        elements.emplace_back(array[i], QString("%1[%2]").arg(m_path).arg(i));
    return elements;
}

double Node::GetNumber() const
{
    if (!m_value.isDouble() || !std::isfinite(m_value.toDouble()))
        Refuse("a number is expected");
    return m_value.toDouble();
}

double Node::GetNumber(double absent) const
{
    return IsAbsent() ? absent : GetNumber();
}

double Node::GetSize(double absent) const
{
    const double size = GetNumber(absent);
    if (size < 0)
        Refuse("must not be negative");
    return size;
}

int Node::GetInteger(int absent, int least) const
{
    if (IsAbsent())
        return absent;
    const double number = GetNumber();
    if (number != std::floor(number) || std::abs(number) > std::numeric_limits<int>::max())
        Refuse("an integer is expected");
    if (number < least)
        Refuse(QString("must be at least %1").arg(least));
    return static_cast<int>(number);
}

bool Node::GetFlag() const
{
    if (!IsAbsent() && !m_value.isBool())
        Refuse("true or false is expected");
    return m_value.toBool();
}

QString Node::GetText(const QString& absent) const
{
    if (!IsAbsent() && !m_value.isString())
        Refuse("a text is expected");
    return m_value.toString(absent);
}

} // namespace ZorNest
