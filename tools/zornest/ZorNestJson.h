// Values of a JSON document that know where they stand in it.

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <vector>

namespace ZorNest {

/// What is wrong with a document, and where: "items[3].demand: a number is expected".
struct DocumentError
{
    QString message;
};

/// A value with its path. Values that are absent give the default; values of another type throw DocumentError.
class Node
{
public:
    explicit Node(const QJsonValue& value, const QString& path = {});

    bool IsAbsent() const { return m_value.isUndefined(); }
    bool IsNull() const { return m_value.isNull(); }
    bool IsArray() const { return m_value.isArray(); }
    Node operator[](const char* key) const;
    /// The elements of an array; none where it is absent.
    std::vector<Node> GetElements() const;

    double GetNumber(double absent) const;
    /// A number that is there.
    double GetNumber() const;
    /// Throws below zero.
    double GetSize(double absent) const;
    int GetInteger(int absent, int least) const;
    bool GetFlag() const;
    QString GetText(const QString& absent) const;

    [[noreturn]] void Refuse(const QString& reason) const;

private:
    QJsonValue m_value;
    QString m_path;
};

} // namespace ZorNest
