// Checked access to the fields of a JSON object.

#pragma once

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <optional>

/// The fields of one object, taken out one by one; those that are left become attributes. A field that is null
/// says as much as one that is missing, and is left.
/// \throws ZORSysException "%1: %2" from every function, with the path of the field ("allMaterials[0].E1") and what
///         is wrong with it
class ZORCompJsonFields
{
    Q_DECLARE_TR_FUNCTIONS(ZORCompJsonFormat)

public:
    /// \param path  of the object, empty for that of the whole file
    ZORCompJsonFields(const QJsonValue& value, const QString& path);

    bool Has(const QString& name) const { return !m_fields.value(name).isNull() && m_fields.contains(name); }
    QString PathOf(const QString& name) const;
    [[noreturn]] static void Fail(const QString& path, const QString& reason);

    /// Without the blanks around it; empty when there is none. A text that is no name (it holds control
    /// characters) is shown with blanks and left as well.
    QString TakeText(const QString& name);
    /// A number, or a text that holds one; nothing when there is none or the text is blank.
    std::optional<double> TakeNumber(const QString& name);
    bool TakeBool(const QString& name, bool byDefault);
    /// Empty when there is none.
    QJsonArray TakeArray(const QString& name);
    /// As it is; undefined when there is none.
    QJsonValue Get(const QString& name) const { return m_fields.value(name); }
    QJsonValue Take(const QString& name);
    /// Makes it one of those that are left.
    void Keep(const QString& name, const QJsonValue& value) { m_fields.insert(name, value); }

    /// A value that stays, as an identifier; nothing when there is none or it is no whole number.
    std::optional<qint64> GetIdentifier(const QString& name) const;
    /// The last part of the type: "Ply" of "CompositeStandard.Ply"; stays. Empty when there is none.
    QString GetType() const;

    const QJsonObject& GetRest() const { return m_fields; }
    const QString& GetPath() const { return m_path; }

    static std::optional<qint64> ToIdentifier(const QJsonValue& value);

private:
    QJsonObject m_fields;
    QString m_path;
};
